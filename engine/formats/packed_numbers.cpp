#include "engine/formats/packed_numbers.h"

#include <algorithm>
#include <cstring>

namespace zol::engine {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr std::int64_t kGreatestExact = std::int64_t{1} << 53;

// Marks a missing number; the greatest value of the width, which no number takes.
template <class Width>
constexpr Width kGap = std::numeric_limits<Width>::max();

template <class Width>
Width load(const std::vector<std::byte>& bytes, std::size_t index) {
    Width value;
    std::memcpy(&value, bytes.data() + index * sizeof(Width), sizeof(Width));
    return value;
}

}  // namespace

bool PackedNumbers::AboveAt(std::size_t index, std::uint64_t& above) const {
    const auto take = [&]<class Width>(Width) {
        const Width stored = load<Width>(bytes_, index);
        above = stored;
        return stored != kGap<Width>;
    };
    switch (form_) {
        case Form::One:
            return take(std::uint8_t{});
        case Form::Two:
            return take(std::uint16_t{});
        case Form::Four:
            return take(std::uint32_t{});
        case Form::Eight:
            return take(std::uint64_t{});
        case Form::Doubles:
            break;
    }
    return false;
}

double PackedNumbers::At(std::size_t index) const {
    if (form_ == Form::Doubles) {
        return load<double>(bytes_, index);
    }
    std::uint64_t above = 0;
    if (!AboveAt(index, above)) {
        return kNaN;
    }
    const auto whole =
        static_cast<double>(static_cast<std::int64_t>(static_cast<std::uint64_t>(base_) + above));
    return divisor_ == 1.0 ? whole : whole / divisor_;
}

bool PackedNumbers::WholeAt(std::size_t index, std::int64_t& whole) const {
    std::uint64_t above = 0;
    if (divisor_ != 1.0 || !AboveAt(index, above)) {
        return false;
    }
    whole = static_cast<std::int64_t>(static_cast<std::uint64_t>(base_) + above);
    return true;
}

void NumberPacker::AddMissing() {
    items_.push_back({0, 0, false, kNaN});
}

void NumberPacker::Add(const Decimal& decimal) {
    all_exact_ = all_exact_ && decimal.exact;
    greatest_scale_ = std::max(greatest_scale_, decimal.exact ? decimal.scale : 0);
    items_.push_back(decimal);
}

// Brings all numbers to the greatest count of decimals, which changes none of them,
// and finds the least and the range; false when they don't fit whole numbers so.
bool NumberPacker::CommonScale(std::int64_t& least, std::uint64_t& range) {
    if (!all_exact_) {
        return false;
    }
    std::int64_t greatest = std::numeric_limits<std::int64_t>::min();
    least = std::numeric_limits<std::int64_t>::max();
    for (Decimal& item : items_) {
        if (!item.exact) {
            continue;
        }
        for (; item.scale < greatest_scale_; ++item.scale) {
            if (item.digits > kGreatestExact / 10 || item.digits < -kGreatestExact / 10) {
                return false;
            }
            item.digits *= 10;
        }
        least = std::min(least, item.digits);
        greatest = std::max(greatest, item.digits);
    }
    const bool empty = least > greatest;
    least = empty ? 0 : least;
    range = empty ? 0 : static_cast<std::uint64_t>(greatest) - static_cast<std::uint64_t>(least);
    // Beyond four bytes doubles are as small, and only whole numbers gain by staying whole.
    return range < kGap<std::uint32_t> || (greatest_scale_ == 0 && range < kGap<std::uint64_t>);
}

PackedNumbers NumberPacker::Finish() {
    PackedNumbers packed;
    packed.size_ = items_.size();
    std::int64_t least = 0;
    std::uint64_t range = 0;
    const auto store = [&]<class Width>(Width, auto value_of) {
        packed.bytes_.resize(items_.size() * sizeof(Width));
        for (std::size_t i = 0; i < items_.size(); ++i) {
            const Width value = value_of(items_[i]);
            std::memcpy(packed.bytes_.data() + i * sizeof(Width), &value, sizeof(Width));
        }
    };
    const auto above_least = [&]<class Width>(Width width) {
        store(width, [&](const Decimal& item) {
            const auto above =
                static_cast<std::uint64_t>(item.digits) - static_cast<std::uint64_t>(least);
            return !item.exact ? kGap<Width> : static_cast<Width>(above);
        });
    };
    if (!CommonScale(least, range)) {
        packed.form_ = PackedNumbers::Form::Doubles;
        store(double{}, [](const Decimal& item) { return item.Value(); });
    } else {
        packed.base_ = least;
        packed.divisor_ = kPowersOfTen[static_cast<std::size_t>(greatest_scale_)];
        if (range < kGap<std::uint8_t>) {
            packed.form_ = PackedNumbers::Form::One;
            above_least(std::uint8_t{});
        } else if (range < kGap<std::uint16_t>) {
            packed.form_ = PackedNumbers::Form::Two;
            above_least(std::uint16_t{});
        } else if (range < kGap<std::uint32_t>) {
            packed.form_ = PackedNumbers::Form::Four;
            above_least(std::uint32_t{});
        } else {
            packed.form_ = PackedNumbers::Form::Eight;
            above_least(std::uint64_t{});
        }
    }
    items_.clear();
    all_exact_ = true;
    greatest_scale_ = 0;
    return packed;
}

}  // namespace zol::engine
