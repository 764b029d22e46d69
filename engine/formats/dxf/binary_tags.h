// The tags of a binary DXF file, read in blocks.
//
// Behind a sentinel of 22 bytes each tag is a code and a value, whose type and length the code
// tells. Up to release 12 a code is one byte, or 255 and two bytes; later it is two bytes.
// Numbers are little endian.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engine/formats/dxf/tag_types.h"
#include "engine/formats/file.h"

namespace zol::engine {

class BinaryTags {
public:
    static constexpr std::string_view kSentinel{"AutoCAD Binary DXF\r\n\x1A\0", 22};
    static constexpr std::size_t kMostBytesOfText = std::size_t{1} << 26;

    /// The file must outlive this, and begin with the sentinel.
    explicit BinaryTags(const File& file);

    /// False at the end of the file. Throws ReadError for a tag that the file cuts, a text of
    /// more than kMostBytesOfText bytes, or a code that tells no type.
    bool Next();

    int Code() const { return code_; }
    TagType Type() const { return type_; }
    /// The bytes of a text or of a row of bytes, until the next call.
    std::string_view Text() const { return text_; }
    /// Any number.
    double Real() const { return real_; }
    std::int64_t Whole() const { return whole_; }

    /// Throws ReadError "byte 1234: the reason", of where the tag begins.
    [[noreturn]] void Refuse(const std::string& reason) const;

private:
    bool ReadCode();
    void ReadText();
    // Makes `count` bytes stand at at_; false when the file has less.
    bool Have(std::size_t count);
    void Need(std::size_t count);
    template <class Number>
    Number Take();
    void SetWhole(std::int64_t whole);

    const File& file_;
    std::vector<char> memory_;
    std::size_t at_ = 0;
    std::size_t filled_ = 0;
    std::uint64_t filled_offset_ = 0;
    std::uint64_t tag_offset_ = 0;
    bool has_short_codes_ = false;
    int code_ = 0;
    TagType type_ = TagType::Unknown;
    std::string_view text_;
    double real_ = 0;
    std::int64_t whole_ = 0;
};

}  // namespace zol::engine
