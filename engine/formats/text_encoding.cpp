#include "engine/formats/text_encoding.h"

#include <iconv.h>

#include <array>
#include <cerrno>
#include <cstdint>

namespace zol::engine {

namespace {

constexpr const char* kReplacement = "\xEF\xBF\xBD";

class Converter {
public:
    explicit Converter(const std::string& from) : handle_(::iconv_open("UTF-8", from.c_str())) {}
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    ~Converter() {
        if (IsOpen()) {
            ::iconv_close(handle_);
        }
    }

    // iconv_open says "no such encoding" by a pointer of all ones.
    bool IsOpen() const { return reinterpret_cast<std::intptr_t>(handle_) != -1; }

    std::string Convert(std::string_view text) {
        std::string converted;
        // iconv takes a pointer to non-const for historical reasons; it changes nothing.
        char* from = const_cast<char*>(text.data());
        std::size_t left = text.size();
        std::array<char, 256> part{};
        while (left > 0) {
            char* to = part.data();
            std::size_t room = part.size();
            const bool stopped =
                ::iconv(handle_, &from, &left, &to, &room) == static_cast<std::size_t>(-1);
            converted.append(part.data(), part.size() - room);
            if (stopped && errno != E2BIG && left > 0) {
                converted += kReplacement;
                ++from;
                --left;
            }
        }
        return converted;
    }

private:
    iconv_t handle_;
};

}  // namespace

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
    Converter converter(encoding.empty() ? "CP1252" : encoding);
    return converter.IsOpen() ? converter.Convert(text) : std::string(text);
}

bool is_known_encoding(const std::string& encoding) {
    return Converter(encoding).IsOpen();
}

}  // namespace zol::engine
