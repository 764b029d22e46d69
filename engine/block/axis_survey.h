// Which centroids and sizes occur along one axis of a table of blocks, and the
// lattice that they make.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zol::engine::block {

/// Sizes and centroids come rounded: what is closer than this part of a parent is the
/// same place.
inline constexpr double kLatticeTolerance = 1e-4;

/// "x" for axis 0, as messages name it.
inline std::string axis_letter(std::size_t axis) {
    return std::string(1, static_cast<char>('x' + axis));
}

/// A block's place along one axis.
struct Span {
    double centroid = 0.0;
    double size = 0.0;

    bool operator==(const Span&) const = default;
};

/// The different spans of an axis. A model of millions of blocks has some hundreds;
/// beyond kMost they make no lattice, and only their bounds are kept.
class SpanSet {
public:
    static constexpr std::size_t kMost = std::size_t{1} << 18;

    void Add(const Span& span) {
        if (span == last_) {
            return;
        }
        // Spans come in turn, each mostly after the one that it came after before.
        if (last_slot_ < slots_.size() && slots_[slots_[last_slot_].follower].span == span) {
            last_slot_ = slots_[last_slot_].follower;
            last_ = span;
            return;
        }
        AddNew(span);
    }
    void Merge(const SpanSet& other);

    /// All of it moved along the axis.
    SpanSet Shifted(double by) const;

    bool IsEmpty() const { return count_ == 0; }
    bool Overflowed() const { return overflowed_; }
    /// By centroid, then by size.
    std::vector<Span> Sorted() const;
    /// Bounds of all spans, however many there were.
    double Lower() const { return lower_; }
    double Upper() const { return upper_; }
    double LeastSize() const { return least_size_; }
    double GreatestSize() const { return greatest_size_; }

private:
    void AddNew(const Span& span);
    // Takes a span into the bounds.
    void Widen(const Span& span);
    void Grow();

    struct Slot {
        // Of an empty slot the size is NaN.
        Span span;
        // The slot of the span that was added after this one, the last time.
        std::uint32_t follower = 0;

        bool IsEmpty() const { return span.size != span.size; }
    };
    std::size_t SlotOf(const Span& span) const;

    // An open-addressing table.
    std::vector<Slot> slots_;
    std::size_t last_slot_ = 0;
    std::size_t count_ = 0;
    bool overflowed_ = false;
    Span last_{0.0, -1.0};
    double lower_ = 0.0;
    double upper_ = 0.0;
    double least_size_ = 0.0;
    double greatest_size_ = 0.0;
};

/// What the spans of an axis turn out to be, in the coordinates they were given in.
struct AxisPlan {
    enum class Kind {
        /// One size, on a lattice.
        Regular,
        /// Whole parents and whole fractions of them.
        Fractions,
        /// Spans of any size, each inside one parent.
        Inside,
        /// No common lattice.
        Free
    };
    Kind kind = Kind::Free;
    double lower = 0.0;
    double parent = 0.0;
    /// Parents that span the data.
    std::int64_t count = 1;
    /// Kind::Fractions: edges lie on this many parts of a parent.
    int parts = 1;
    /// Part of a parent within which edges count as the same.
    double tolerance = kLatticeTolerance;
};

/// What a sidecar states beforehand.
struct AxisFacts {
    std::optional<double> lower;
    std::optional<double> parent;
    double tolerance = kLatticeTolerance;
};

/// The smallest gap between neighbours that divides all others within 1e-4 of itself;
/// nothing when there is none, or fewer than two centroids.
std::optional<double> common_gap(const std::vector<Span>& sorted);

/// Recognises the lattice of spans whose sizes are known, all above 0.
AxisPlan plan_axis(const SpanSet& spans, const AxisFacts& facts);

}  // namespace zol::engine::block
