// Values in the user's store, in folders of the tests' own.
#include <gtest/gtest.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "support/environment.h"
#include "support/value_store.h"
#include "support/variant.h"
#include "tests/support/variant_samples.h"

namespace {

namespace fs = std::filesystem;
using zol::testing_support::every_kind;
using zol::testing_support::is_same;
using zol::testing_support::read_file;

class VariantRegistry : public testing::Test {
protected:
    VariantRegistry() {
        std::string name = (fs::temp_directory_path() / "zol_registry_XXXXXX").string();
        folder_ = ::mkdtemp(name.data());
        env_Set("XDG_DATA_HOME", (folder_ / "data").c_str());
        env_Set("HOME", (folder_ / "home").c_str());
    }
    ~VariantRegistry() override { fs::remove_all(folder_); }

    fs::path Store() const { return folder_ / "data/zol/registry.sqlite3"; }

    void WriteStore(const std::string& content) const {
        fs::create_directories(Store().parent_path());
        std::ofstream(Store(), std::ios::binary) << content;
    }

    /// Runs statements on the store as another program would.
    void RunOnStore(const std::string& statements) const {
        fs::create_directories(Store().parent_path());
        sqlite3* database = nullptr;
        ASSERT_EQ(sqlite3_open(Store().c_str(), &database), SQLITE_OK);
        ASSERT_EQ(sqlite3_exec(database, statements.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(database);
        sqlite3_close(database);
    }

    fs::path folder_;
};

bool write(const MVariant& value, const char* name = "name") {
    return value.WriteRegistry("root", "sub\\key", name);
}

/// What is stored; the text "none" where nothing is.
MVariant read(const char* name = "name") {
    MVariant value("none");
    const bool is_read = value.ReadRegistry("root", "sub\\key", name);
    EXPECT_EQ(is_read, !is_same(value, "none"));
    return value;
}

TEST_F(VariantRegistry, KeepsValuesByRootSubkeyAndName) {
    struct Row {
        const char* root;
        const char* subkey;
        const char* name;
        MVariant value;
    };
    const std::vector<Row> rows = {
        {"root", "key", "name", every_kind()},
        {"root", "key", "other", 2},
        {"root", "key", "Name", 3},
        {"root", "key/name", "", 4},
        {"root", "", "key/name", 5},
        {"", "", "", MVariant()},
        {"root", "key", "n' \xff\"\n", 7},
    };
    for (const Row& row : rows)
        EXPECT_TRUE(row.value.WriteRegistry(row.root, row.subkey, row.name));
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.subkey) + "|" + row.name);
        MVariant value("none");
        EXPECT_TRUE(value.ReadRegistry(row.root, row.subkey, row.name));
        EXPECT_TRUE(is_same(value, row.value));
        EXPECT_TRUE(MVariant(99).WriteRegistry(row.root, row.subkey, row.name));
        EXPECT_TRUE(value.ReadRegistry(row.root, row.subkey, row.name));
        EXPECT_TRUE(is_same(value, 99));
    }
    EXPECT_TRUE(is_same(read("absent"), "none"));
    MVariant value;
    EXPECT_FALSE(value.ReadRegistry(nullptr, "key", "name"));
    EXPECT_FALSE(value.WriteRegistry("root", "key", nullptr));
}

TEST_F(VariantRegistry, StoresRecordsBelow10240Bytes) {
    const MVariant longest(std::string(10239 - 5, 'x'));
    const MVariant too_long(std::string(10240 - 5, 'x'));
    ASSERT_EQ(too_long.BinarySize(), 10240U);
    EXPECT_FALSE(write(too_long));
    EXPECT_FALSE(fs::exists(Store()));
    EXPECT_TRUE(write(longest));
    EXPECT_FALSE(write(too_long));
    EXPECT_TRUE(is_same(read(), longest)) << "what was there before is still there";
}

TEST_F(VariantRegistry, ReadingMakesNoFile) {
    EXPECT_TRUE(is_same(read(), "none"));
    EXPECT_FALSE(fs::exists(folder_ / "data"));
    WriteStore("");
    EXPECT_TRUE(is_same(read(), "none"));
    EXPECT_EQ(fs::file_size(Store()), 0U);
    EXPECT_TRUE(write(1)) << "an empty file is a new store";
}

