// The tags of a text DXF file, read in blocks: a line with a group code, a line with its value.
//
// Lines end with LF or CR LF. Codes are read where they stand, and the end of a value is looked
// for eight bytes at a time, since most lines are shorter than a call of memchr is worth.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "engine/formats/dxf/tag_types.h"
#include "engine/formats/file.h"
#include "engine/formats/short_decimal.h"

namespace zol::engine {

class TextTags {
public:
    static constexpr std::size_t kMostBytesOfTag = std::size_t{1} << 26;

    /// The file must outlive this. A byte-order mark in front is passed over.
    explicit TextTags(const File& file);

    /// False at the end of the file. Throws ReadError for a code that is no number, a code
    /// without a value, and a tag of more than kMostBytesOfTag bytes.
    bool Next() {
        const char* at = at_;
        while (*at == ' ') ++at;
        unsigned code = 0;
        const char* const digits = at;
        for (; Digit(at) < 10; ++at) code = code * 10 + Digit(at);
        if (at == digits || at - digits > 4 || code > kMostTagCode) return NextWithCare();
        at += *at == '\r' ? 1 : 0;
        if (*at != '\n' || at >= filled_) return NextWithCare();
        const char* const value = ++at;
        const char* const end = EndOfLine(value);
        if (end >= filled_) return NextWithCare();
        Set(static_cast<int>(code), value, end);
        return true;
    }

    int Code() const { return code_; }
    /// Without its line end, until the next call. The byte behind it is a line end.
    std::string_view Value() const { return value_; }

    /// Throws ReadError "line 12: the reason", of the line of the value.
    [[noreturn]] void Refuse(const std::string& reason) const;

private:
    // Behind what is filled stand line ends, so that whatever looks for one ends there.
    static constexpr std::size_t kMargin = 16;

    static unsigned Digit(const char* at) {
        return static_cast<unsigned>(static_cast<unsigned char>(*at)) - '0';
    }
    static const char* EndOfLine(const char* at) {
        using namespace short_decimal;
        if constexpr (std::endian::native == std::endian::little) {
            for (;; at += 8) {
                const std::uint64_t places = places_of(load(at), '\n');
                if (places != 0) return at + (std::countr_zero(places) >> 3);
            }
        }
        while (*at != '\n') ++at;
        return at;
    }
    void Set(int code, const char* value, const char* end) {
        code_ = code;
        const auto size = static_cast<std::size_t>(end - value);
        value_ = {value, size - (size > 0 && end[-1] == '\r' ? 1 : 0)};
        at_ = end + 1;
        lines_ += 2;
    }
    bool NextWithCare();
    bool Fill();
    bool IsBlankToTheEnd();

    const File& file_;
    std::unique_ptr<char[]> memory_;
    std::size_t room_ = 0;
    const char* at_ = nullptr;
    const char* filled_ = nullptr;
    std::uint64_t offset_ = 0;
    std::uint64_t lines_ = 0;
    int code_ = 0;
    std::string_view value_;
};

}  // namespace zol::engine
