// The pieces of the text form, and how lines and comments are counted among them: see
// docs/formats/variant-text.md.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "support/byte_source.h"

namespace zol::support {

/// The first byte in [first, last) that has to stand behind a backslash in a quoted
/// string, or `last`.
inline const char* find_quote_or_backslash(const char* first, const char* last) {
    while (first != last && *first != '"' && *first != '\\') {
        ++first;
    }
    return first;
}

/// What stopped the reading; the number 0 for nothing.
struct TextFault {
    int number;
    const char* message;
    const char* explain;  // null when there is nothing to add
};

class VariantTokens {
public:
    explicit VariantTokens(ByteSource& source) : source_(source) {}

    /// The next byte of significance, with or without the blanks before it. At the end of
    /// the source 0, and that is a fault.
    int NextChar(bool skip_blanks) {
        const char* const at = source_.begin();
        if (at != source_.end() && static_cast<unsigned char>(*at) > ' ' && *at != '*') {
            source_.Skip(at + 1);
            return static_cast<unsigned char>(*at);
        }
        return NextUnusualChar(skip_blanks);
    }
    /// Takes the last byte of NextChar back; nothing at the end of the source. A newline
    /// that is read again is counted again.
    void PushBack() {
        if (!is_at_end_) {
            source_.Unget();
        }
    }

    /// What is behind an opening quote, and the quoted strings that follow with nothing
    /// but blanks between them. At the end of the source a byte 0xFF, and no fault.
    void ReadQuoted(std::string& text);
    /// The first byte of a number, which has been read, and what belongs to it. Good until
    /// the next call.
    struct Number {
        std::string_view text;
        bool is_hexadecimal;  // the digits behind the x, of which there may be none
        bool is_whole;        // nothing but decimal digits
    };
    Number ReadNumber(int first);

    void Fail(const TextFault& fault) { fault_ = fault; }
    const TextFault& Fault() const { return fault_; }
    /// Newlines read so far.
    std::int64_t Line() const { return line_; }

private:
    int NextUnusualChar(bool skip_blanks);
    int SkipComment();
    void SkipIndentation();
    bool ReadPlainNumber(Number& number);
    bool ReadQuotedPiece(std::string& text);
    template <typename Belongs>
    void Gather(Belongs belongs);

    ByteSource& source_;
    bool is_at_end_ = false;
    std::int64_t line_ = 0;
    TextFault fault_{0, nullptr, nullptr};
    std::string gathered_;
};

}  // namespace zol::support
