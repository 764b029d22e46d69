// A run of numbers in as few bytes as they need, without changing one of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
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

    std::vector<std::byte> bytes_;
    std::size_t size_ = 0;
    std::int64_t base_ = 0;
    double divisor_ = 1.0;
    Form form_ = Form::One;
};

/// Collects numbers and packs them. Reused from run to run, it allocates little.
class NumberPacker {
public:
    void AddMissing();
    void Add(const Decimal& decimal);
    /// Packs what was added and starts anew.
    PackedNumbers Finish();

private:
    bool CommonScale(std::int64_t& least, std::uint64_t& range);

    // A missing number is not exact, and NaN.
    std::vector<Decimal> items_;
    bool all_exact_ = true;
    int greatest_scale_ = 0;
};

}  // namespace zol::engine
