// Lines of a file whatever ends them, and the numbers on them.
#include "engine/formats/text_lines.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "engine/formats/line_numbers.h"
#include "engine/formats/read_error.h"
#include "tests/engine/temporary_file.h"

namespace {

using zol::engine::File;
using zol::engine::ReadError;
using zol::engine::take_real;
using zol::engine::take_whole;
using zol::engine::Taken;
using zol::engine::TextLines;
using zol::testing_support::TemporaryFile;

constexpr std::size_t kBlock = std::size_t{1} << 18;

std::string lines_of(const std::string& content) {
    const TemporaryFile written(content);
    const File file(written.Path());
    std::string seen;
    try {
        TextLines lines(file);
        std::string_view line;
        while (lines.Next(line)) {
            seen += std::string(line) + "@" + std::to_string(lines.NextOffset()) + "|";
        }
    } catch (const ReadError& error) {
        seen += error.what();
    }
    return seen;
}

TEST(TextLines, EndInEveryWayThatTextsEndThem) {
    struct Case {
        const char* name;
        std::string content;
        const char* expected;
    };
    const Case cases[] = {
        {"empty", "", ""},
        {"no last line end", "a\nb", "a@2|b@3|"},
        {"LF", "a\n\nb\n", "a@2|@3|b@5|"},
        {"CR LF", "a\r\n\r\nb\r\n", "a@3|@5|b@8|"},
        {"CR", "a\r\rb\r", "a@2|@3|b@5|"},
        {"all", "a\rb\nc\r\nd", "a@2|b@4|c@7|d@8|"},
        {"byte-order mark",
         "\xEF\xBB\xBF"
         "a\n",
         "a@5|"},
        {"UTF-16", std::string("\xFF\xFEv\0", 4), "the text is UTF-16; save it as UTF-8"},
        {"UTF-32", std::string("\xFF\xFE\0\0v\0\0\0", 8), "the text is UTF-32; save it as UTF-8"},
        {"UTF-16, high byte first", "\xFE\xFF", "the text is UTF-16; save it as UTF-8"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(lines_of(row.content), row.expected);
    }
}

TEST(TextLines, AreWholeAcrossBlocks) {
    for (std::size_t filler = kBlock - 8; filler <= kBlock + 2; ++filler) {
        SCOPED_TRACE(filler);
        const std::string first(filler, 'x');
        const auto at = [&](std::size_t offset) {
            return "@" + std::to_string(filler + offset) + "|";
        };
        EXPECT_EQ(lines_of(first + "\r\nab\rcd\n\nef"),
                  first + at(2) + "ab" + at(5) + "cd" + at(8) + at(9) + "ef" + at(11));
    }
    const std::string long_line(3 * kBlock + 7, 'y');
    EXPECT_EQ(lines_of("a\n" + long_line + "\nb").size(), long_line.size() + 21);
}

TEST(TextLines, RefuseALineWithoutEnd) {
    EXPECT_EQ(lines_of("a\n" + std::string(TextLines::kMostBytesOfLine + kBlock, 'x')),
              "a@2|line 2: it is longer than 67108864 bytes");
}

TEST(TextLines, HaveACommentBehindABlankAndHash) {
    const struct {
        const char* text;
        const char* expected;
    } rows[] = {
        {" a b\t", "a b"}, {"a # c", "a"},    {"a\t#c", "a"}, {"#c", ""},       {" # c", ""},
        {"a#1", "a#1"},    {"a#1 #c", "a#1"}, {"a##", "a##"}, {"a #b #c", "a"}, {"", ""},
    };
    for (const auto& row : rows) EXPECT_EQ(zol::engine::without_comment(row.text), row.expected);
}

TEST(TextLines, AreQuotedWithoutControlCharacters) {
    const auto quoted = [](std::string_view text) { return zol::engine::quoted(text); };
    EXPECT_EQ(quoted(std::string_view("a\0b\x1F\x7F", 5)), "\"a\\x00b\\x1F\\x7F\"");
    EXPECT_EQ(quoted("r\xC3\xA9sum\xC3\xA9"), "\"r\xC3\xA9sum\xC3\xA9\"");
    EXPECT_EQ(quoted(std::string(41, 'x')), '"' + std::string(40, 'x') + "...\"");
}

std::optional<double> real_of(const std::string& text) {
    std::string_view rest = text;
    double value = 0;
    if (take_real(rest, value) != Taken::Number) return std::nullopt;
    return value;
}

TEST(LineNumbers, AreRoundedCorrectly) {
    std::vector<std::string> texts = {
        "0",
        "-0",
        "1",
        "+1",
        "2.",
        ".5",
        "-.5",
        "1E2",
        "1e02",
        "1e-007",
        "+3.1e+2",
        "7000000.123",
        "9007199254740993",
        "9007199254740992.5",
        "0.000000000000000001",
        "123456789012345678",
        "1234567890123456789012345678901234567890",
        "1e308",
        "4.9e-324",
        "0000000000000000000001",
    };
    std::mt19937_64 random(20240601);
    char text[64];
    for (int i = 0; i < 20000; ++i) {
        const double value = static_cast<double>(random() % 20000000000) / 1000 - 1e7;
        if (i % 3 == 0) {
            std::snprintf(text, sizeof text, "%.17g", value);
        } else {
            std::snprintf(text, sizeof text, "%.*f", i % 12, value);
        }
        texts.emplace_back(text);
    }
    for (const std::string& number : texts) {
        const std::optional<double> read = real_of(number);
        ASSERT_TRUE(read) << number;
        EXPECT_EQ(std::bit_cast<std::uint64_t>(*read),
                  std::bit_cast<std::uint64_t>(std::strtod(number.c_str(), nullptr)))
            << number;
    }
}

TEST(LineNumbers, RefuseWhatIsNone) {
    for (const char* text : {"",       " ",        ".",     "-",    "+",   "+-1", "--1", "1.2.3",
                             "3.1+e2", "3.1-e2",   "1e",    "1e+",  "1,5", "1x",  "nan", "inf",
                             "-inf",   "infinity", "1e999", "0x10", "1d5", "#1",  "1#"}) {
        EXPECT_FALSE(real_of(text)) << text;
    }
}

TEST(LineNumbers, AreTakenOneByOne) {
    const std::string line = " \t 12 -3\t9223372036854775807 # 4";
    std::string_view rest = line;
    std::int64_t whole = 0;
    for (const std::int64_t expected : {std::int64_t{12}, std::int64_t{-3}, INT64_MAX}) {
        ASSERT_EQ(take_whole(rest, whole), Taken::Number);
        EXPECT_EQ(whole, expected);
    }
    EXPECT_EQ(take_whole(rest, whole), Taken::Nothing);
    EXPECT_EQ(take_whole(rest, whole), Taken::Nothing);
    for (const char* text : {"9223372036854775808", "1.0", "1e3", "+-1", "1x"}) {
        rest = text;
        EXPECT_EQ(take_whole(rest, whole), Taken::Rubbish) << text;
        EXPECT_EQ(rest, text);
    }
}

}  // namespace
