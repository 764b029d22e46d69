// Where resources are looked for, and in which order.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/path.h"
#include "tests/support/scripted_os.h"

namespace zol::testing {
namespace {

using os::PathKind;
using Texts = std::vector<std::string>;

constexpr int kAnything = PATH_ACCEPT_FILE | PATH_ACCEPT_DIRECTORY;

std::string or_none(const char* path) {
    return path == nullptr ? "(null)" : path;
}

class PathSearchTest : public ::testing::Test {
protected:
    PathSearchTest() {
        os_script = {};
        os_script.environment = {{"OSTREL", "/inst"},
                                 {"HOME", "/home/me"},
                                 {"TESSA_RESO", "/reso"},
                                 {"PATH", "/p1::/p2:"}};
        os_script.current_directory = "/cwd";
        os_script.executable_path = "/opt/app/program";
    }

    static void Put(const std::string& path, PathKind kind = PathKind::kOther) {
        os_script.paths[path] = kind;
    }
};

TEST_F(PathSearchTest, EachKindLooksIntoItsPlacesInOrder) {
    struct Row {
        int kind;
        Texts asked;
    };
    const std::vector<Row> rows = {
        {0, {}},
        {1, {"/inst/bin/flib/panels/x", "/opt/app/x"}},
        {2, {"/cwd/x", "/home/me/x", "/inst/bin/flib/spec_defs/x", "/opt/app/x"}},
        {3, {"/inst/bin/flib/x", "/opt/app/x"}},
        {4, {"/p1/x", "/p2/x", "/opt/app/x"}},
        {5, {"/inst/help/tod/x", "/opt/app/x"}},
        {6, {"/inst/bin/exe/x", "/opt/app/x", "/p1/x", "/p2/x"}},
        {7, {"/inst/etc/x", "/opt/app/x"}},
        {8, {"/inst/bin/x", "/opt/app/x"}},
        {9, {"/inst/bin/flib/schema/x", "/opt/app/x"}},
        {10, {"/reso/x", "/inst/etc/resources/x", "/opt/app/x"}},
        {11, {"/inst/bin/flib/images/x", "/opt/app/x"}},
        {12, {}},
        {-1, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.kind);
        os_script.asked.clear();
        os_script.paths.clear();
        EXPECT_EQ(or_none(path_FindResource(row.kind, "x", kAnything)), "(null)");
        EXPECT_EQ(os_script.asked, row.asked);
        // From the last place to the first, each one found hides those behind it.
        for (auto place = row.asked.rbegin(); place != row.asked.rend(); ++place) {
            Put(*place);
            const std::string found = or_none(path_FindResource(row.kind, "x", kAnything));
            EXPECT_EQ(found, *place == "/opt/app/x" ? "/opt/app//x" : *place);
        }
    }
}

TEST_F(PathSearchTest, TheMaskDecidesWhatIsTakenAndASearchGoesOnBehindARefusal) {
    Put("/cwd/x", PathKind::kDirectory);
    Put("/home/me/x");
    EXPECT_EQ(or_none(path_FindResource(2, "x", PATH_ACCEPT_FILE)), "/home/me/x");
    EXPECT_EQ(or_none(path_FindResource(2, "x", PATH_ACCEPT_DIRECTORY)), "/cwd/x");
    EXPECT_EQ(or_none(path_FindResource(2, "x", kAnything)), "/cwd/x");
    EXPECT_EQ(or_none(path_FindResource(2, "x", 0)), "(null)");
    Put("/p1/x");
    EXPECT_EQ(or_none(path_FindResource(4, "x", PATH_ACCEPT_DIRECTORY)), "(null)");
}

TEST_F(PathSearchTest, AnEmptyNameAsksForTheDirectoryWhateverTheMask) {
    Put("/inst/bin/flib", PathKind::kDirectory);
    for (const int mask : {0, PATH_ACCEPT_FILE, kAnything}) {
        EXPECT_EQ(or_none(path_FindResource(3, "", mask)), "/inst/bin/flib/");
        EXPECT_EQ(or_none(path_FindResource(3, nullptr, mask)), "/inst/bin/flib/");
    }
    Put("/inst/bin/flib", PathKind::kOther);
    EXPECT_EQ(or_none(path_FindResource(3, "", PATH_ACCEPT_FILE)), "(null)");
}

TEST_F(PathSearchTest, AVariableThatIsNotSetOrEmptyTakesItsPlaceOutOfTheSearch) {
    for (const bool set_but_empty : {false, true}) {
        SCOPED_TRACE(set_but_empty);
        os_script.environment.clear();
        if (set_but_empty) {
            os_script.environment = {
                {"OSTREL", ""}, {"HOME", ""}, {"TESSA_RESO", ""}, {"PATH", ""}};
        }
        os_script.asked.clear();
        for (const int kind : {2, 6, 10}) {
            path_FindResource(kind, "x", kAnything);
        }
        EXPECT_EQ(os_script.asked, (Texts{"/cwd/x", "/opt/app/x", "/opt/app/x", "/opt/app/x"}));
    }
}

TEST_F(PathSearchTest, ALongPathOfTheProgramIsPassedOver) {
    for (const std::size_t size : {1023U, 1024U, 1025U}) {
        SCOPED_TRACE(size);
        os_script.executable_path = "/" + std::string(size - 2, 'd') + "/";
        const std::string path = os_script.executable_path + "x";
        Put(path);
        const std::string found = os_script.executable_path + "/x";
        EXPECT_EQ(or_none(path_FindResource(1, "x", kAnything)), size <= 1024 ? found : "(null)");
    }
    os_script.executable_path.clear();
    EXPECT_EQ(or_none(path_FindResource(1, "x", kAnything)), "(null)");
}

TEST_F(PathSearchTest, TheFirstOnThePathDecides) {
    struct Row {
        const char* name;
        PathKind first;
        PathKind second;
        const char* found;
    };
    for (const Row& row :
         {Row{"both", PathKind::kOther, PathKind::kOther, "/p1/x"},
          Row{"second", PathKind::kNothing, PathKind::kOther, "/p2/x"},
          Row{"a directory hides a file", PathKind::kDirectory, PathKind::kOther, "(null)"},
          Row{"none", PathKind::kNothing, PathKind::kNothing, "(null)"}}) {
        SCOPED_TRACE(row.name);
        Put("/p1/x", row.first);
        Put("/p2/x", row.second);
        EXPECT_EQ(or_none(path_FindOnPath("x")), row.found);
    }
    Put("/p1/nul");
    EXPECT_EQ(or_none(path_FindOnPath("nul")), "(null)");
    Put("/p1/a/b");
    EXPECT_EQ(or_none(path_FindOnPath("a\\\\b")), "/p1/a/b");
    EXPECT_EQ(or_none(path_FindOnPath(nullptr)), "(null)");
}

TEST_F(PathSearchTest, TheSystemIsAskedWithoutSeparatorsAtTheEndButForARoot) {
    struct Row {
        const char* path;
        Texts asked;
    };
    for (const Row& row : std::vector<Row>{{"a/b///", {"a/b"}},
                                           {"a\\b\\/", {"a/b"}},
                                           {"C:", {"C:/"}},
                                           {"C:\\", {"C:/"}},
                                           {"/", {"/"}},
                                           {"///", {"/"}},
                                           {"a/NUL", {}},
                                           {"a/nul/", {"a/nul"}},
                                           {"", {}}}) {
        SCOPED_TRACE(row.path);
        os_script.asked.clear();
        path_Exists(row.path);
        EXPECT_EQ(os_script.asked, row.asked);
    }
    EXPECT_EQ(path_Exists(nullptr), 0);
}

}  // namespace
}  // namespace zol::testing
