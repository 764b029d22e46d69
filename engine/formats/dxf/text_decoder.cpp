#include "engine/formats/dxf/text_decoder.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

#include "engine/formats/text_encoding.h"
#include "engine/formats/text_lines.h"

namespace zol::engine {

namespace {

// The code pages of \M+n, from n = 1 on.
constexpr std::array<const char*, 5> kDoubleBytePages = {"CP932", "CP950", "CP949", "JOHAB",
                                                         "CP936"};

bool is_ascii(std::string_view text) {
    return std::none_of(text.begin(), text.end(),
                        [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

// True when all of the file beyond ASCII is valid UTF-8.
bool is_file_utf8(const File& file) {
    constexpr std::size_t kBlock = std::size_t{1} << 18;
    constexpr std::size_t kMostBytesOfCharacter = 4;
    std::vector<char> block(kBlock);
    std::uint64_t offset = 0;
    for (;;) {
        const std::size_t count = file.ReadAt(offset, block.data(), block.size());
        std::size_t whole = count;
        // A character that the block cuts is looked at with the next one.
        if (count == block.size()) {
            std::size_t back = 1;
            while (back < kMostBytesOfCharacter &&
                   (static_cast<unsigned char>(block[count - back]) >> 6U) == 2) {
                ++back;
            }
            if (static_cast<unsigned char>(block[count - back]) >= 0xC0) whole = count - back;
        }
        if (!is_utf8({block.data(), whole})) return false;
        if (count < block.size()) return true;
        offset += whole;
    }
}

bool read_hex(std::string_view text, std::size_t at, std::size_t count, std::uint32_t& code) {
    if (text.size() < at + count) return false;
    const char* const begin = text.data() + at;
    const auto end = std::from_chars(begin, begin + count, code, 16);
    return end.ec == std::errc() && end.ptr == begin + count;
}

}  // namespace

TextDecoder::TextDecoder(const File& file) : file_(file) {}

void TextDecoder::SetVersion(std::string_view version) {
    is_utf8_release_ = without_blanks(version) >= "AC1021";
}

void TextDecoder::SetCodePage(std::string_view name) {
    name = without_blanks(name);
    std::size_t digits = name.size();
    while (digits > 0 && name[digits - 1] >= '0' && name[digits - 1] <= '9') --digits;
    const std::string number(name.substr(digits));
    page_.reset();
    if (is_same_word(name, "UTF-8") || is_same_word(name, "UTF8")) {
        form_ = Form::Utf8;
    } else if (number == "1361") {
        encoding_ = "JOHAB";
        is_double_byte_ = true;
    } else if (!number.empty() && is_known_encoding("CP" + number)) {
        encoding_ = "CP" + number;
        is_double_byte_ = number == "932" || number == "936" || number == "949" || number == "950";
    }
}

void TextDecoder::FindForm(std::string_view raw) {
    const bool may_be_utf8 = !is_double_byte_ && is_utf8(raw);
    const bool is_utf8_text = may_be_utf8 && (is_binary_ || is_file_utf8(file_));
    form_ = is_utf8_text ? Form::Utf8 : Form::OfCodePage;
}

std::string TextDecoder::ToUtf8(std::string_view raw) {
    if (is_ascii(raw)) return std::string(raw);
    if (!is_utf8_release_) {
        if (form_ == Form::Unknown) FindForm(raw);
        if (form_ == Form::OfCodePage) return FromPage(raw);
    }
    return is_utf8(raw) ? std::string(raw) : FromPage(raw);
}

std::string TextDecoder::FromPage(std::string_view raw) {
    if (!page_) page_ = std::make_unique<Utf8Converter>(encoding_);
    return page_->Convert(raw);
}

// Never taken as UTF-8, which many of these pairs are by chance.
std::string TextDecoder::FromDoubleByte(std::size_t page, std::uint32_t code) {
    std::unique_ptr<Utf8Converter>& converter = double_byte_pages_[page];
    if (!converter) converter = std::make_unique<Utf8Converter>(kDoubleBytePages[page]);
    const char bytes[] = {static_cast<char>(code >> 8U), static_cast<char>(code & 0xFFU)};
    // What is one byte has a zero in front.
    return converter->Convert(bytes[0] == 0 ? std::string_view(bytes + 1, 1)
                                            : std::string_view(bytes, 2));
}

std::string TextDecoder::Decode(std::string_view raw) {
    return WithoutEscapes(ToUtf8(raw));
}

void append_utf8(std::uint32_t code, std::string& to) {
    if (code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF) || code == 0) {
        to += kReplacementCharacter;
        return;
    }
    const auto add = [&to](std::uint32_t byte) { to += static_cast<char>(byte); };
    if (code < 0x80) {
        add(code);
    } else if (code < 0x800) {
        add(0xC0U | code >> 6U);
        add(0x80U | (code & 0x3FU));
    } else if (code < 0x10000) {
        add(0xE0U | code >> 12U);
        add(0x80U | (code >> 6U & 0x3FU));
        add(0x80U | (code & 0x3FU));
    } else {
        add(0xF0U | code >> 18U);
        add(0x80U | (code >> 12U & 0x3FU));
        add(0x80U | (code >> 6U & 0x3FU));
        add(0x80U | (code & 0x3FU));
    }
}

std::string TextDecoder::WithoutEscapes(std::string text) {
    if (text.find("\\U+") == text.npos && text.find("\\M+") == text.npos) return text;
    std::string plain;
    for (std::size_t i = 0; i < text.size();) {
        std::uint32_t code = 0;
        if (text.compare(i, 3, "\\U+") == 0 && read_hex(text, i + 3, 4, code)) {
            i += 7;
            std::uint32_t low = 0;
            // A character beyond the first plane is a pair of surrogates.
            if (code >= 0xD800 && code < 0xDC00 && text.compare(i, 3, "\\U+") == 0 &&
                read_hex(text, i + 3, 4, low) && low >= 0xDC00 && low < 0xE000) {
                code = 0x10000 + ((code - 0xD800) << 10U) + (low - 0xDC00);
                i += 7;
            }
            append_utf8(code, plain);
        } else if (text.compare(i, 3, "\\M+") == 0 && i + 3 < text.size() && text[i + 3] >= '1' &&
                   text[i + 3] <= '5' && read_hex(text, i + 4, 4, code)) {
            plain += FromDoubleByte(static_cast<std::size_t>(text[i + 3] - '1'), code);
            i += 8;
        } else {
            plain += text[i++];
        }
    }
    return plain;
}

}  // namespace zol::engine
