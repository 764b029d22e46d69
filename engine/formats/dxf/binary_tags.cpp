#include "engine/formats/dxf/binary_tags.h"

#include <cstddef>
#include <cstring>

#include "engine/formats/byte_numbers.h"
#include "engine/formats/read_error.h"

namespace zol::engine {

namespace {

constexpr std::size_t kBlock = std::size_t{1} << 18;

}  // namespace

BinaryTags::BinaryTags(const File& file) : file_(file), filled_offset_(kSentinel.size()) {
    // The first tag is 0 SECTION: where the S stands tells how long the code is.
    has_short_codes_ = Have(2) && memory_[at_] == 0 && memory_[at_ + 1] != 0;
}

void BinaryTags::Refuse(const std::string& reason) const {
    throw ReadError("byte " + std::to_string(tag_offset_) + ": " + reason);
}

bool BinaryTags::Have(std::size_t count) {
    while (filled_ - at_ < count) {
        const std::size_t kept = filled_ - at_;
        if (memory_.size() < kept + kBlock) memory_.resize(2 * (kept + kBlock));
        if (kept > 0) std::memmove(memory_.data(), memory_.data() + at_, kept);
        at_ = 0;
        const std::size_t read = file_.ReadAt(filled_offset_, memory_.data() + kept, kBlock);
        filled_ = kept + read;
        filled_offset_ += read;
        if (read == 0) return false;
    }
    return true;
}

void BinaryTags::Need(std::size_t count) {
    if (!Have(count)) Refuse("the file ends inside a tag");
}

template <class Number>
Number BinaryTags::Take() {
    Need(sizeof(Number));
    const auto* const bytes = reinterpret_cast<const std::byte*>(memory_.data() + at_);
    at_ += sizeof(Number);
    return load_number<Number>(bytes, ByteOrder::Little);
}

bool BinaryTags::ReadCode() {
    tag_offset_ = filled_offset_ - (filled_ - at_);
    if (!Have(1)) return false;
    if (!has_short_codes_) {
        code_ = Take<std::int16_t>();
        return true;
    }
    code_ = Take<std::uint8_t>();
    if (code_ == 255) code_ = Take<std::int16_t>();
    return true;
}

void BinaryTags::ReadText() {
    std::size_t seen = 0;
    for (;;) {
        const void* const end =
            filled_ - at_ > seen ? std::memchr(memory_.data() + at_ + seen, 0, filled_ - at_ - seen)
                                 : nullptr;
        if (end != nullptr) {
            const char* const begin = memory_.data() + at_;
            text_ = {begin, static_cast<std::size_t>(static_cast<const char*>(end) - begin)};
            at_ += text_.size() + 1;
            return;
        }
        seen = filled_ - at_;
        if (seen > kMostBytesOfText) Refuse("a text is longer than 64 MB");
        Need(seen + 1);
    }
}

void BinaryTags::SetWhole(std::int64_t whole) {
    whole_ = whole;
    real_ = static_cast<double>(whole);
}

bool BinaryTags::Next() {
    if (!ReadCode()) return false;
    type_ = tag_type(code_);
    text_ = {};
    whole_ = 0;
    switch (type_) {
        case TagType::Text:
            ReadText();
            break;
        case TagType::Real:
            real_ = Take<double>();
            break;
        case TagType::Byte:
            SetWhole(Take<std::uint8_t>());
            break;
        case TagType::Whole16:
            SetWhole(Take<std::int16_t>());
            break;
        case TagType::Whole32:
            SetWhole(Take<std::int32_t>());
            break;
        case TagType::Whole64:
            SetWhole(Take<std::int64_t>());
            break;
        case TagType::Bytes: {
            const std::size_t count = Take<std::uint8_t>();
            Need(count);
            text_ = {memory_.data() + at_, count};
            at_ += count;
            break;
        }
        case TagType::Unknown:
            Refuse("group code " + std::to_string(code_) + " is none of the format");
    }
    return true;
}

}  // namespace zol::engine
