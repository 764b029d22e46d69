// The tags of a DXF file, text or binary: group codes with their values, one after the other.
//
// Values are read as numbers only when they are asked for, so that what nobody asks for costs
// little and is never refused.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "engine/formats/dxf/binary_tags.h"
#include "engine/formats/dxf/text_tags.h"
#include "engine/formats/file.h"
#include "engine/formats/line_numbers.h"
#include "engine/formats/text_lines.h"

namespace zol::engine {

class TagReader {
public:
    /// Greater numbers are refused: products of three of them stay finite.
    static constexpr double kMostReal = 1e100;

    /// The file must outlive this.
    explicit TagReader(const File& file);

    /// Passes to the next tag; false at the tag 0 EOF, which ends the drawing whatever comes
    /// behind it, and at the end of the file. Comments are passed over. Throws ReadError for
    /// a group code that is no number and for a tag that the file cuts.
    bool Next() {
        if (!is_put_back_ && !is_at_end_ && text_ && text_->Next()) {
            code_ = text_->Code();
            value_ = text_->Value();
            if (code_ != 0 && code_ != kComment) return true;
            return NextOddOne(true);
        }
        return NextOddOne(false);
    }
    /// Makes the next call of Next give the present tag again.
    void PutBack() { is_put_back_ = true; }

    int Code() const { return code_; }
    /// True when the tag is `0 name`: it begins an entity, a table, a section, or ends one.
    bool Begins(std::string_view name) const { return code_ == 0 && value_ == name; }
    /// The value as it stands in the file, not yet UTF-8; of a number of a binary file empty.
    /// It stands until the next call of Next.
    std::string_view Text() const { return value_; }
    /// The value as a number. Throws ReadError when it is none, or beyond kMostReal.
    double Real() const {
        if (binary_) return BinaryReal();
        std::string_view rest = value_;
        double value = 0;
        if (take_real(rest, value) != Taken::Number || !(value <= kMostReal) ||
            !(value >= -kMostReal)) {
            RefuseNumber();
        }
        return value;
    }
    /// A handle: hexadecimal digits. 0 for what is none.
    std::uint64_t Handle() const;
    /// The value as text, whatever its type.
    std::string Written() const;

    bool IsBinary() const { return binary_.has_value(); }
    /// Throws ReadError with the reason, behind the line or byte of the present tag.
    [[noreturn]] void Refuse(const std::string& reason) const;

private:
    static constexpr int kComment = 999;

    // A tag that is put back, begins something, is a comment or of a binary file.
    bool NextOddOne(bool is_read);
    bool Read();
    double BinaryReal() const;
    [[noreturn]] void RefuseNumber() const;

    std::optional<TextTags> text_;
    std::optional<BinaryTags> binary_;
    int code_ = 0;
    std::string_view value_;
    bool is_put_back_ = false;
    bool is_at_end_ = false;
};

/// True when the file begins as a DXF file does.
bool is_dxf(const File& file);

/// Reads hexadecimal digits; 0 when there is anything else, or nothing.
std::uint64_t handle_of(std::string_view text);

}  // namespace zol::engine
