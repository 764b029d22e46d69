// A run of numbers in as few bytes as they need, without changing one of them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "engine/formats/decimal.h"

namespace zol::engine {

/// Numbers of one block of rows. Decimals that were written with few digits are kept
/// as whole numbers above the least of them, in one, two, four or eight bytes; others as
/// doubles. Every number comes back as the same double; a missing one is NaN.
class PackedNumbers {
public:
    PackedNumbers() = default;

    /// `index` is below Size.
    double At(std::size_t index) const;
    /// All of them at one go.
    void CopyTo(std::vector<double>& numbers) const;
    /// The whole number at `index`; false when it is missing, or no number of this run
    /// is known to be whole to the last digit.
    bool WholeAt(std::size_t index, std::int64_t& whole) const;

    std::size_t Size() const { return size_; }
    /// Memory held beside this record.
    std::size_t Bytes() const { return bytes_.capacity(); }

private:
    friend class NumberPacker;
    // The width of a whole number above base_, or doubles.
    enum class Form : std::uint8_t { One, Two, Four, Eight, Doubles };

    // The stored whole number above base_; false for a missing number.
    bool AboveAt(std::size_t index, std::uint64_t& above) const;
    double NumberAbove(std::uint64_t above) const;

    std::vector<std::byte> bytes_;
    std::size_t size_ = 0;
    std::int64_t base_ = 0;
    double divisor_ = 1.0;
    Form form_ = Form::One;
};

/// Collects numbers and packs them. Reused from run to run, it allocates little.
class NumberPacker {
public:
    void AddMissing() { items_.push_back({0, kMissing}); }
    void Add(const Decimal& decimal) {
        if (!decimal.exact) {
            AddRounded(decimal.rounded);
            return;
        }
        greatest_scale_ = std::max(greatest_scale_, decimal.scale);
        items_.push_back({decimal.digits, decimal.scale});
    }
    /// Packs what was added and starts anew.
    PackedNumbers Finish();

private:
    // Stand where an exact number has its scale.
    static constexpr int kMissing = -1;
    static constexpr int kRounded = -2;

    struct Item {
        // Of a rounded number the bits of the double.
        std::int64_t digits;
        int scale;

        bool IsExact() const { return scale >= 0; }
        double Value() const;
    };

    void AddRounded(double number);
    bool CommonScale(std::int64_t& least, std::uint64_t& range);

    std::vector<Item> items_;
    bool all_exact_ = true;
    int greatest_scale_ = 0;
};

}  // namespace zol::engine
