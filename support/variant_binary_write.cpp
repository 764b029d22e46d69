// Writing the binary record, whose layout stands in docs/formats/variant-binary.md. Its
// size and its bytes come from the same walk.
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "support/little_endian.h"
#include "support/variant.h"
#include "support/variant_record.h"
#include "support/variant_traversal.h"

namespace {

using zol::support::VariantPlace;

/// Readers take lengths for signed numbers.
constexpr std::uint64_t kLongestRecord = std::numeric_limits<std::int32_t>::max();

/// Only counts.
class Counter {
public:
    void Put(std::uint64_t, std::size_t size) { at_ += size; }
    void Put(std::string_view text) { at_ += text.size(); }
    void FillIn(std::uint64_t, std::uint64_t) {}
    std::uint64_t At() const { return at_; }

private:
    std::uint64_t at_ = 0;
};

/// Into a buffer of the counted size.
class Writer {
public:
    explicit Writer(unsigned char* bytes) : bytes_(bytes) {}

    /// The low bytes of a number, the lowest first.
    void Put(std::uint64_t number, std::size_t size) {
        zol::support::store_little_endian(number, bytes_ + at_, size);
        at_ += size;
    }
    void Put(std::string_view text) {
        if (!text.empty()) std::memcpy(bytes_ + at_, text.data(), text.size());
        at_ += text.size();
    }
    void FillIn(std::uint64_t place, std::uint64_t length) {
        zol::support::store_little_endian(length, bytes_ + place, 4);
    }
    std::uint64_t At() const { return at_; }

private:
    unsigned char* bytes_;
    std::uint64_t at_ = 0;
};

/// Thrown out of a walk that would make too long a record: shared vectors may hold more
/// than there is time to count.
struct TooLong {};

template <typename Sink>
class RecordMaker {
public:
    explicit RecordMaker(Sink& sink) : sink_(sink) {}

    void Begin(const MVariant& value, const VariantPlace& place) {
        if (place.key != nullptr) PutKey(place.key);
        const MVariantKind kind = value.Kind();
        const std::string* text = value.Text();
        const std::size_t size = text != nullptr ? text->size() : record_NumberSize(kind);
        if (kind == MV_VECTOR || kind == MV_MAP) heads_.push_back(sink_.At());
        sink_.Put(kind, 1);
        sink_.Put(kRecordHead + size, 4);
        if (text != nullptr) {
            sink_.Put(*text);
        } else {
            sink_.Put(value.Word(), size);
        }
        if (sink_.At() > kLongestRecord) throw TooLong();
    }

    void End(const MVariant&, const VariantPlace&) {
        sink_.FillIn(heads_.back() + 1, sink_.At() - heads_.back());
        heads_.pop_back();
    }

private:
    void PutKey(std::string_view key) {
        constexpr std::size_t kCount = 4;
        sink_.Put(kCount + key.size(), kCount);
        sink_.Put(key);
    }

    Sink& sink_;
    /// Where the records of the open containers begin.
    std::vector<std::uint64_t> heads_;
};

template <typename Sink>
void make_record(const MVariant& value, Sink& sink) {
    RecordMaker<Sink> maker(sink);
    zol::support::traverse(value, zol::support::KeyOrder::kTable, maker);
}

}  // namespace

std::uint32_t MVariant::BinarySize() const {
    Counter counter;
    try {
        make_record(*this, counter);
    } catch (const TooLong&) {
        return 0;
    }
    return static_cast<std::uint32_t>(counter.At());
}

std::unique_ptr<unsigned char[]> MVariant::ToBinary() const {
    const std::uint32_t size = BinarySize();
    if (size == 0) return nullptr;
    auto bytes = std::make_unique_for_overwrite<unsigned char[]>(size);
    Writer writer(bytes.get());
    make_record(*this, writer);
    return bytes;
}
