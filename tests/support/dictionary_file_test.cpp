// Which lines of a file make pairs.
#include "support/dictionary_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zol::support {
namespace {

/// "3 key>4 translation" for each pair, and "5 key" for a dropped one.
std::vector<std::string> as_texts(const DictionaryPairs& pairs) {
    const auto text = [](const DictionaryLine& line) {
        return std::to_string(line.number) + ' ' + std::string(line.text);
    };
    std::vector<std::string> texts;
    for (const DictionaryPair& pair : pairs.pairs) {
        texts.push_back(text(pair.key) + '>' + text(pair.translation));
    }
    if (pairs.dropped) texts.push_back(text(*pairs.dropped));
    return texts;
}

TEST(DictionaryFile, TakesSignificantLinesByTwo) {
    const std::string long_line(10 << 20, 'x');
    const struct {
        const char* name;
        std::string content;
        std::vector<std::string> expected;
    } rows[] = {
        {"nothing", "", {}},
        {"no significant line", "\n  \n# x\n", {}},
        {"pairs", "a\nb\nc\nd\n", {"1 a>2 b", "3 c>4 d"}},
        {"comments and blanks anywhere", "#1\na\n\n# 4\n \t\nb\n#", {"2 a>6 b"}},
        {"a comment begins in first place", " # a\n#b\n # c\n", {"1  # a>3  # c"}},
        {"blanks of a significant line stay", " a \n b \n", {"1  a >2  b "}},
        {"no final newline", "a\nb", {"1 a>2 b"}},
        {"a last key with a newline", "a\nb\nc\n", {"1 a>2 b", "3 c>4 "}},
        {"a last key without one", "a\nb\nc", {"1 a>2 b", "3 c"}},
        {"the last line is a translation, be it a comment", "a\n\n# b", {"1 a>3 # b"}},
        {"or blanks", "a\n  ", {"1 a>2   "}},
        {"a last comment is no key", "a\nb\n# c", {"1 a>2 b"}},
        {"carriage returns stay", "a\r\n\r\nb\r\n", {"1 a\r>3 b\r"}},
        {"carriage returns end no line", "a\rb\rc\n", {"1 a\rb\rc>2 "}},
        {"null bytes stay", std::string("a\0\nb\n", 5), {std::string("1 a\0>2 b", 8)}},
        {"long lines", long_line + '\n' + long_line, {"1 " + long_line + ">2 " + long_line}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_TRUE(as_texts(pairs_of(row.content)) == row.expected)
            << ::testing::PrintToString(as_texts(pairs_of(row.content))).substr(0, 500);
    }
}

}  // namespace
}  // namespace zol::support
