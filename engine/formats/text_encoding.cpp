#include "engine/formats/text_encoding.h"

#include <array>
#include <cstdint>

#include "engine/formats/utf8_converter.h"

namespace zol::engine {

bool is_utf8(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const std::size_t length = lead < 0x80           ? 1
                                   : (lead >> 5) == 0x06 ? 2
                                   : (lead >> 4) == 0x0E ? 3
                                   : (lead >> 3) == 0x1E ? 4
                                                         : 0;
        if (length == 0 || i + length > text.size()) {
            return false;
        }
        std::uint32_t code = length == 1 ? lead : lead & (0xFFU >> (length + 1));
        for (std::size_t k = 1; k < length; ++k) {
            const auto next = static_cast<unsigned char>(text[i + k]);
            if ((next >> 6) != 0x02) {
                return false;
            }
            code = code << 6 | (next & 0x3FU);
        }
        // Overlong forms, surrogates and what lies beyond Unicode aren't UTF-8.
        constexpr std::array<std::uint32_t, 5> kLeast = {0, 0, 0x80, 0x800, 0x10000};
        if (code < kLeast[length] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) {
            return false;
        }
        i += length;
    }
    return true;
}

std::string to_utf8(std::string_view text, const std::string& encoding) {
    if (is_utf8(text)) {
        return std::string(text);
    }
    return Utf8Converter(encoding.empty() ? "CP1252" : encoding).Convert(text);
}

bool is_known_encoding(const std::string& encoding) {
    return Utf8Converter(encoding).IsOpen();
}

}  // namespace zol::engine
