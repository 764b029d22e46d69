// Numbers in files, least byte first whatever the processor.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zol::support {

/// `count` bytes, at most 8.
inline std::uint64_t load_little_endian(const unsigned char* bytes, std::size_t count) {
    std::uint64_t number = 0;
    while (count-- > 0) number = number << 8 | bytes[count];
    return number;
}

/// The low `count` bytes of a number.
inline void store_little_endian(std::uint64_t number, unsigned char* bytes, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        bytes[i] = static_cast<unsigned char>(number >> 8 * i);
    }
}

}  // namespace zol::support
