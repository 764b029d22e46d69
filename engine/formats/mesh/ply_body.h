// The body of a PLY file as a row of numbers, in each of its forms.
//
// Both classes have the same operations; the readers of elements are templates over them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <string>

#include "engine/formats/byte_numbers.h"
#include "engine/formats/file.h"
#include "engine/formats/mesh/ply_header.h"
#include "engine/formats/mesh/words.h"
#include "engine/formats/read_error.h"
#include "engine/formats/text_lines.h"

namespace zol::engine {

class PlyBytes {
public:
    PlyBytes(const File& file, const PlyHeader& header)
        : file_(file),
          order_(header.format == PlyHeader::Format::BigEndian ? ByteOrder::Big
                                                               : ByteOrder::Little),
          buffer_(std::make_unique_for_overwrite<std::byte[]>(kBuffer)),
          offset_(header.body) {}

    /// Bytes that a number takes at least.
    static std::size_t LeastSize(PlyType type) { return size_of(type); }
    std::uint64_t Remaining() const { return file_.Size() - offset_ + (filled_ - at_); }

    /// The next number, a finite one in a text. Throws ReadError.
    double Number(PlyType type) {
        const std::byte* const from = Take(size_of(type));
        switch (type) {
            case PlyType::Int8:
                return load_number<std::int8_t>(from, order_);
            case PlyType::Uint8:
                return load_number<std::uint8_t>(from, order_);
            case PlyType::Int16:
                return load_number<std::int16_t>(from, order_);
            case PlyType::Uint16:
                return load_number<std::uint16_t>(from, order_);
            case PlyType::Int32:
                return load_number<std::int32_t>(from, order_);
            case PlyType::Uint32:
                return load_number<std::uint32_t>(from, order_);
            case PlyType::Float32:
                return load_number<float>(from, order_);
            case PlyType::Float64:
                return load_number<double>(from, order_);
        }
        return 0.0;
    }

    /// The same for a number that may well be none, such as NaN.
    double AnyNumber(PlyType type) { return Number(type); }

    /// Passes numbers without a look at them.
    void Skip(PlyType type, std::uint64_t numbers) {
        // A list is no longer than the file: the product fits.
        const std::uint64_t bytes = numbers * size_of(type);
        if (bytes > Remaining()) RefuseEnd();
        const std::uint64_t held = std::min<std::uint64_t>(bytes, filled_ - at_);
        at_ += static_cast<std::size_t>(held);
        offset_ += bytes - held;
    }

    /// An element is at its end. False when more than it stood there.
    bool EndElement() { return true; }

    /// All elements are at their end.
    void EndFile() const {
        if (Remaining() > 0) Refuse("there is more than the header counts");
    }

    /// Throws ReadError with the place.
    [[noreturn]] void Refuse(const std::string& reason) const {
        throw ReadError(reason + ", at byte " + std::to_string(offset_ - (filled_ - at_)));
    }

private:
    static constexpr std::size_t kBuffer = std::size_t{1} << 17;

    [[noreturn]] void RefuseEnd() const {
        throw ReadError("the file ends at byte " + std::to_string(file_.Size()) +
                        ", inside the elements that its header states");
    }

    const std::byte* Take(std::size_t count) {
        if (filled_ - at_ < count) Fill(count);
        at_ += count;
        return buffer_.get() + (at_ - count);
    }

    void Fill(std::size_t count) {
        const std::size_t left = filled_ - at_;
        std::memmove(buffer_.get(), buffer_.get() + at_, left);
        const std::size_t read = file_.ReadAt(offset_, buffer_.get() + left, kBuffer - left);
        offset_ += read;
        at_ = 0;
        filled_ = left + read;
        if (filled_ < count) RefuseEnd();
    }

    const File& file_;
    ByteOrder order_;
    std::unique_ptr<std::byte[]> buffer_;
    std::size_t at_ = 0;
    std::size_t filled_ = 0;
    /// Of what is read next from the file.
    std::uint64_t offset_;
};

class PlyWords {
public:
    PlyWords(const File& file, const PlyHeader& header);

    /// A digit and what parts it from the next.
    static std::size_t LeastSize(PlyType) { return 2; }
    /// The last number may be without a line end.
    std::uint64_t Remaining() const {
        return file_.Size() - lines_.NextOffset() + words_.LeftOfLine() + 1;
    }

    double Number(PlyType) { return words_.Real(); }
    double AnyNumber(PlyType);
    void Skip(PlyType, std::uint64_t numbers);

    /// Elements may share a line or go over several. Where there are as many lines as
    /// elements, though, each has its own, and what stands behind its last number is passed:
    /// there are writers whose header leaves properties out.
    bool EndElement() {
        return words_.LeftOfLine() == 0 || !HasLineForEachElement() || words_.RestOfLine().empty();
    }

    void EndFile() {
        if (!words_.Next().empty()) words_.Refuse("there is more than the header counts");
    }

    [[noreturn]] void Refuse(const std::string& reason) const { words_.Refuse(reason); }

private:
    bool HasLineForEachElement();

    const File& file_;
    const PlyHeader& header_;
    std::optional<bool> has_line_for_each_;
    TextLines lines_;
    Words words_;
};

}  // namespace zol::engine
