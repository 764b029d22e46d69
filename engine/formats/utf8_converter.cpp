#include "engine/formats/utf8_converter.h"

#include <array>
#include <cerrno>

namespace zol::engine {

Utf8Converter::Utf8Converter(const std::string& encoding)
    : handle_(::iconv_open("UTF-8", encoding.c_str())) {}

Utf8Converter::~Utf8Converter() {
    if (IsOpen()) ::iconv_close(handle_);
}

std::string Utf8Converter::Convert(std::string_view text) {
    if (!IsOpen()) return std::string(text);
    // Back to the state at the begin of a text, which some encodings have.
    ::iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    std::string converted;
    // iconv takes a pointer to non-const for historical reasons; it changes nothing.
    char* from = const_cast<char*>(text.data());
    std::size_t left = text.size();
    std::array<char, 256> part{};
    while (left > 0) {
        char* to = part.data();
        std::size_t room = part.size();
        const bool has_stopped =
            ::iconv(handle_, &from, &left, &to, &room) == static_cast<std::size_t>(-1);
        converted.append(part.data(), part.size() - room);
        if (has_stopped && errno != E2BIG && left > 0) {
            converted += kReplacementCharacter;
            ++from;
            --left;
        }
    }
    return converted;
}

}  // namespace zol::engine
