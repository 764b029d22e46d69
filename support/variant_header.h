// The header of a value file, 84 bytes in front of the record. Its layout stands in
// docs/formats/variant-binary.md.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "support/file_info.h"

constexpr std::size_t kHeaderSize = 84;
using HeaderBytes = std::array<std::uint8_t, kHeaderSize>;

/// The type of a file whose record is enciphered. A reader looks at these five letters
/// alone and takes every other type for a record in the clear.
constexpr char kSealedType[] = "EMVAR";

/// Whether a file that begins with `content` says it is one of values, of whatever version.
bool header_HasMagic(std::string_view content);

/// Fills `info`, all of it. False, and `info` cleared, without the magic or with another
/// version than 1. A wrong byte-order mark sets a flag and is no fault.
bool header_Read(const HeaderBytes& bytes, FileInfo& info);

/// The header with the three texts of `info`, cut to their fields; its numbers are not
/// looked at. Bytes without content are zero.
HeaderBytes header_Write(const FileInfo& info);

bool header_IsSealed(const FileInfo& info);
