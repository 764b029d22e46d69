// Paths as texts.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "support/path.h"
#include "support/text_search.h"

namespace zol::testing {
namespace {

struct Row {
    const char* input;
    const char* expected;
};

/// In memory of exactly its size, where the sanitizers see a byte too many.
std::string changed_in_place(void (*change)(char*), const std::string& text) {
    std::vector<char> exact(text.c_str(), text.c_str() + text.size() + 1);
    change(exact.data());
    return exact.data();
}

TEST(PathText, NormaliseTurnsSeparatorsAndCollapsesRunsBehindTheFirstByte) {
    for (const Row& row : std::vector<Row>{{"", ""},
                                           {"file", "file"},
                                           {"a//b\\\\c/", "a/b/c/"},
                                           {"//srv//x", "//srv/x"},
                                           {"\\\\srv\\x", "//srv/x"},
                                           {"///x", "//x"},
                                           {"/\\/\\", "//"},
                                           {"/", "/"},
                                           {"\\x", "/x"},
                                           {"C:\\/x", "C:/x"}}) {
        SCOPED_TRACE(row.input);
        EXPECT_EQ(changed_in_place(path_Normalise, row.input), row.expected);
    }
    path_Normalise(nullptr);
}

TEST(PathText, DirectoryAndBaseNamePartAtTheLastSeparator) {
    struct Parts {
        const char* path;
        const char* directory;
        const char* base;
    };
    for (const Parts& row : std::vector<Parts>{{"", "", ""},
                                               {"file", "", "file"},
                                               {"/x", "/", "x"},
                                               {"\\x", "/", "x"},
                                               {"/", "/", ""},
                                               {"C:/x", "C:/", "x"},
                                               {"C:\\x", "C:/", "x"},
                                               {"C:x", "", "C:x"},
                                               {"a/b/", "a/b", ""},
                                               {"a\\b/c", "a/b", "c"},
                                               {"a/b\\c", "a/b", "c"},
                                               {"a///b", "a/", "b"},
                                               {"//srv/share", "//srv", "share"}}) {
        SCOPED_TRACE(row.path);
        EXPECT_STREQ(path_DirName(row.path), row.directory);
        EXPECT_STREQ(path_BaseName(row.path), row.base);
    }
    EXPECT_EQ(path_DirName(nullptr), nullptr);
    EXPECT_EQ(path_BaseName(nullptr), nullptr);
}

TEST(PathText, ThePartsOfAHandedOutPathCanBeAskedFor) {
    EXPECT_STREQ(path_BaseName(path_DirName("a/b/c")), "b");
    const char* const directory = path_DirName("a/b.c/d.e");
    std::string other = "x/y.z";
    path_StripExtension(other.data());
    EXPECT_EQ(path_IsReservedName("a/nul"), 1);
    EXPECT_STREQ(directory, "a/b.c") << "only the pair itself shares the buffer";
}

TEST(PathText, APartOfMoreThan1024BytesHasNoAnswer) {
    for (const std::size_t size : {1023U, 1024U, 1025U, 100000U}) {
        SCOPED_TRACE(size);
        const std::string part(size, 'x');
        const bool fits = size <= 1024;
        const auto text_or_null = [&](const char* answer) {
            return fits ? answer != nullptr && answer == part : answer == nullptr;
        };
        EXPECT_TRUE(text_or_null(path_BaseName(part.c_str())));
        EXPECT_TRUE(text_or_null(path_BaseName(("a/" + part).c_str())));
        EXPECT_TRUE(text_or_null(path_DirName((part + "/a").c_str())));
        EXPECT_EQ(path_IsReservedName(("a/" + part).c_str()), 0);
        EXPECT_EQ(path_IsReservedName(("nul." + part.substr(4)).c_str()), fits ? 1 : 0);
        const std::string with_extension = "a\\" + part.substr(2) + ".c";
        EXPECT_EQ(changed_in_place(path_StripExtension, with_extension),
                  fits ? "a/" + part.substr(2) : with_extension);
    }
}

TEST(PathText, StripExtensionCutsTheLastOneAndNeverLengthensTheText) {
    for (const Row& row : std::vector<Row>{{"", ""},
                                           {"file", "file"},
                                           {"file.txt", "file"},
                                           {"a/b/c.d.e", "a/b/c.d"},
                                           {"a\\b.c\\d", "a/b.c/d"},
                                           {".profile", ".profile"},
                                           {"a/.profile", "a/.profile"},
                                           {"..", "."},
                                           {"a.", "a"},
                                           {"a/b.c/", "a/b.c/"},
                                           {"/x.c", "//x"},
                                           {"/x", "/x"},
                                           {"C:\\x.c", "C://x"},
                                           {"C:\\x", "C:/x"},
                                           {"a//x", "a//x"}}) {
        SCOPED_TRACE(row.input);
        EXPECT_EQ(changed_in_place(path_StripExtension, row.input), row.expected);
    }
    path_StripExtension(nullptr);
}

TEST(PathText, DriveForms) {
    struct Forms {
        const char* path;
        int root;
        int drive;
    };
    for (const Forms& row : std::vector<Forms>{{"C:", 1, 1},
                                               {"z:", 1, 1},
                                               {"C:\\", 1, 0},
                                               {"C:/", 1, 0},
                                               {"C:x", 0, 0},
                                               {"C://", 0, 0},
                                               {"C", 0, 0},
                                               {"1:", 0, 0},
                                               {"::", 0, 0},
                                               {"\xC3:", 0, 0},
                                               {"", 0, 0}}) {
        SCOPED_TRACE(row.path);
        EXPECT_EQ(path_IsDriveRoot(row.path), row.root);
        EXPECT_EQ(path_IsDrive(row.path), row.drive);
    }
    EXPECT_EQ(path_IsDriveRoot(nullptr), 0);
    EXPECT_EQ(path_IsDrive(nullptr), 0);
}

TEST(PathText, ReservedNamesInAnyCaseAndWithAnyExtension) {
    for (const char* name : {"com1", "COM9", "LPT9.txt", "nul", "Con.anything", "prn", "aux.",
                             "a/nul", "a\\Nul.tar.gz", "C:\\aux"}) {
        EXPECT_EQ(path_IsReservedName(name), 1) << name;
    }
    for (const char* name : {"com0", "com", "com10", "console", "auxiliary", "nul/", "nul/a",
                             "xnul", " nul", "nul ", "lpt", ""}) {
        EXPECT_EQ(path_IsReservedName(name), 0) << name;
    }
    EXPECT_EQ(path_IsReservedName(nullptr), 0);
}

TEST(TextSearch, LastOccurrence) {
    struct Search {
        const char* text;
        const char* needle;
        int place;  // -1 for none
    };
    for (const Search& row : std::vector<Search>{{"a.b.c", ".", 3},
                                                 {"aaa", "aa", 1},
                                                 {"abc", "abc", 0},
                                                 {"abc", "abcd", -1},
                                                 {"abc", "x", -1},
                                                 {"abc", "", 3},
                                                 {"", "", 0},
                                                 {"", "x", -1}}) {
        SCOPED_TRACE(row.needle);
        const char* const found = str_LastOccurrence(row.text, row.needle);
        EXPECT_EQ(found, row.place < 0 ? nullptr : row.text + row.place);
    }
    EXPECT_EQ(str_LastOccurrence(nullptr, "a"), nullptr);
    EXPECT_EQ(str_LastOccurrence("a", nullptr), nullptr);
}

}  // namespace
}  // namespace zol::testing
