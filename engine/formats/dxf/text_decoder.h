// Brings the texts of a DXF file to UTF-8.
//
// Files of release 2007 and later are UTF-8. An earlier one is in the code page that its header
// names; but when that is one of single bytes and everything in the file beyond ASCII is valid
// UTF-8, then it was written as UTF-8 in spite of its header.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "engine/formats/file.h"
#include "engine/formats/utf8_converter.h"

namespace zol::engine {

class TextDecoder {
public:
    /// The file must outlive this; it is only read when its header leaves a question open.
    explicit TextDecoder(const File& file);

    /// The value of $ACADVER, as "AC1015".
    void SetVersion(std::string_view version);
    /// The value of $DWGCODEPAGE, as "ANSI_1252". A name that nobody knows is passed over.
    void SetCodePage(std::string_view name);
    /// Text of a binary file is looked at one by one.
    void SetBinary() { is_binary_ = true; }

    /// The text as UTF-8, with `\U+XXXX` and `\M+nXXXX` replaced by what they stand for. Bytes
    /// that the code page doesn't have become U+FFFD.
    std::string Decode(std::string_view raw);

private:
    enum class Form : std::uint8_t { Unknown, Utf8, OfCodePage };

    std::string ToUtf8(std::string_view raw);
    std::string FromPage(std::string_view raw);
    std::string FromDoubleByte(std::size_t page, std::uint32_t code);
    std::string WithoutEscapes(std::string text);
    void FindForm(std::string_view raw);

    const File& file_;
    std::string encoding_ = "CP1252";
    /// Of encoding_, once a text needs it.
    std::unique_ptr<Utf8Converter> page_;
    /// Of `\M+n`, from n = 1 on, once a text needs them.
    std::array<std::unique_ptr<Utf8Converter>, 5> double_byte_pages_;
    Form form_ = Form::Unknown;
    bool is_utf8_release_ = false;
    bool is_double_byte_ = false;
    bool is_binary_ = false;
};

/// Appends a character as UTF-8; U+FFFD for what is none.
void append_utf8(std::uint32_t code, std::string& to);

}  // namespace zol::engine
