// Texts of one encoding to UTF-8, by the system's converter.
#pragma once

#include <iconv.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace zol::engine {

/// To be kept where there are many texts: opening one costs more than converting a few letters.
class Utf8Converter {
public:
    /// `encoding` as the system knows it: "CP1252".
    explicit Utf8Converter(const std::string& encoding);
    Utf8Converter(const Utf8Converter&) = delete;
    Utf8Converter& operator=(const Utf8Converter&) = delete;
    ~Utf8Converter();

    /// False when the system has no such encoding.
    // iconv_open says so by a pointer of all ones.
    bool IsOpen() const { return reinterpret_cast<std::intptr_t>(handle_) != -1; }

    /// Bytes that the encoding doesn't have become U+FFFD. A text is taken as it is when the
    /// converter is not open.
    std::string Convert(std::string_view text);

private:
    iconv_t handle_;
};

/// U+FFFD in UTF-8.
inline constexpr const char* kReplacementCharacter = "\xEF\xBF\xBD";

}  // namespace zol::engine
