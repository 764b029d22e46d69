// The corners of a face that may lie in the way of an ear, findable by place.
//
// A k-d tree over points of a plane, built once; points leave it. Every node has the box of
// its points and how many of them are left, so that what is empty costs nothing.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace zol::engine {

using PlanePoint = std::array<double, 2>;

/// 1 where a, b, c turn left, -1 where they turn right, 0 where they are in line as far as
/// doubles can tell.
int turn_of(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c);

class BlockerTree {
public:
    /// `points` must outlive the tree; `members` are the indices of those that are in it.
    void Build(const std::vector<PlanePoint>& points, std::vector<std::int32_t> members);
    /// Takes out a member that is still in.
    void Remove(std::int32_t member);

    /// Calls `blocks` with members in the box of triangle a, b, c (which turns left) until one
    /// answers true, which is the result. Takes one off `effort` for each step.
    template <class Blocks>
    bool AnyIn(const std::array<PlanePoint, 3>& triangle, std::int64_t& effort,
               const Blocks& blocks) const;

private:
    static constexpr std::size_t kLeaf = 8;

    struct Node {
        PlanePoint low;
        PlanePoint high;
        std::size_t left = 0;
    };
    struct Range {
        std::size_t node;
        std::size_t begin;
        std::size_t end;

        bool IsLeaf() const { return end - begin <= kLeaf; }
        std::size_t Middle() const { return begin + (end - begin) / 2; }
        Range Lower() const { return {2 * node + 1, begin, Middle()}; }
        Range Upper() const { return {2 * node + 2, Middle(), end}; }
    };

    // The box of a triangle, and the triangle.
    struct Wanted {
        explicit Wanted(const std::array<PlanePoint, 3>& triangle);
        bool IsInBox(const PlanePoint& point) const {
            return point[0] >= low[0] && point[0] <= high[0] && point[1] >= low[1] &&
                   point[1] <= high[1];
        }
        bool IsApartFrom(const Node& node) const;

        const std::array<PlanePoint, 3>& corners;
        PlanePoint low;
        PlanePoint high;
    };

    void Fill(const Range& range);

    const std::vector<PlanePoint>* points_ = nullptr;
    std::vector<std::int32_t> members_;
    // The points of the members in their order here, since those of a leaf are read together.
    std::vector<PlanePoint> spots_;
    // Of each point that is a member its place among them.
    std::vector<std::int32_t> places_;
    std::vector<bool> is_in_;
    std::vector<Node> nodes_;
};

template <class Blocks>
bool BlockerTree::AnyIn(const std::array<PlanePoint, 3>& triangle, std::int64_t& effort,
                        const Blocks& blocks) const {
    const Wanted wanted(triangle);
    // Each level leaves at most one range waiting.
    std::array<Range, 66> waiting;
    std::size_t count = 0;
    if (!members_.empty()) waiting[count++] = {0, 0, members_.size()};
    while (count > 0) {
        const Range range = waiting[--count];
        --effort;
        if (nodes_[range.node].left == 0 || wanted.IsApartFrom(nodes_[range.node])) continue;
        if (!range.IsLeaf()) {
            waiting[count++] = range.Upper();
            waiting[count++] = range.Lower();
            continue;
        }
        for (std::size_t i = range.begin; i < range.end; ++i) {
            if (is_in_[i] && wanted.IsInBox(spots_[i]) && blocks(members_[i])) return true;
        }
    }
    return false;
}

}  // namespace zol::engine
