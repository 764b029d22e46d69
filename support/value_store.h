// Named values of the user that outlive the process, in one SQLite file: what a registry
// is elsewhere. docs/support/registry.md tells where the file lies and what is in it.
//
// Each call opens the file and closes it again; several processes and threads may use it
// at once. A write is there as a whole or not at all, also when the process or the machine
// dies in the middle of it.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

/// The type code of a value of plain bytes. Other codes are other programs'.
constexpr std::int32_t REG_BINARY = 3;

/// Where a value is kept. The three texts are taken as bytes: case counts, and a separator
/// in one of them means nothing. None may be null.
struct ValuePlace {
    const char* root;
    const char* subkey;
    const char* name;
};

/// $XDG_DATA_HOME/zol/registry.sqlite3, or ~/.local/share/zol/registry.sqlite3 where that
/// variable is not set to an absolute path; empty where HOME is not either.
std::string store_Path();

/// The bytes of a value of type REG_BINARY. Nothing where there is no such value, or the
/// file is not there, damaged, not ours, or locked for more than 5 seconds. Never creates
/// the file.
std::optional<std::vector<std::uint8_t>> store_Read(const ValuePlace& place);

/// Stores a value of type REG_BINARY, in place of whatever has this name. False when that
/// can't be done; what was stored before is still there then, and a file that is not ours
/// stays as it is.
bool store_Write(const ValuePlace& place, std::span<const std::uint8_t> bytes);
