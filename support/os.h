// All that support/ asks of the operating system. os_posix.cpp answers for systems of that
// family; another platform is one more file beside it, and tests link an answer of their own.
// Nothing here throws (but std::bad_alloc) or waits for another process.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace zol::os {

/// Between the parts of a path, and between the directories of a search path.
extern const char kPathSeparator;
extern const char kListSeparator;

/// An open file; 0 is none. A number that is not of an open file makes a call fail.
using File = std::uint64_t;

/// What an open asks for.
struct OpenMode {
    bool read = false;
    bool write = false;
    bool create = false;    ///< make a file where there is none
    bool only_new = false;  ///< with `create`: fail where there is one
    bool empty = false;     ///< drop what the file holds; needs `write`
    /// Others may have the file open with this flag too; without it nobody may have it
    /// open at all. Held among users of this function, where the file system has locks.
    bool share_reading = false;
};

/// Opens a regular file so that child processes inherit it; 0 for anything else.
File open_file(const char* path, const OpenMode& mode);
void close_file(File file);

/// Reads from the file's position on; fewer than `count` bytes mean the end of the file,
/// or a failure behind the bytes delivered. Nothing when the read fails at its first byte.
std::optional<std::uint32_t> read_file(File file, void* buffer, std::uint32_t count);
/// True when all `count` bytes were written.
bool write_file(File file, const void* buffer, std::uint32_t count);

enum class Origin { kBegin, kCurrent, kEnd };

bool move_in_file(File file, std::int64_t offset, Origin origin);
std::optional<std::int64_t> position_in_file(File file);
std::optional<std::uint64_t> size_of_file(File file);

enum class PathKind { kNothing, kDirectory, kOther };

/// What stands under a path, links followed.
PathKind kind_of(const char* path);

/// Both are empty when the system doesn't say.
std::string current_directory();
std::string executable_path();

/// The stack of the calling thread; both 0 when the system doesn't say.
struct Stack {
    std::uintptr_t lowest = 0;
    std::uintptr_t end = 0;
};
Stack stack_of_this_thread();

/// Null when the variable isn't set. Gone with the next change of the environment.
const char* environment_value(const char* name);
/// A null value deletes the variable.
bool set_environment_value(const char* name, const char* value);

}  // namespace zol::os
