// The pattern language, row by row, in every locale.
#include <string>
#include <tuple>
#include <vector>

#include "support/regex.h"
#include "tests/support/plain_locales.h"

namespace {

struct Row {
    std::string pattern;
    std::string text;
    std::string match;  // "" for none
    bool ignore_case = false;
};

const std::vector<Row> kRows = {
    // Parentheses, bar and braces alone are ordinary.
    {"(a)", "a(a)", "(a)"},
    {"(a)", "a", ""},
    {"a|b", "a", ""},
    {"a|b", "xa|b", "a|b"},
    {"a{2}", "aa", ""},
    {"a{2}", "a{2}", "a{2}"},
    {R"(a\{2\})", "aa", ""},
    {R"(\{a\})", "{a}", "{a}"},
    {R"(^([01]|TRUE|FALSE)\s*$)", "TRUE", "", true},
    {R"(^([01]|TRUE|FALSE)\s*$)", "(1|TRUE|FALSE)ss", "(1|TRUE|FALSE)ss"},
    {R"(^([01]|TRUE|FALSE)\s*$)", "(0|true|False)S", "(0|true|False)S", true},
    // Groups and alternation.
    {R"(\(ab\)+)", "xababa", "abab"},
    {R"(a\|bc)", "xbc", "bc"},
    {R"(\(a\|bc\)d)", "bcd", "bcd"},
    {R"(a\|)", "a", "a"},
    {R"(\|a)", "a", "a"},
    {R"(\(\)a)", "a", "a"},
    // Repeats, and repeats of repeats.
    {"ab*c", "ac", "ac"},
    {"ab*c", "abbbc", "abbbc"},
    {"ab+c", "ac", ""},
    {"b+", "xbbby", "bbb"},
    {"ab?c", "abbc", ""},
    {"ab?c", "ac", "ac"},
    {"a**", "aaa", "aaa"},
    {"a+?", "aab", "aa"},
    {"xa+?y", "xy", "xy"},
    {"xa?+y", "xaay", "xaay"},
    {"xa??y", "xaay", ""},
    // With no item before them they are ordinary, and can then be repeated.
    {"*a", "a*a", "*a"},
    {"+a", "+a", "+a"},
    {"?a", "?a", "?a"},
    {"**a", "***a", "***a"},
    {"^*a", "*a", "*a"},
    {"^+a", "+a", "+a"},
    {"^?", "?", "?"},
    {"^**", "***", "***"},
    {R"(\(*a\))", "*a", "*a"},
    {R"(\(^*a\))", "*a", "*a"},
    {R"(a\|*b)", "*b", "*b"},
    {R"(x\|^+b)", "+b", "+b"},
    // What takes no byte is an item all the same.
    {R"(\<*a)", "xa", "a"},
    {R"(\<*a)", "*a", "a"},
    {R"(\<+a)", "xa", ""},
    {R"(\<+a)", "x a", "a"},
    {R"(x\b?a)", "xa", "xa"},
    {R"(x\b?^)", "x^", "x^"},
    {R"(\<*^a)", "^a", "^a"},
    {R"(\`*a)", "xa", "a"},
    {R"(a\'+)", "aa", "a"},
    // Any byte but newline.
    {"a.c", "a\nc", ""},
    {"a.c",
     "a\xff"
     "c",
     "a\xff"
     "c"},
    {"a..c",
     "a\xc3\xa4"
     "c",
     "a\xc3\xa4"
     "c"},
    {"a.c",
     "a\xc3\xa4"
     "c",
     ""},
    // Lists.
    {"[abc]+", "xcbay", "cba"},
    {"[0-9]+", "x2024y", "2024"},
    {"[]a]+", "xa]", "a]"},
    {"[^]a]", "]ab", "b"},
    {"[a-]+", "x-a", "-a"},
    {"[-a]+", "x-a", "-a"},
    {"[^-a]", "-ab", "b"},
    {"[+--]+", "*+,-.", "+,-"},
    {R"([\s])", "s", "s"},
    {R"([\s])", "\\", "\\"},
    {R"([\w])", "x", ""},
    {R"([a\]b)", "\\b", "\\b"},
    {R"([a\]]b)", "a]b", "a]b"},
    {"[^a]", "\n", "\n"},
    {"[z-a]", "z", ""},
    {"[z-ab]", "zb", "b"},
    {"[^z-a]+", "z\na", "z\na"},
    {"[a-c-e]+", "abcde", "abcde"},
    {"[x-z-9]+", "wz9-x", "z"},
    {"[[:alpha:]]", "a", ""},
    {"[[:alpha:]]", ":]", ":]"},
    {"[[:alpha:]", "h", "h"},
    {"[[:alpha:]", "b", ""},
    {"[[.a.]]", "a", ""},
    {"[[.a.]]", "[]", "[]"},
    {"[[.]+", ".[", ".["},
    {"[[=a=]]", "=]", "=]"},
    {"[[=]", "=", "="},
    {"[[.hyphen.]]", "y]", "y]"},
    {"[^[.]", "[.a", "a"},
    {"[.*+?^$]+", "a.*+?^$", ".*+?^$"},
    {"[-^]+", "a-^", "-^"},
    {"[-^[]+", "a-[^", "-[^"},
    {"[^^]", "^a", "a"},
    {"[\xe4-\xe6]", "\xe5", "\xe5"},
    {"[\x80-\xff]+", "\xc3\xa4", "\xc3\xa4"},
    {"[^a]", "\xc3\xa4", "\xc3"},
    // Anchors are anchors only in their places.
    {"^a", "ba", ""},
    {"^a", "b\na", "a"},
    {"a$", "ab", ""},
    {"a$", "a\nb", "a"},
    {R"(\(^a\))", "ba", ""},
    {R"(b\|^a)", "ca", ""},
    {R"(\(a$\))", "ab", ""},
    {R"(a$\|c)", "ab", ""},
    {"a^b", "a^b", "a^b"},
    {"^^a", "^a", "^a"},
    {"a$b", "a$b", "a$b"},
    {"a$$", "a$", "a$"},
    {"$*", "$$$", "$$$"},
    {"$a", "$a", "$a"},
    {R"(\($a\))", "$a", "$a"},
    {R"(\(a\)^)", "a^", "a^"},
    {"a*^", "aa^", "aa^"},
    {R"(\^a)", "^a", "^a"},
    {R"(a\$)", "a$", "a$"},
    {"a$)", "a$)", "a$)"},
    {"a$|b", "a$|b", "a$|b"},
    // References.
    {R"(\(a*\)b\1)", "aabaa", "aabaa"},
    {R"(x\(a*\)b\1y)", "xaabay", ""},
    {R"(\(.\)\(.\)\2\1)", "xabba", "abba"},
    {R"(\(a\)\|b\1)", "b", ""},
    {R"(\(a\)\|\(b\)\2)", "bb", "bb"},
    {R"(\(\(a\)\|b\)*\2)", "aba", "aba"},
    {R"(\(a\)\1)", "aA", "aA", true},
    // Words.
    {R"(\w+)", "-aZ09_-", "aZ09_"},
    {R"(\w)", "\xe4\xc3\xa4-", ""},
    {R"(\W+)", "a\xc3\xa4-b", "\xc3\xa4-"},
    {R"(\<b)", "ab b", "b"},
    {R"(\<b)", "ab", ""},
    {R"(a\>)", "ab", ""},
    {R"(a\>.)", "aba-", "a-"},
    {R"(\bb)", "ab", ""},
    {R"(a\Bb)", "ab", "ab"},
    {R"(a\B-)", "a-", ""},
    {R"(\<a)",
     "\xe4"
     "a",
     "a"},
    // The ends of the text, not of its lines.
    {R"(\`a)", "b\na", ""},
    {R"(\`a)", "ab", "a"},
    {R"(a\')", "a\nb", ""},
    {R"(a\')", "ba", "a"},
    // A backslash before any other byte.
    {R"(\s+)", " \tss", "ss"},
    {R"(\S)", "a", ""},
    {R"(\S)", "S", "S"},
    {R"(\\s)", "\\s", "\\s"},
    {R"(\\s)", "\\ ", ""},
    {R"(\\\s)", "\\s", "\\s"},
    {R"(\d)", "5d", "d"},
    {R"(\n)", "\nn", "n"},
    {R"(\0)", "0", "0"},
    {R"(\.)", "a.", "."},
    {R"(\*\+\?)", "*+?", "*+?"},
    {R"(\[a\])", "[a]", "[a]"},
    {"\\\xe4", "\xe4", "\xe4"},
    // Case is that of ASCII.
    {"abc", "xABC", "ABC", true},
    {"ABC", "abc", "abc", true},
    {"abc", "ABC", ""},
    {"[a-c]+", "ABCD", "ABC", true},
    {"[^a]", "Ab", "b", true},
    {"[_-b]+", "^_`abABc", "_`abAB", true},
    {"[Z-a]+", "YZ[_`aAzb", "Z[_`aAz", true},
    {"[[-]+", "{[", "[", true},
    {"\xe4", "\xc4", "", true},
    {"\xc3\xa4", "\xc3\x84", "", true},
    {"\xe5", "\xc5", "", true},
    {R"(\W)", "k", "", true},
    // Leftmost, then longest.
    {R"(a\|ab\|abc)", "xabcd", "abc"},
    {R"(b+\|abb)", "abbb", "abb"},
    {R"(\(a\|ab\)\(c\|bcd\)d*)", "abcd", "abcd"},
    // Those of the typed conversions.
    {"^[-+]?[0-9]*[.]?[0-9]*$", "-12.9", "-12.9"},
    {"^[-+]?[0-9]*[.]?[0-9]*$", "1e5", ""},
    {"^[-+]?[0-9]*[.]?[0-9]*[eE]?[+-]?[0-9]+$", "1.0e-5", "1.0e-5"},
    {"^[-+]?[0-9]*[.]?[0-9]*[eE]?[+-]?[0-9]+$", "1.", ""},
    {"^[0-9][0-9][0-9][0-9]/[0-9][0-9]/[0-9][0-9]$", "x\n2001/12/31\n", "2001/12/31"},
};

void expect_rows() {
    for (const Row& row : kRows) {
        SCOPED_TRACE("pattern " + row.pattern + " text " + row.text +
                     (row.ignore_case ? " ignoring case" : ""));
        std::vector<std::string> groups;
        const auto length =
            static_cast<std::size_t>(regex_Match(row.text, row.pattern, row.ignore_case, groups));
        EXPECT_EQ(length, row.match.size());
        EXPECT_EQ(groups.empty() ? "" : groups[0], row.match);
    }
}

TEST(PatternLanguage, IsReadAsItsTableSaysInEveryLocale) {
    in_every_locale(expect_rows);
}

// Each list of one range, and its inverse, against each byte.
TEST(PatternLanguage, ListsHoldExactlyTheBytesOfTheirRange) {
    const unsigned char bounds[] = {1,   9,   '*', '+', '-', '.', '/', '0', ':', '=', 'A',
                                    'Z', '[', '^', '_', 'a', 'z', '{', 127, 128, 200, 255};
    const auto expect = [&] {
        for (const unsigned char first : bounds) {
            for (const unsigned char last : bounds) {
                const std::string range{static_cast<char>(first), '-', static_cast<char>(last)};
                std::string inside;
                std::string outside;
                for (int byte = 1; byte < 256; ++byte) {
                    (byte >= first && byte <= last ? inside : outside) += static_cast<char>(byte);
                }
                SCOPED_TRACE(std::to_string(first) + " to " + std::to_string(last));
                if (first != '^') {
                    EXPECT_EQ(pat_Substitute(inside + outside + inside, "[" + range + "]*", "",
                                             false, false),
                              outside.empty() ? "" : outside + inside);
                }
                EXPECT_EQ(regex_Match(inside, "[^" + range + "]", false), 0);
                EXPECT_EQ(regex_Match(outside, "[^" + range + "]+\\'", false),
                          static_cast<int>(outside.size()));
            }
        }
    };
    in_every_locale(expect);
}

}  // namespace