TEST_F(VariantRegistry, LiesInTheUsersDataFolder) {
    const std::string in_home = folder_ / "home/.local/share/zol/registry.sqlite3";
    struct Row {
        const char* name;
        const char* data;
        const char* home;
        std::string path;
    };
    const std::string data = folder_ / "data";
    const std::string home = folder_ / "home";
    const std::vector<Row> rows = {
        {"both", data.c_str(), home.c_str(), Store()},
        {"no data folder", nullptr, home.c_str(), in_home},
        {"an empty data folder", "", home.c_str(), in_home},
        {"a relative data folder", "data", home.c_str(), in_home},
        {"neither", nullptr, nullptr, ""},
        {"relative ones", "data", "home", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        env_Set("XDG_DATA_HOME", row.data);
        env_Set("HOME", row.home);
        EXPECT_EQ(store_Path(), row.path);
        EXPECT_EQ(write(row.name), !row.path.empty());
        EXPECT_TRUE(is_same(read(), row.path.empty() ? "none" : row.name));
    }
    EXPECT_TRUE(fs::exists(in_home));
    EXPECT_EQ(fs::status(Store().parent_path()).permissions(), fs::perms::owner_all);
}

TEST_F(VariantRegistry, CannotBeMadeWhereAFileStandsInTheWay) {
    std::ofstream(folder_ / "data") << "a file";
    EXPECT_FALSE(write(1));
    EXPECT_TRUE(is_same(read(), "none"));
    fs::remove(folder_ / "data");
    fs::create_directories(Store());
    EXPECT_FALSE(write(1)) << "a folder in place of the file";
    EXPECT_TRUE(is_same(read(), "none"));
}

TEST_F(VariantRegistry, LeavesWhatIsNotItsOwn) {
    ASSERT_TRUE(write(1));
    const std::string good = read_file(Store());
    fs::remove(Store());
    RunOnStore("CREATE TABLE entries (root, subkey, name, type, data)");
    const std::string foreign = read_file(Store());
    fs::remove(Store());
    RunOnStore("PRAGMA user_version = 4");
    const std::string used = read_file(Store());
    std::string later = good;
    later[63] = 2;  // the last byte of the user version
    std::string noise(5000, '\0');
    std::mt19937 random(3);
    for (char& byte : noise) byte = static_cast<char>(random());
    struct Row {
        const char* name;
        std::string content;
    };
    const std::vector<Row> rows = {
        {"a database of something else", foreign},
        {"a database without tables that is in use", used},
        {"a store of a later layout", later},
        {"noise", noise},
        {"a text", "[settings]\nname = 1\n"},
        {"noise behind a good begin", good.substr(0, 100) + noise},
        {"the first page of two", good.substr(0, 4096)},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        WriteStore(row.content);
        EXPECT_TRUE(is_same(read(), "none"));
        EXPECT_FALSE(write(2));
        EXPECT_TRUE(read_file(Store()) == row.content);
    }
    WriteStore(good);
    EXPECT_TRUE(is_same(read(), 1));
}

TEST_F(VariantRegistry, TakesOnlyBinaryValues) {
    ASSERT_TRUE(write(1, "good"));
    ASSERT_TRUE(write(2, "text"));
    RunOnStore("UPDATE entries SET type = 1 WHERE name = CAST('text' AS BLOB)");
    EXPECT_TRUE(is_same(read("text"), "none"));
    EXPECT_TRUE(is_same(read("good"), 1));
    EXPECT_TRUE(write(3, "text")) << "a value of another type is replaced";
    EXPECT_TRUE(is_same(read("text"), 3));
}

TEST_F(VariantRegistry, DamagedRecordIsAnEmptyValue) {
    for (const char* record : {"", "04", "020600000061ff", "0200010000", "04ffffff7f"}) {
        SCOPED_TRACE(record);
        ASSERT_TRUE(write(MVariant(MV_VECTOR)));
        RunOnStore("UPDATE entries SET data = x'" + std::string(record) + "'");
        EXPECT_TRUE(
            is_same(read(), std::string(record).starts_with("0206") ? MVariant("a") : MVariant()));
    }
}

/// Runs `work` in a process of its own.
template <typename Work>
pid_t in_background(Work work) {
    const pid_t child = ::fork();
    if (child == 0) {
        work();
        ::_exit(0);
    }
    return child;
}

int ended(pid_t child) {
    int status = 0;
    ::waitpid(child, &status, 0);
    return status;
}

TEST_F(VariantRegistry, AWriterThatDiesLeavesTheOldValueOrTheNewOne) {
    const MVariant first(std::string(9000, 'a'));
    const MVariant second(std::string(9000, 'b'));
    ASSERT_TRUE(write(first));
    ASSERT_TRUE(write(5, "other"));
    std::mt19937 random(5);
    for (int round = 0; round < 25; ++round) {
        SCOPED_TRACE(round);
        const pid_t child = in_background([&] {
            while (true) {
                write(second);
                write(first);
            }
        });
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 20000));
        ::kill(child, SIGKILL);
        ended(child);
        const MVariant value = read();
        EXPECT_TRUE(is_same(value, first) || is_same(value, second));
        EXPECT_TRUE(is_same(read("other"), 5));
        EXPECT_TRUE(write(first));
    }
}

TEST_F(VariantRegistry, AReaderUndoesWhatADeadWriterLeftHalfDone) {
    ASSERT_TRUE(write("old"));
    // With next to no cache, pages of an open transaction go to the file.
    ended(in_background([&] {
        sqlite3* database = nullptr;
        sqlite3_open(Store().c_str(), &database);
        sqlite3_exec(database,
                     "PRAGMA cache_size = 1; BEGIN IMMEDIATE;"
                     "UPDATE entries SET data = zeroblob(9000);"
                     "WITH RECURSIVE count(i) AS (SELECT 1 UNION SELECT i + 1 FROM count LIMIT 200)"
                     "INSERT INTO entries SELECT x'00', x'00', i, 3, zeroblob(9000) FROM count;",
                     nullptr, nullptr, nullptr);
        ::raise(SIGKILL);
    }));
    ASSERT_TRUE(fs::exists(Store().string() + "-journal"));
    EXPECT_TRUE(is_same(read(), "old"));
}

TEST_F(VariantRegistry, WaitsForAnotherWriter) {
    ASSERT_TRUE(write("old"));
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = in_background([&] {
        sqlite3* database = nullptr;
        sqlite3_open(Store().c_str(), &database);
        sqlite3_exec(database, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
        if (::write(ready[1], "x", 1) != 1) ::_exit(1);
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        sqlite3_exec(database, "COMMIT", nullptr, nullptr, nullptr);
        sqlite3_close(database);
    });
    char byte = 0;
    ASSERT_EQ(::read(ready[0], &byte, 1), 1);
    EXPECT_TRUE(is_same(read(), "old"));
    EXPECT_TRUE(write("new"));
    EXPECT_TRUE(is_same(read(), "new"));
    EXPECT_EQ(ended(child), 0);
    ::close(ready[0]);
    ::close(ready[1]);
}

}  // namespace
