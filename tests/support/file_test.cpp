// Files, paths and the environment on the system itself.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "support/environment.h"
#include "support/file.h"
#include "support/path.h"

namespace zol::testing {
namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kBoth = GENERIC_READ | GENERIC_WRITE;

/// A folder of its own for each test, and the process in it.
class FileTest : public ::testing::Test {
protected:
    FileTest() : before_(fs::current_path()) {
        std::string pattern = (fs::temp_directory_path() / "zol_file_XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data());
        fs::current_path(folder_);
    }

    ~FileTest() override {
        fs::current_path(before_);
        fs::remove_all(folder_);
    }

    static void Put(const fs::path& path, const std::string& content) {
        std::ofstream(path, std::ios::binary) << content;
    }

    static std::string Content(const fs::path& path) {
        std::ifstream in(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    static std::string Read(file_handle handle, std::uint32_t count) {
        std::string bytes(count, '?');
        bytes.resize(file_Read(handle, bytes.data(), count));
        return bytes;
    }

    const fs::path before_;
    fs::path folder_;
};

TEST_F(FileTest, DispositionsOnAFileThatExistsAndOnOneThatDoesNot) {
    struct Row {
        const char* name;
        std::uint32_t disposition;
        const char* of_existing;  // what the file then holds, null where it does not open
        const char* of_absent;
    };
    const char* const kRefused = nullptr;
    for (const Row& row :
         {Row{"new", CREATE_NEW, kRefused, ""}, Row{"always", CREATE_ALWAYS, "", ""},
          Row{"existing", OPEN_EXISTING, "old", kRefused},
          Row{"open always", OPEN_ALWAYS, "old", ""},
          Row{"truncate", TRUNCATE_EXISTING, "", kRefused}}) {
        SCOPED_TRACE(row.name);
        Put("here", "old");
        fs::remove("absent");
        const file_handle here = file_Open("here", kBoth, row.disposition);
        EXPECT_EQ(here != 0, row.of_existing != kRefused);
        EXPECT_EQ(Content("here"), row.of_existing == kRefused ? "old" : row.of_existing);
        file_Close(here);
        const file_handle absent = file_Open("absent", kBoth, row.disposition);
        EXPECT_EQ(absent != 0, row.of_absent != kRefused);
        EXPECT_EQ(fs::exists("absent"), row.of_absent != kRefused);
        file_Close(absent);
    }
}

TEST_F(FileTest, ReadersShareAFileAndAWriterHasItAlone) {
    struct Row {
        const char* name;
        std::uint32_t first;
        std::uint32_t second;
        bool both;
    };
    for (const Row& row : {Row{"two readers", GENERIC_READ, GENERIC_READ, true},
                           Row{"writer behind reader", GENERIC_READ, GENERIC_WRITE, false},
                           Row{"reader behind writer", GENERIC_WRITE, GENERIC_READ, false},
                           Row{"two writers", kBoth, kBoth, false}}) {
        SCOPED_TRACE(row.name);
        Put("shared", "text");
        const file_handle first = file_Open("shared", row.first, OPEN_EXISTING);
        ASSERT_NE(first, 0U);
        const file_handle second = file_Open("shared", row.second, OPEN_EXISTING);
        EXPECT_EQ(second != 0, row.both);
        EXPECT_EQ(file_Open("shared", GENERIC_WRITE, CREATE_ALWAYS), 0U);
        EXPECT_EQ(Content("shared"), "text") << "a refused open has emptied the file";
        file_Close(second);
        file_Close(first);
        const file_handle again = file_Open("shared", kBoth, OPEN_EXISTING);
        EXPECT_NE(again, 0U) << "a closed handle still holds the file";
        file_Close(again);
    }
}

TEST_F(FileTest, WhatIsNoFileDoesNotOpenAndIsNotWaitedFor) {
    fs::create_directory("folder");
    ASSERT_EQ(::mkfifo("pipe", 0600), 0);
    fs::create_symlink("pipe", "link");
    for (const char* path :
         {"folder", "pipe", "link", "/dev/zero", "folder/", "absent/file", "", ".", "/"}) {
        for (const std::uint32_t access : {GENERIC_READ, GENERIC_WRITE, kBoth}) {
            for (const std::uint32_t disposition : {CREATE_ALWAYS, OPEN_EXISTING, OPEN_ALWAYS}) {
                EXPECT_EQ(file_Open(path, access, disposition), 0U) << path;
            }
        }
    }
    EXPECT_EQ(file_Open(nullptr, GENERIC_READ, OPEN_EXISTING), 0U);
    for (const std::size_t size : {1023U, 1024U, 1025U, 5000U}) {
        EXPECT_EQ(file_Open(std::string(size, 'x').c_str(), GENERIC_WRITE, CREATE_ALWAYS), 0U);
    }
}

TEST_F(FileTest, OpensThatAskForWhatCannotBe) {
    struct Row {
        const char* name;
        std::uint32_t access;
        std::uint32_t disposition;
    };
    for (const Row& row :
         {Row{"truncated without the right to write", GENERIC_READ, TRUNCATE_EXISTING},
          Row{"replaced without the right to write", GENERIC_READ, CREATE_ALWAYS},
          Row{"no access", 0, OPEN_EXISTING},
          Row{"access of other bits", 0x20000000, OPEN_EXISTING},
          Row{"disposition below the table", GENERIC_READ, 0},
          Row{"disposition above the table", GENERIC_READ, 6}}) {
        SCOPED_TRACE(row.name);
        Put("here", "old");
        EXPECT_EQ(file_Open("here", row.access, row.disposition), 0U);
        EXPECT_EQ(Content("here"), "old");
    }
}

TEST_F(FileTest, WrittenBytesAreReadBackWithBothSeparators) {
    fs::create_directory("sub");
    file_handle handle = file_Open("sub\\data", GENERIC_WRITE, CREATE_NEW);
    EXPECT_EQ(file_Write(handle, "0123456789", 10), 10U);
    EXPECT_EQ(file_Tell(handle), 10);
    EXPECT_TRUE(file_Seek(handle, -8, 2));
    EXPECT_EQ(file_Write(handle, "AB", 2), 2U);
    EXPECT_EQ(file_Size(handle), 10U);
    EXPECT_EQ(Read(handle, 1), "") << "not opened for reading";
    file_Close(handle);
    handle = file_Open("sub//data", GENERIC_READ, OPEN_EXISTING);
    EXPECT_EQ(Read(handle, 4), "01AB");
    EXPECT_EQ(file_Size(handle), 10U);
    EXPECT_EQ(file_Write(handle, "x", 1), 0U) << "not opened for writing";
    EXPECT_FALSE(file_Seek(handle, -1, 0));
    EXPECT_TRUE(file_Seek(handle, std::int64_t{1} << 40, 0));
    EXPECT_EQ(file_Tell(handle), std::int64_t{1} << 40);
    EXPECT_EQ(Read(handle, 4), "");
    file_Close(handle);
}

TEST_F(FileTest, AWriteThatTheSystemCutsShortFails) {
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    auto* const handler = std::signal(SIGXFSZ, SIG_IGN);
    const file_handle handle = file_Open("cut", GENERIC_WRITE, CREATE_NEW);
    const rlimit limit{4, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    const std::uint32_t written = file_Write(handle, "0123456789", 10);
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    file_Close(handle);
    EXPECT_EQ(written, 0U);
}

TEST_F(FileTest, HandlesThatAreNotOpenFail) {
    Put("open", "text");
    const file_handle open = file_Open("open", kBoth, OPEN_EXISTING);
    for (const file_handle handle :
         {file_handle{0}, file_handle{5000}, ~file_handle{0}, open + (file_handle{1} << 32)}) {
        SCOPED_TRACE(handle);
        char byte = 0;
        EXPECT_EQ(file_Read(handle, &byte, 1), 0U);
        EXPECT_EQ(file_Write(handle, &byte, 1), 0U);
        EXPECT_EQ(file_Size(handle), 0U);
        EXPECT_EQ(file_Tell(handle), 0);
        EXPECT_FALSE(file_Seek(handle, 0, 0));
        file_Close(handle);
    }
    EXPECT_EQ(Read(open, 9), "text");
    file_Close(open);
}

TEST_F(FileTest, ChildProcessesInheritTheHandle) {
    Put("inherited.dat", "");
    const char* const in_child = "ls -l /proc/self/fd | grep -q 'inherited[.]dat$'";
    const file_handle handle = file_Open("inherited.dat", GENERIC_READ, OPEN_EXISTING);
    EXPECT_EQ(std::system(in_child), 0);
    file_Close(handle);
    EXPECT_NE(std::system(in_child), 0);
}

TEST_F(FileTest, ExistenceAndKindOfPaths) {
    fs::create_directories("a/b");
    Put("a/file", "");
    Put("a/nul", "");
    fs::create_directory("C:");
    fs::create_symlink("nowhere", "dangling");
    struct Row {
        const char* path;
        int exists;
        int directory;
        int accepts[4];  // by mask
    };
    for (const Row& row : std::vector<Row>{{"a", 1, 16, {0, 0, 1, 1}},
                                           {"a/b//", 1, 16, {0, 0, 1, 1}},
                                           {"a\\b\\", 1, 16, {0, 0, 1, 1}},
                                           {"a/file", 1, 0, {0, 1, 0, 1}},
                                           {"a/file/", 1, 0, {0, 1, 0, 1}},
                                           {"/", 1, 16, {0, 0, 1, 1}},
                                           {"C:", 1, 16, {0, 0, 1, 1}},
                                           {"a/nul", 0, 0, {}},
                                           {"dangling", 0, 0, {}},
                                           {"a/c", 0, 0, {}},
                                           {"D:", 0, 0, {}},
                                           {"", 0, 0, {}}}) {
        SCOPED_TRACE(row.path);
        EXPECT_EQ(path_Exists(row.path), row.exists);
        EXPECT_EQ(path_IsDirectory(row.path), row.directory);
        for (int mask = 0; mask < 4; ++mask) {
            EXPECT_EQ(path_Accepts(row.path, mask), row.accepts[mask]) << "mask " << mask;
        }
    }
    EXPECT_EQ(path_Exists(std::string(100000, 'x').c_str()), 0);
}

TEST_F(FileTest, ResourcesInRealFolders) {
    fs::create_directories("inst/etc");
    Put("inst/etc/thing", "");
    ASSERT_EQ(env_Set("OSTREL", (folder_ / "inst").c_str()), 1);
    EXPECT_STREQ(path_FindResource(7, "thing", PATH_ACCEPT_FILE),
                 (folder_ / "inst/etc/thing").c_str());
    ASSERT_EQ(env_Set("OSTREL", nullptr), 1);
    EXPECT_EQ(path_FindResource(7, "thing", PATH_ACCEPT_FILE), nullptr);
    Put("thing", "");
    EXPECT_STREQ(path_FindResource(2, "thing", PATH_ACCEPT_FILE), (folder_ / "thing").c_str());
    const fs::path program = fs::read_symlink("/proc/self/exe");
    const char* const beside = path_FindResource(7, program.filename().c_str(), PATH_ACCEPT_FILE);
    ASSERT_NE(beside, nullptr);
    EXPECT_TRUE(fs::equivalent(beside, program));
    EXPECT_STREQ(path_FindOnPath("env"),
                 (fs::path(path_DirName(path_FindOnPath("env"))) / "env").c_str());
}

TEST(Environment, SetReadAndDeleted) {
    EXPECT_EQ(env_Set("ZOL_TEST_VARIABLE", "one=1"), 1);
    EXPECT_STREQ(env_Get("ZOL_TEST_VARIABLE"), "one=1");
    EXPECT_EQ(std::system("test \"$ZOL_TEST_VARIABLE\" = one=1"), 0);
    EXPECT_EQ(env_Set("ZOL_TEST_VARIABLE", ""), 1);
    EXPECT_STREQ(env_Get("ZOL_TEST_VARIABLE"), "");
    EXPECT_EQ(env_Set("ZOL_TEST_VARIABLE", nullptr), 1);
    EXPECT_EQ(env_Get("ZOL_TEST_VARIABLE"), nullptr);
    EXPECT_EQ(env_Get(nullptr), nullptr);
    for (const char* name : {"", "A=B", "="}) {
        EXPECT_EQ(env_Set(name, "x"), 0) << name;
    }
    EXPECT_EQ(env_Set(nullptr, "x"), 0);
}

TEST(Environment, ASettingHas280BytesAtMost) {
    const std::string name = "ZOL_TEST_LONG";
    for (const std::size_t size : {279U, 280U, 281U, 100000U}) {
        SCOPED_TRACE(size);
        const std::string value(size - name.size() - 1, 'v');
        ASSERT_EQ(env_Set(name.c_str(), "before"), 1);
        EXPECT_EQ(env_Set(name.c_str(), value.c_str()), size <= 280 ? 1 : 0);
        EXPECT_EQ(env_Get(name.c_str()), size <= 280 ? value : "before");
    }
    EXPECT_EQ(env_Set(name.c_str(), nullptr), 1);
    EXPECT_EQ(env_Set(std::string(280, 'N').c_str(), nullptr), 0);
}

}  // namespace
}  // namespace zol::testing
