// What the header of a value file tells.
#pragma once

#include <cstddef>
#include <cstdint>

/// The texts are null-terminated. For variant files only `typeName` is used.
struct FileInfo {
    std::int32_t version;
    char typeName[40];
    char auxName1[40];
    char auxName2[40];
    std::uint32_t flags;  // bit 0: the mark of the byte order was not 1
    std::int32_t headerSize;
};
static_assert(sizeof(FileInfo) == 132 && offsetof(FileInfo, flags) == 124);
