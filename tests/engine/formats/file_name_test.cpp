#include "engine/formats/file_name.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

namespace zol::engine {
namespace {

TEST(FileName, SplitsAtTheLastMarkUnlessAFileHasTheWholeName) {
    struct Row {
        const char* name;
        const char* path;
        const char* element;
    };
    const Row rows[] = {
        {"a.omf", "a.omf", ""},
        {"a.omf#", "a.omf", ""},
        {"a.omf#pit", "a.omf", "pit"},
        {"a#b.omf#pit", "a#b.omf", "pit"},
        {"there#1.omf", "there#1.omf", ""},
        {"#pit", "", "pit"},
        {"", "", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const FileName name = split_file_name(
            row.name, [](const std::string& path) { return path == "there#1.omf"; });
        EXPECT_EQ(name.path, row.path);
        EXPECT_EQ(name.element, row.element);
    }
}

TEST(FileName, KnowsAddressesInAnyLocale) {
    struct Row {
        const char* name;
        bool is_url;
    };
    const Row rows[] = {
        {"https://example.org/a.obj", true},
        {"HTTP2://x", true},
        {"svn+ssh-1.0://x", true},
        {"://x", false},
        {"a:/x", false},
        {"a b://x", false},
        {"folder/a://x", false},
        // A letter where each byte is one: e with an acute accent.
        {"caf\xE9://x", false},
        {"", false},
    };
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* const locale : {"C", "fr_FR.ISO-8859-1", "de_DE.ISO-8859-1"}) {
        if (std::setlocale(LC_ALL, locale) == nullptr) continue;
        for (const Row& row : rows) {
            SCOPED_TRACE(std::string(locale) + ' ' + row.name);
            EXPECT_EQ(is_url(row.name), row.is_url);
        }
    }
    std::setlocale(LC_ALL, before.c_str());
}

}  // namespace
}  // namespace zol::engine
