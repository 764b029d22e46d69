// Numbers as they lie in binary files, in either order of bytes.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstring>
#include <type_traits>

namespace zol::engine {

enum class ByteOrder { Little, Big };

template <class T>
T load_number(const std::byte* from, ByteOrder order) {
    static_assert(std::is_arithmetic_v<T>);
    std::array<std::byte, sizeof(T)> bytes;
    std::memcpy(bytes.data(), from, sizeof(T));
    if ((order == ByteOrder::Big) != (std::endian::native == std::endian::big)) {
        std::reverse(bytes.begin(), bytes.end());
    }
    return std::bit_cast<T>(bytes);
}

}  // namespace zol::engine
