#include "engine/formats/dxf/tag_reader.h"

#include <array>
#include <charconv>
#include <cmath>

#include "engine/formats/number_text.h"
#include "engine/formats/read_error.h"

namespace zol::engine {

namespace {

bool has_sentinel(const File& file) {
    std::array<char, BinaryTags::kSentinel.size()> head{};
    const std::size_t count = file.ReadAt(0, head.data(), head.size());
    return std::string_view(head.data(), count) == BinaryTags::kSentinel;
}

}  // namespace

std::uint64_t handle_of(std::string_view text) {
    text = without_blanks(text);
    std::uint64_t handle = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), handle, 16);
    return end.ec == std::errc() && end.ptr == text.data() + text.size() ? handle : 0;
}

TagReader::TagReader(const File& file) {
    if (has_sentinel(file)) {
        binary_.emplace(file);
    } else {
        text_.emplace(file);
    }
}

bool TagReader::NextOddOne(bool is_read) {
    if (is_put_back_) {
        is_put_back_ = false;
        return true;
    }
    if (is_at_end_) return false;
    if (!is_read && !Read()) {
        is_at_end_ = true;
        return false;
    }
    while (code_ == kComment) {
        if (!Read()) {
            is_at_end_ = true;
            return false;
        }
    }
    if (code_ == 0) {
        value_ = without_blanks(value_);
        is_at_end_ = value_ == "EOF";
    }
    return !is_at_end_;
}

bool TagReader::Read() {
    if (text_) {
        // At the end of the file it is asked once more, which costs nothing.
        if (!text_->Next()) return false;
        code_ = text_->Code();
        value_ = text_->Value();
        return true;
    }
    if (!binary_->Next()) return false;
    code_ = binary_->Code();
    value_ = binary_->Text();
    return true;
}

double TagReader::BinaryReal() const {
    const TagType type = binary_->Type();
    const double real = binary_->Real();
    if (type == TagType::Text || type == TagType::Bytes || !(std::fabs(real) <= kMostReal)) {
        RefuseNumber();
    }
    return real;
}

void TagReader::RefuseNumber() const {
    const std::string what =
        binary_ ? "the value of group code " + std::to_string(code_) : quoted(value_);
    Refuse(what + " is no number from -1e100 to 1e100");
}

std::uint64_t TagReader::Handle() const {
    return handle_of(value_);
}

std::string TagReader::Written() const {
    if (!binary_ || binary_->Type() == TagType::Text) return std::string(value_);
    if (binary_->Type() == TagType::Real) return number_text(binary_->Real());
    if (binary_->Type() != TagType::Bytes) return std::to_string(binary_->Whole());
    std::string digits;
    for (const char c : value_) {
        constexpr const char* kDigits = "0123456789ABCDEF";
        const auto byte = static_cast<unsigned char>(c);
        digits += kDigits[byte >> 4U];
        digits += kDigits[byte & 15U];
    }
    return digits;
}

void TagReader::Refuse(const std::string& reason) const {
    if (binary_) binary_->Refuse(reason);
    text_->Refuse(reason);
}

bool is_dxf(const File& file) {
    if (has_sentinel(file)) return true;
    try {
        TagReader tags(file);
        return tags.Next() && tags.Begins("SECTION");
    } catch (const ReadError&) {
        return false;
    }
}

}  // namespace zol::engine
