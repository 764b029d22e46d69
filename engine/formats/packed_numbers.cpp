#include "engine/formats/packed_numbers.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>

namespace zol::engine {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr std::int64_t kGreatestExact = std::int64_t{1} << 53;

// Marks a missing number; the greatest value of the width, which no number takes.
template <class Width>
constexpr Width kGap = std::numeric_limits<Width>::max();

// What brings a number to so many more decimals, and the most digits that stay exact.
struct Scaling {
    std::int64_t factor = 1;
    std::int64_t most_digits = kGreatestExact;
};

constexpr std::array<Scaling, kMaxScale + 1> scalings() {
    std::array<Scaling, kMaxScale + 1> made{};
    for (std::size_t i = 1; i < made.size(); ++i) {
        made[i].most_digits = made[i - 1].most_digits / 10;
        // Where no digit but 0 is left, the factor doesn't matter.
        made[i].factor = made[i].most_digits == 0 ? 0 : made[i - 1].factor * 10;
    }
    return made;
}

constexpr std::array<Scaling, kMaxScale + 1> kScalings = scalings();

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
    return AboveAt(index, above) ? NumberAbove(above) : kNaN;
}

double PackedNumbers::NumberAbove(std::uint64_t above) const {
    const auto whole =
        static_cast<double>(static_cast<std::int64_t>(static_cast<std::uint64_t>(base_) + above));
    return divisor_ == 1.0 ? whole : whole / divisor_;
}

void PackedNumbers::CopyTo(std::vector<double>& numbers) const {
    numbers.resize(size_);
    const auto copy = [&]<class Width>(Width) {
        for (std::size_t i = 0; i < size_; ++i) {
            const Width stored = load<Width>(bytes_, i);
            numbers[i] = stored == kGap<Width> ? kNaN : NumberAbove(stored);
        }
    };
    switch (form_) {
        case Form::One:
            return copy(std::uint8_t{});
        case Form::Two:
            return copy(std::uint16_t{});
        case Form::Four:
            return copy(std::uint32_t{});
        case Form::Eight:
            return copy(std::uint64_t{});
        case Form::Doubles:
            break;
    }
    for (std::size_t i = 0; i < size_; ++i) {
        numbers[i] = load<double>(bytes_, i);
    }
}

bool PackedNumbers::WholeAt(std::size_t index, std::int64_t& whole) const {
    std::uint64_t above = 0;
    if (divisor_ != 1.0 || !AboveAt(index, above)) {
        return false;
    }
    whole = static_cast<std::int64_t>(static_cast<std::uint64_t>(base_) + above);
    return true;
}

double NumberPacker::Item::Value() const {
    return scale == kMissing
               ? kNaN
               : Decimal{digits, scale, scale != kRounded, std::bit_cast<double>(digits)}.Value();
}

void NumberPacker::AddRounded(double number) {
    all_exact_ = false;
    items_.push_back({std::bit_cast<std::int64_t>(number), kRounded});
}

// Brings all numbers to the greatest count of decimals, which changes none of them,
// and finds the least and the range; false when they don't fit whole numbers so.
bool NumberPacker::CommonScale(std::int64_t& least, std::uint64_t& range) {
    if (!all_exact_) {
        return false;
    }
    std::int64_t greatest = std::numeric_limits<std::int64_t>::min();
    least = std::numeric_limits<std::int64_t>::max();
    for (Item& item : items_) {
        if (!item.IsExact()) {
            continue;
        }
        const Scaling& scaling = kScalings[static_cast<std::size_t>(greatest_scale_ - item.scale)];
        if (item.scale != greatest_scale_) {
            if (item.digits > scaling.most_digits || item.digits < -scaling.most_digits) {
                return false;
            }
            item.digits *= scaling.factor;
            item.scale = greatest_scale_;
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
        store(width, [&](const Item& item) {
            const auto above =
                static_cast<std::uint64_t>(item.digits) - static_cast<std::uint64_t>(least);
            return !item.IsExact() ? kGap<Width> : static_cast<Width>(above);
        });
    };
    if (!CommonScale(least, range)) {
        packed.form_ = PackedNumbers::Form::Doubles;
        store(double{}, [](const Item& item) { return item.Value(); });
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
