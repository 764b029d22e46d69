#include "support/value_store.h"

#include <sqlite3.h>

#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>

#include "support/environment.h"

namespace {

namespace fs = std::filesystem;

// "ZolR", so that a database of something else is told apart and left alone.
constexpr std::int64_t kApplication = 0x5a6f6c52;
constexpr std::int64_t kLayout = 1;
constexpr int kPatience = 5000;  // milliseconds

constexpr char kCreate[] =
    "PRAGMA application_id = 1517251666;"
    "PRAGMA user_version = 1;"
    "CREATE TABLE entries ("
    "  root BLOB NOT NULL, subkey BLOB NOT NULL, name BLOB NOT NULL,"
    "  type INTEGER NOT NULL, data BLOB NOT NULL,"
    "  PRIMARY KEY (root, subkey, name)) WITHOUT ROWID;";
static_assert(kApplication == 1517251666);

struct Close {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Database = std::unique_ptr<sqlite3, Close>;
using Statement = std::unique_ptr<sqlite3_stmt, Close>;

fs::path data_folder() {
    // A relative path in these variables is to be ignored, as the XDG rules for base
    // directories have it.
    const char* data = env_Get("XDG_DATA_HOME");
    if (data != nullptr && fs::path(data).is_absolute()) return data;
    const char* home = env_Get("HOME");
    if (home != nullptr && fs::path(home).is_absolute()) return fs::path(home) / ".local/share";
    return {};
}

bool make_folder(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder.parent_path(), error);
    if (fs::create_directory(folder, error)) {
        fs::permissions(folder, fs::perms::owner_all, error);
    }
    return fs::is_directory(folder, error);
}

/// Readers too open for writing where they may: only so can they undo what a writer that
/// died left half done.
Database open_database(const std::string& path, int more_flags) {
    sqlite3* opened = nullptr;
    const int result =
        sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READWRITE | more_flags, nullptr);
    Database database(opened);
    if (result != SQLITE_OK) return nullptr;
    sqlite3_busy_timeout(opened, kPatience);
    sqlite3_db_config(opened, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    return database;
}

Statement prepared(const Database& database, const char* text) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(database.get(), text, -1, &statement, nullptr);
    return Statement(statement);
}

bool run(const Database& database, const char* text) {
    return sqlite3_exec(database.get(), text, nullptr, nullptr, nullptr) == SQLITE_OK;
}

std::optional<std::int64_t> number(const Database& database, const char* text) {
    const Statement statement = prepared(database, text);
    if (!statement || sqlite3_step(statement.get()) != SQLITE_ROW) return std::nullopt;
    return sqlite3_column_int64(statement.get(), 0);
}

bool is_ours(const Database& database) {
    return number(database, "PRAGMA application_id") == kApplication &&
           number(database, "PRAGMA user_version") == kLayout;
}

bool is_new(const Database& database) {
    return number(database, "PRAGMA application_id") == 0 &&
           number(database, "PRAGMA user_version") == 0 &&
           number(database, "SELECT count(*) FROM sqlite_schema") == 0;
}

bool bind(const Statement& statement, int index, std::span<const std::uint8_t> bytes) {
    // A null pointer would be bound as NULL, and not as no bytes.
    const void* data = bytes.empty() ? static_cast<const void*>("") : bytes.data();
    return sqlite3_bind_blob64(statement.get(), index, data, bytes.size(), SQLITE_STATIC) ==
           SQLITE_OK;
}

bool bind(const Statement& statement, int index, std::string_view text) {
    return bind(statement, index,
                {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

bool bind(const Statement& statement, const ValuePlace& place) {
    return statement && bind(statement, 1, std::string_view(place.root)) &&
           bind(statement, 2, std::string_view(place.subkey)) &&
           bind(statement, 3, std::string_view(place.name));
}

bool is_whole(const ValuePlace& place) {
    return place.root != nullptr && place.subkey != nullptr && place.name != nullptr;
}

bool put(const Database& database, const ValuePlace& place, std::span<const std::uint8_t> bytes) {
    const Statement statement =
        prepared(database, "INSERT OR REPLACE INTO entries VALUES (?1, ?2, ?3, ?4, ?5)");
    return bind(statement, place) &&
           sqlite3_bind_int(statement.get(), 4, REG_BINARY) == SQLITE_OK &&
           bind(statement, 5, bytes) && sqlite3_step(statement.get()) == SQLITE_DONE;
}

}  // namespace

std::string store_Path() {
    const fs::path folder = data_folder();
    return folder.empty() ? std::string() : (folder / "zol" / "registry.sqlite3").string();
}

std::optional<std::vector<std::uint8_t>> store_Read(const ValuePlace& place) {
    const std::string path = store_Path();
    if (path.empty() || !is_whole(place)) return std::nullopt;
    const Database database = open_database(path, 0);
    if (!database || !is_ours(database)) return std::nullopt;
    const Statement statement = prepared(database,
                                         "SELECT data FROM entries WHERE root = ?1 AND "
                                         "subkey = ?2 AND name = ?3 AND type = ?4");
    if (!bind(statement, place) || sqlite3_bind_int(statement.get(), 4, REG_BINARY) != SQLITE_OK ||
        sqlite3_step(statement.get()) != SQLITE_ROW) {
        return std::nullopt;
    }
    const auto* bytes = static_cast<const std::uint8_t*>(sqlite3_column_blob(statement.get(), 0));
    const int size = sqlite3_column_bytes(statement.get(), 0);
    if (bytes == nullptr && size > 0) return std::nullopt;
    return std::vector<std::uint8_t>(bytes, bytes + size);
}

bool store_Write(const ValuePlace& place, std::span<const std::uint8_t> bytes) {
    const std::string path = store_Path();
    if (path.empty() || !is_whole(place) || !make_folder(fs::path(path).parent_path())) {
        return false;
    }
    const Database database = open_database(path, SQLITE_OPEN_CREATE);
    // Closing undoes a transaction that was not committed.
    return database && run(database, "BEGIN IMMEDIATE") &&
           (is_ours(database) || (is_new(database) && run(database, kCreate))) &&
           put(database, place, bytes) && run(database, "COMMIT");
}
