// Reading the binary record, whose layout stands in docs/formats/variant-binary.md. The
// open containers are kept in a list, so nesting costs memory and no stack.
#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "support/entry_finder.h"
#include "support/little_endian.h"
#include "support/variant.h"
#include "support/variant_record.h"

namespace {

constexpr std::int32_t kLeastLength = kRecordHead;

using zol::support::load_little_endian;

std::int32_t length_at(const std::uint8_t* bytes) {
    return static_cast<std::int32_t>(load_little_endian(bytes, 4));
}

MVariantKind kind_of(std::uint8_t code) {
    return code <= MV_INT64 ? static_cast<MVariantKind>(code) : MV_EMPTY;
}

class RecordReader {
public:
    explicit RecordReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    /// `value` is partly filled when there is a fault.
    std::optional<RecordFault> Read(MVariant& value) {
        ReadOutermost(value);
        while (!fault_ && !open_.empty()) {
            Open& here = open_.back();
            if (at_ == here.end) {
                open_.pop_back();
            } else if (MVariant* slot = NextSlot(here)) {
                ReadRecord(*slot, here.end);
            }
        }
        return fault_;
    }

private:
    /// A vector or map that has begun, and where its record ends.
    struct Open {
        MVariant* container;
        std::size_t end;
        int count;
    };

    // A number is as long as its kind says, and a container too short to hold anything is
    // empty: only the outermost record may say a length that can't be.
    void ReadOutermost(MVariant& value) {
        const std::size_t end = bytes_.size();
        if (end < kRecordHead) return Fail("a record has 5 bytes or more");
        const MVariantKind kind = kind_of(bytes_[0]);
        const bool is_container = kind == MV_VECTOR || kind == MV_MAP;
        if (is_container && length_at(&bytes_[1]) <= kLeastLength) {
            value = MVariant(kind);
        } else if (is_container || kind == MV_STRING) {
            ReadRecord(value, end);
        } else {
            ReadNumber(value, kind, end);
        }
    }

    /// The place of the next value of a container; null when its key is damaged.
    MVariant* NextSlot(Open& here) {
        if (here.container->Kind() == MV_VECTOR) return &(*here.container)[here.count++];
        constexpr std::size_t kCount = 4;
        if (here.end - at_ < kCount) return FailKey("a key's count reaches behind its map");
        const std::int32_t count = length_at(&bytes_[at_]);
        if (count < static_cast<std::int32_t>(kCount)) return FailKey("a key's count is below 4");
        const auto size = static_cast<std::size_t>(count);
        if (size > here.end - at_) return FailKey("a key reaches behind its map");
        const char* key = reinterpret_cast<const char*>(bytes_.data() + at_);
        at_ += size;
        MVariant& slot =
            entries_.Entry(*here.container, std::string(key + kCount, key + size).c_str());
        // Of a key that comes twice.
        entries_.Forget(slot);
        return &slot;
    }

    /// Reads the record at `at_`, which must end at or before `end`, and steps behind it;
    /// of a container with content, only behind its head.
    void ReadRecord(MVariant& slot, std::size_t end) {
        if (end - at_ < kRecordHead) return Fail("a record reaches behind what it is in");
        const MVariantKind kind = kind_of(bytes_[at_]);
        const std::int32_t stated = length_at(&bytes_[at_ + 1]);
        if (stated < kLeastLength) return Fail("a record's length is below 5");
        const auto length = static_cast<std::size_t>(stated);
        if (length > end - at_) return Fail("a record reaches behind what it is in");
        if (kind == MV_VECTOR || kind == MV_MAP) {
            slot = MVariant(kind);
            if (length > kRecordHead) open_.push_back({&slot, at_ + length, 0});
            at_ += kRecordHead;
            return;
        }
        if (kind == MV_STRING) {
            const auto* text = reinterpret_cast<const char*>(bytes_.data() + at_);
            const auto* text_end = std::find(text + kRecordHead, text + length, '\0');
            slot = MVariant(std::string(text + kRecordHead, text_end));
        } else {
            ReadNumber(slot, kind, end);
        }
        at_ += length;
    }

    void ReadNumber(MVariant& slot, MVariantKind kind, std::size_t end) {
        const std::size_t size = record_NumberSize(kind);
        if (end - at_ < kRecordHead + size) return Fail("a number reaches behind what it is in");
        slot = MVariant::OfWord(kind, load_little_endian(bytes_.data() + at_ + kRecordHead, size));
    }

    void Fail(const char* what) { fault_ = {at_, what}; }
    MVariant* FailKey(const char* what) {
        Fail(what);
        return nullptr;
    }

    std::span<const std::uint8_t> bytes_;
    std::size_t at_ = 0;
    std::vector<Open> open_;
    std::optional<RecordFault> fault_;
    zol::support::EntryFinder entries_;
};

/// How many bytes a record says that it has.
std::size_t stated_size(const std::uint8_t* record) {
    const std::size_t least = kRecordHead + record_NumberSize(kind_of(record[0]));
    const std::int32_t length = length_at(record + 1);
    return length < 0 ? least : std::max(least, static_cast<std::size_t>(length));
}

}  // namespace

void MVariant::FromBinary(const void* record) {
    if (record == nullptr) {
        Clear();
    } else {
        FromBinary(record, stated_size(static_cast<const std::uint8_t*>(record)));
    }
}

void MVariant::FromBinary(const void* record, std::size_t size) {
    record_Read({static_cast<const std::uint8_t*>(record), record != nullptr ? size : 0}, *this);
}

std::optional<RecordFault> record_Read(std::span<const std::uint8_t> bytes, MVariant& value) {
    MVariant read;
    const auto fault = RecordReader(bytes).Read(read);
    // What was read of a damaged record would be taken for all of it.
    if (fault) read.Clear();
    value = std::move(read);
    return fault;
}
