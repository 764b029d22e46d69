// Looking texts up: which key wins, where the trie lets go of a key, what bad keys do.
#include "support/dictionary.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>

namespace zol::support {
namespace {

Dictionary dictionary(std::string_view content) {
    return dictionary_of(pairs_of(content).pairs);
}

struct LookupRow {
    const char* name;
    std::string content;
    std::string text;
    std::string expected;
};

void expect_lookups(const std::vector<LookupRow>& rows) {
    for (const LookupRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(dict_Lookup(dictionary(row.content), row.text), row.expected);
    }
}

TEST(Dictionary, FindsLiteralsAndPatternsOfTheWholeText) {
    const std::string two = "Saved\nGesichert\nSave as\nSichern als\n";
    const std::string pattern = "Bench \\([0-9]+\\) of \\([0-9]+\\)\n\\2 Sohlen, davon \\1 (\\0)\n";
    expect_lookups({
        {"literal", two, "Save as", "Sichern als"},
        {"blanks behind stay", two, "Saved  ", "Gesichert  "},
        {"a tab behind is part of the text", two, "Saved\t", "Saved\t"},
        {"blanks before are part of the text", two, " Saved", " Saved"},
        {"literals mind the case", two, "saved", "saved"},
        {"a start of a key", two, "Save", "Save"},
        {"more than a key", two, "Saved!", "Saved!"},
        {"blanks alone", two, "   ", "   "},
        {"nothing", two, "", ""},
        {"groups change places", pattern, "Bench 4 of 12 ", "12 Sohlen, davon 4 (ench 4 of 12) "},
        {"a pattern that ends too soon", pattern, "Bench 4 of 12!", "Bench 4 of 12!"},
        {"a pattern that begins too late", "x+y\nZ\n", "xaxy", "xaxy"},
        {"patterns mind the case", "Seam.\nF\n", "sEAMs", "sEAMs"},
        {"a group behind the last", "Seam\\(.\\)\nF\\1\\2\n", "Seams", "Fs"},
        {"a literal's translation is taken as it is", "Seam\nF\\1##\n", "Seam", "F\\1##"},
        {"parentheses are plain", "Seam (coal)\nKohle\n", "Seam (coal)", "Kohle"},
        {"an escaped key", "50\\.0\\#\nFuenfzig\n", "50.0#", "Fuenfzig"},
        {"the context is part of the key", "Open##menu\nOeffnen\n", "Open##menu", "Oeffnen"},
        {"without its context", "Open##menu\nOeffnen\n", "Open", "Open"},
        {"not found is cleaned", "Open\nA\n", "50\\# Open##menu  ", "50# Open"},
        {"bytes above 127",
         "\xC3\x9C"
         "ber\nAbout\n\xC3\xBCx\nY\n",
         "\xC3\x9C"
         "ber",
         "About"},
        {"null bytes in a text", "a.*\nX\n", std::string("ab\0c", 4), std::string("ab\0c", 4)},
        {"null bytes in a literal", std::string("a\0b\nX\n", 6), std::string("a\0b", 3), "X"},
        {"a carriage return is part of a line", "Saved\r\nGesichert\r\n", "Saved", "Saved"},
        {"no dictionary", "", "Saved##x", "Saved"},
    });
}

TEST(Dictionary, TriesShorterWaysFirstAndThenTheOrderOfTheKeys) {
    expect_lookups({
        {"a pattern nearer to the root", "abc\nL\na.*\nP\n", "abc", "P"},
        {"at the root", "ab\nL\n[a]b\nP\n", "ab", "P"},
        {"two patterns at one node", "a.c\nsecond\na.*\nfirst\n", "abc", "first"},
        {"a key twice", "Open\nB\nOpen\nA\n", "Open", "A"},
        {"order of bytes, not of letters", "a[bB]\nZ\na[Bb]\nY\n", "ab", "Y"},
    });
}

TEST(Dictionary, LetsGoOfAKeyWhereItPartsFromItsNeighbours) {
    // A repeat or an anchor in first place behind the way means something else there.
    const std::string goes_on = "aab\n1\naacx*\n2\nabc\n3\n";
    expect_lookups({
        {"alone: one byte", "ab^c\nX\n", "ab^c", "X"},
        {"beside a key that shares two", "ab^c\nX\nabd\nY\n", "abc", "X"},
        {"no longer itself", "ab^c\nX\nabd\nY\n", "ab^c", "ab^c"},
        {"the repeat keeps its byte", "aacx*\n2\nabc\n3\n", "aacxxx", "2"},
        {"the next key is compared from where the one before parted", goes_on, "aacx*", "2"},
        {"so the repeat has lost its byte", goes_on, "aacxxx", "aacxxx"},
        {"at the end of the text every pattern is a hit of nothing", "abc.+\nX\nabcd\nY\n", "abc  ",
         "  "},
        {"and not where the way is shorter", "abc.*\nX\n", "abc", "X"},
    });
    EXPECT_EQ(dictionary(goes_on).nodes.size(), 7U) << "the root, a, aa, aab, aac, aacx, ab";
}

TEST(Dictionary, SaysWhenAPatternDoesNotCompileAndGoesOn) {
    const Dictionary bad = dictionary("Seam[\nX\nSeam[a\nY\nSeam.*\nZ\n");
    for (int i = 0; i < 2; ++i) {
        ::testing::internal::CaptureStderr();
        EXPECT_EQ(dict_Lookup(bad, "Dyke"), "Dyke");
        EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
        ::testing::internal::CaptureStderr();
        EXPECT_EQ(dict_Lookup(dictionary("Seam[\nX\n"), "Seam["), "Seam[");
        EXPECT_EQ(::testing::internal::GetCapturedStderr(), "regex_Match: Unmatched [ or [^\n");
    }
    EXPECT_EQ(dict_Lookup(bad, "Seams"), "Z");
}

TEST(Dictionary, FindsEveryLiteralOfRandomDictionaries) {
    std::mt19937 random(20240611);
    const auto word = [&random] {
        std::string text(1 + random() % 6, 'a');
        for (char& byte : text) byte = "ab c"[random() % 4];
        text.front() = text.back() = 'b';
        return text;
    };
    for (int round = 0; round < 300; ++round) {
        std::string content;
        std::map<std::string, std::string> model;
        for (std::size_t i = random() % 30; i > 0; --i) {
            const std::string key = word();
            const std::string translation = word();
            content.append(key).append("\n").append(translation).append("\n");
            const auto [place, is_new] = model.try_emplace(key, translation);
            if (!is_new) place->second = std::min(place->second, translation);
        }
        const Dictionary tested = dictionary(content);
        for (int i = 0; i < 50; ++i) {
            const std::string text = word();
            const auto place = model.find(text);
            ASSERT_EQ(dict_Lookup(tested, text), place == model.end() ? text : place->second)
                << content;
        }
    }
}

TEST(Dictionary, SurvivesAnyBytes) {
    std::mt19937 random(7);
    const std::string bytes("ab\\\\[]^$.*+?()0#\r\0\xFF \n\n\n", 24);
    const auto noise = [&](std::size_t longest) {
        std::string text(random() % longest, ' ');
        for (char& byte : text) byte = bytes[random() % bytes.size()];
        return text;
    };
    ::testing::internal::CaptureStderr();
    for (int round = 0; round < 500; ++round) {
        const std::string content = noise(200);
        const Dictionary tested = dictionary(content);
        std::size_t n_entries = 0;
        for (const DictionaryNode& node : tested.nodes) n_entries += node.entries.size();
        EXPECT_EQ(n_entries, pairs_of(content).pairs.size());
        for (int i = 0; i < 20; ++i) dict_Lookup(tested, noise(12));
    }
    ::testing::internal::GetCapturedStderr();
}

TEST(Dictionary, BoundsTheTrieAndStillFindsKeysBeyondIt) {
    const std::string prefix(kMostDictionaryNodes + 1000, 'x');
    const Dictionary deep =
        dictionary(prefix + "\n1\n" + prefix + "y\n2\n" + prefix + ".+\n3\nShort\n4\n");
    EXPECT_EQ(deep.nodes.size(), kMostDictionaryNodes);
    EXPECT_EQ(dict_Lookup(deep, prefix), "1");
    EXPECT_EQ(dict_Lookup(deep, "Short"), "4");
    EXPECT_EQ(dict_Lookup(deep, prefix + "zz"), "3");
}

}  // namespace
}  // namespace zol::support
