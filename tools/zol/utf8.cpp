#include "tools/zol/utf8.h"

namespace zol::tool {

std::size_t utf8_length(std::string_view text) {
    const auto byte = [text](std::size_t i) -> unsigned {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
    };
    const unsigned first = byte(0);
    if (first < 0x80) return 1;
    const std::size_t length = first >= 0xc2 && first < 0xe0   ? 2
                               : first >= 0xe0 && first < 0xf0 ? 3
                               : first >= 0xf0 && first < 0xf5 ? 4
                                                               : 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xc0U) != 0x80) return 0;
    }
    // Forms that are longer than need be, surrogates, and beyond U+10FFFF.
    const unsigned second = byte(1);
    const bool is_excluded = (first == 0xe0 && second < 0xa0) ||
                             (first == 0xed && second >= 0xa0) ||
                             (first == 0xf0 && second < 0x90) || (first == 0xf4 && second >= 0x90);
    return is_excluded ? 0 : length;
}

}  // namespace zol::tool
