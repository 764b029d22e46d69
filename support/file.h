// Files behind 64-bit handles, with a read cache for each handle, so that the many small
// reads of a record-structured file cost a copy of memory each and not a system call.
// Regular files only: a directory, a pipe or a device does not open, so no call ever waits.
// Nothing here prints or throws (but std::bad_alloc); all of it is for one thread at a time.
#pragma once

#include <cstdint>

/// An open file; 0 is none.
using file_handle = std::uint64_t;

/// What a file is opened for: one of these bits or both.
constexpr std::uint32_t GENERIC_READ = 0x80000000;
constexpr std::uint32_t GENERIC_WRITE = 0x40000000;

/// What is done with a file that exists, and with one that doesn't.
constexpr std::uint32_t CREATE_NEW = 1;         // fails on a file that exists
constexpr std::uint32_t CREATE_ALWAYS = 2;      // creates it, or empties it
constexpr std::uint32_t OPEN_EXISTING = 3;      // fails without a file
constexpr std::uint32_t OPEN_ALWAYS = 4;        // creates it, or takes it as it is
constexpr std::uint32_t TRUNCATE_EXISTING = 5;  // fails without a file, or empties it

/// Opens a file. In the path `/` and `\` both separate, whatever the platform.
/// Users of this layer share a file exactly for reading: several may have it open with
/// GENERIC_READ alone, and whoever has GENERIC_WRITE has it to himself. A file system
/// without locks can't keep this up, and files open there as if nobody else were.
/// Child processes inherit the handle.
/// Returns the handle, to be ended with file_Close; 0 when the file does not open, for a
/// null or empty path, for an access without either bit, for a disposition not listed
/// above, and for one that empties the file when the access is without GENERIC_WRITE.
/// A call that fails leaves a file that exists as it was.
file_handle file_Open(const char* path, std::uint32_t access, std::uint32_t disposition);

/// Ends a handle and frees its cache. Does nothing for 0.
void file_Close(file_handle handle);

/// Reads up to `count` bytes into `buffer` and returns how many were delivered; less than
/// `count` means the end of the file. A read that fails counts as the end too, and once the
/// cache of a handle has met the end it answers 0, even if the file grows, until the handle
/// is sought or closed. When the first read of a handle asks for 81920 bytes or more, it
/// goes past the cache, and so do those that follow until another handle is read.
std::uint32_t file_Read(file_handle handle, void* buffer, std::uint32_t count);

/// Writes `count` bytes at the system's position, which after a cached read lies ahead of
/// what file_Tell says: don't mix reads and writes on one handle without a file_Seek from
/// the begin between them. Returns `count`, or 0 on failure.
std::uint32_t file_Write(file_handle handle, const void* buffer, std::uint32_t count);

/// The size of the whole file in bytes, whatever has been read of it; 0 on failure.
std::uint64_t file_Size(file_handle handle);

/// The position behind the last byte that file_Read delivered or file_Write took, in bytes
/// from the begin; 0 on failure.
std::int64_t file_Tell(file_handle handle);

/// Drops what is cached and moves the system's position by `offset` bytes, which `origin`
/// counts from the begin (0), the current position (1) or the end (2). The current position
/// is the system's, which the cache has moved ahead of file_Tell: to step from where reading
/// stands, seek from the begin to file_Tell plus the step.
/// True on success. The cache is dropped on failure too, so reading then goes on at the
/// system's position and not where it stood: seek again before the next read.
bool file_Seek(file_handle handle, std::int64_t offset, int origin);
