// The calls: results, groups, replacements, messages, and what they refuse.
#include "support/regex.h"

#include <gtest/gtest.h>
#include <pthread.h>
#include <regex.h>

#include <cstdlib>
#include <functional>
#include <regex>
#include <string>
#include <vector>

#include "tests/support/plain_locales.h"

namespace {

using Texts = std::vector<std::string>;

std::string repeated(const std::string& text, std::size_t times) {
    std::string all;
    for (; times > 0; --times) {
        all += text;
    }
    return all;
}

// What a call says on the standard error stream.
template <typename Call>
std::string said_by(Call call) {
    ::testing::internal::CaptureStderr();
    call();
    return ::testing::internal::GetCapturedStderr();
}

// On a thread of its own with a stack of this size.
void on_stack_of(std::size_t bytes, const std::function<void()>& work) {
    pthread_attr_t attributes;
    ::pthread_attr_init(&attributes);
    ASSERT_EQ(::pthread_attr_setstacksize(&attributes, bytes), 0);
    pthread_t thread{};
    const auto run = [](void* given) -> void* {
        (*static_cast<const std::function<void()>*>(given))();
        return nullptr;
    };
    ASSERT_EQ(
        ::pthread_create(&thread, &attributes, run, const_cast<std::function<void()>*>(&work)), 0);
    ::pthread_join(thread, nullptr);
    ::pthread_attr_destroy(&attributes);
}

TEST(RegexMatch, GivesTheLengthOfTheMatchAndNothingForAnEmptyOne) {
    EXPECT_EQ(regex_Match("abc", "b", false), 1);
    EXPECT_EQ(regex_Match("", "a*", false), 0);
    EXPECT_EQ(regex_Match("b", "a*", false), 0);
    EXPECT_EQ(regex_Match(std::string("a\0b", 3), "a.*", false), 1);
    EXPECT_EQ(regex_Match("ab", std::string("a\0b", 3), false), 1);
    Texts groups{"left over"};
    EXPECT_EQ(regex_Match("b", "a*", false, groups), 0);
    EXPECT_EQ(groups, Texts());
}

TEST(RegexMatch, LeavesTheOffsetsOfTheGroupsToTheCaller) {
    re_registers registers{};
    EXPECT_EQ(regex_Match("xabcx", R"(\(a\)\(q\)?bc)", 0, &registers), 3);
    EXPECT_EQ(registers.start[0], 1);
    EXPECT_EQ(registers.end[0], 4);
    EXPECT_EQ(registers.start[1], 1);
    EXPECT_EQ(registers.end[1], 2);
    EXPECT_EQ(registers.start[2], -1);
    std::free(registers.start);
    std::free(registers.end);
}

TEST(RegexMatch, ListsGroupsUpToTheFirstThatTookNoPart) {
    Texts thirty(30, "a");
    thirty[0] = repeated("a", 40);
    const struct {
        std::string text, pattern;
        Texts groups;
    } rows[] = {
        {"xaby", R"(\(a\)\(b\))", {"ab", "a", "b"}},
        {"b", R"(\(a\)\|\(b\))", {"b"}},
        {"ac", R"(\(a\)\(b\)?\(c\))", {"ac", "a"}},
        {"ab", R"(\(x*\)ab)", {"ab", ""}},
        {"abab", R"(\(\(a\)b\)*)", {"abab", "ab", "a"}},
        {thirty[0], repeated(R"(\(a\))", 40), thirty},
        // More than one empty way through the loop: the match alone.
        {"b", R"(\(a*\|b\|\)*)", {"b"}},
        {"a b", R"(\(\b\|a\|\)*)", {"a"}},
        {"aaa", R"(\(b*\|c\|\(b*\|c\|a\)*\)*)", {"aaa"}},
    };
    for (const auto& [text, pattern, expected] : rows) {
        SCOPED_TRACE(pattern);
        Texts groups;
        regex_Match(text, pattern, false, groups);
        EXPECT_EQ(groups, expected);
    }
}

TEST(RegexMatch, TellsAFaultyPatternInTheStatedWordsInEveryLocale) {
    const struct {
        std::string pattern, words;
    } rows[] = {
        {"[", "Unmatched [ or [^"},
        {"[^", "Unmatched [ or [^"},
        {"[]", "Unmatched [ or [^"},
        {"a[^]b", "Unmatched [ or [^"},
        {"[a-", "Unmatched [ or [^"},
        {"[[.", "Unmatched [ or [^"},
        {"\\", "Trailing backslash"},
        {"a\\\\\\", "Trailing backslash"},
        {"\\(a", "Unmatched ( or \\("},
        {"\\(\\(a\\)", "Unmatched ( or \\("},
        {"a\\)", "Unmatched ) or \\)"},
        {"\\1", "Invalid back reference"},
        {"\\(a\\)\\2", "Invalid back reference"},
        {"\\(a\\1\\)", "Invalid back reference"},
        {"\\(\\(a\\)\\|b\\2\\)*", "Invalid back reference"},
        {repeated("a", 65026), "Regular expression too big"},
        {repeated("[a\xff]", 1928), "Regular expression too big"},
        {repeated("\\(", 100'000), "Regular expression too big"},
        {repeated("\\b", 60'000), "Regular expression too big"},
        {repeated("\\(", 199) + "a" + repeated("\\)+", 199), "Regular expression too big"},
        // Would each be compiled for minutes.
        {repeated("\\(\\|\\(a*\\|b\\)*\\)*", 20), "Regular expression too big"},
        {"\\(\\(\\b\\|\\<\\)*\\(^\\|\\B\\)*\\)*", "Regular expression too big"},
    };
    const auto expect = [&] {
        for (const auto& row : rows) {
            SCOPED_TRACE(row.pattern.substr(0, 40));
            Texts groups{"left over"};
            EXPECT_EQ(said_by([&] { EXPECT_EQ(regex_Match("aa", row.pattern, false, groups), 0); }),
                      "regex_Match: " + row.words + "\n");
            EXPECT_EQ(groups, Texts());
            EXPECT_EQ(said_by([&] {
                          EXPECT_EQ(pat_Substitute("aa", row.pattern, "b", false, false), "");
                      }),
                      "pat_Substitute: " + row.words + "\n");
        }
    };
    in_every_locale(expect);
}

TEST(RegexMatch, TakesPatternsUpToTheLimitOnASmallStack) {
    const struct {
        std::string pattern, text;
        int length;
    } rows[] = {
        {repeated("a", 65025), repeated("a", 65025), 65025},
        {repeated("[a\xff]", 1927), repeated("a", 1927), 1927},
        {repeated("\\(", 199) + "a" + repeated("\\)", 199), "a", 1},
        {repeated("\\(", 15) + "a" + repeated("\\)*", 15), "aaa", 3},
        {repeated("\\(b*\\|c\\|", 13) + "a" + repeated("\\)*", 13), "aaa", 3},
        {repeated("a*", 1200) + "b", "aab", 3},
        {"\\(" + repeated("\\<abc\\>\\|", 500) + "b\\)*x", "abcx", 1},
        {"\\(a\\)" + repeated("\\1", 230), repeated("a", 231), 231},
        {repeated("\\(\\b\\|\\B\\)", 8) + "a", "a", 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pattern.substr(0, 40));
        Texts groups;
        on_stack_of(std::size_t{1} << 20, [&] {
            EXPECT_EQ(regex_Match(row.text, row.pattern, false, groups), row.length);
        });
    }
}

TEST(PatSubstitute, ReplacesAndExpands) {
    const struct {
        std::string text, pattern, replacement, expected;
        bool repeat = false;
    } rows[] = {
        {"", "a*", "x", ""},
        {"a-a", "b", "x", "a-a"},
        {"-a-a-", "a", "x", "-x-a-"},
        {"-a-a-", "a", "x", "-x-x-", true},
        {"key=value;", R"(\(.*\)=\(.*\);)", R"(\2 is \1, \0)", "value is key, key=value;"},
        {"ab", R"(\(a\)\(b\))", R"(<\5\2>)", "<b>"},
        {"ab", R"(\(a\)b)", R"(\\1\)", R"(\a\)"},
        {"ab", "a", R"(\x)", R"(\xb)"},
        {"ab", R"(\(q\)\|\(a\))", R"([\1\2])", "[]b"},
        {"b", "a*", "x", "xb"},
        // The scan goes on behind a match, and still sees what lies before it.
        {"aaa", "^a", "x", "xaa", true},
        {"aaa", R"(\`a)", "x", "xaa", true},
        {"foo foo", R"(\<fo*)", "x", "x x", true},
        {"aab", R"(\<a)", "x", "xab", true},
        {"a\na", "^a", "x", "x\nx", true},
        {"aa", R"(a\Ba)", "x", "x", true},
    };
    for (const auto& [text, pattern, replacement, expected, repeat] : rows) {
        SCOPED_TRACE(pattern);
        EXPECT_EQ(pat_Substitute(text, pattern, replacement, false, repeat), expected);
    }
    EXPECT_EQ(pat_Substitute("xABx", "ab", "_", true, false), "x_x");
    EXPECT_EQ(pat_Substitute(std::string("ab\0c", 4), "b", "x", false, false), "ax");
    EXPECT_EQ(pat_Substitute("ab", "b", std::string("x\0y", 3), false, false),
              std::string("ax\0y", 4));
}

TEST(RegexMatch2, ReadsEachGrammarAndListsEveryMatch) {
    const struct {
        std::string text, pattern;
        int flavour;
        Texts matches;
    } rows[] = {
        {"aXbXc", "[a-c]", 2, {"a", "b", "c"}},
        {"a1b", R"(\d)", 2, {"1"}},
        {"a1b", R"(\d)", 9, {"1"}},
        {"a1b", R"(\d)", -1, {"1"}},
        {"ab", "a*", 2, {"a", "", ""}},
        {"(a)", R"(\(a\))", 0, {"a"}},
        {"(a)", R"(\(a\))", 1, {"(a)"}},
        {"a|b", "a|b", 0, {"a|b"}},
        {"ab", "a|b", 1, {"a", "b"}},
        {"ab", "a|b", 3, {"a", "b"}},
        {"ab", "a\nb", 4, {"a", "b"}},
        {"aabb", "a+|b+", 5, {"aa", "bb"}},
    };
    for (const auto& [text, pattern, flavour, expected] : rows) {
        SCOPED_TRACE(pattern + " by " + std::to_string(flavour));
        Texts matches{"left over"};
        EXPECT_TRUE(regex_Match2(text, pattern, false, matches, flavour));
        EXPECT_EQ(matches, expected);
        EXPECT_TRUE(regex_Match2(text, pattern, false, flavour));
    }
    Texts matches{"left over"};
    EXPECT_FALSE(regex_Match2("abc", "x", false, matches, 2));
    EXPECT_EQ(matches, Texts());
    EXPECT_TRUE(regex_Match2("COM1", "^(com[1-9]|nul)$", true, 2));
}

TEST(RegexMatch2, TellsAFaultyPatternAndLeavesTheMatches) {
    Texts matches{"before"};
    std::string why;
    try {
        const std::regex faulty("(a");
    } catch (const std::regex_error& error) {
        why = error.what();
    }
    EXPECT_EQ(said_by([&] { EXPECT_FALSE(regex_Match2("text", "(a", false, matches, 2)); }),
              "regex_Match2: " + why + ". Pattern: (a, Text: text\n");
    EXPECT_EQ(matches, Texts{"before"});
    // Would take more stack to read or to step through than there is.
    for (const std::string& pattern :
         {repeated("(", 50'000) + repeated(")", 50'000), repeated("a", 90'000),
          std::string("(){40000}"), std::string("((a{100}){100}){100}")}) {
        EXPECT_NE(said_by([&] { EXPECT_FALSE(regex_Match2("a", pattern, false, 2)); }), "");
    }
}

TEST(RegexMatch2, GivesUpOnALongTextBeforeTheStackEnds) {
    const std::string text(std::size_t{1} << 20, 'a');
    for (const std::size_t stack : {std::size_t{256} << 10, std::size_t{8} << 20}) {
        on_stack_of(stack, [&] {
            for (const char* pattern : {"a*", "(a|b)*", "((((a))))*", "(?:a(?=a))*x", "(a*)\\1"}) {
                SCOPED_TRACE(pattern);
                EXPECT_THROW(regex_Match2(text, pattern, false, 2), std::regex_error);
            }
            EXPECT_TRUE(regex_Match2(text + "b", "b", false, 2));
        });
    }
    on_stack_of(std::size_t{8} << 20,
                [] { EXPECT_TRUE(regex_Match2(std::string(500, 'a'), "^(a|b)*$", false, 2)); });
}

}  // namespace
