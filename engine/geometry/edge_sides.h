// The sides of triangles, edge by edge.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "engine/geometry/large_vector.h"
#include "engine/geometry/mesh_view.h"
#include "engine/geometry/weld.h"

namespace zol::engine::geometry {

/// A side of a triangle, seen from the lower of its two points.
class Side {
public:
    Side() = default;
    Side(std::int32_t upper, std::size_t triangle, bool downwards)
        : bits_(static_cast<std::uint64_t>(static_cast<std::uint32_t>(upper)) << 32U |
                static_cast<std::uint64_t>(triangle) << 1U | (downwards ? 1U : 0U)) {}

    std::int32_t Upper() const { return static_cast<std::int32_t>(bits_ >> 32U); }
    std::uint32_t Triangle() const { return static_cast<std::uint32_t>(bits_) >> 1U; }
    /// It runs from its upper point to its lower one.
    bool IsDownwards() const { return (bits_ & 1U) != 0; }

    /// By upper point first.
    bool operator<(const Side& other) const { return bits_ < other.bits_; }

private:
    std::uint64_t bits_ = 0;
};

/// All sides of triangles that have three corners. Sorted by buckets of lower points, each
/// of them counted, then placed: O(n) where points have few edges each; 12 bytes a side.
class EdgeSides {
public:
    EdgeSides(std::size_t n_points, std::span<const Triangle> triangles) : ends_(n_points + 1, 0) {
        for_each_side(triangles, [&](std::size_t, std::int32_t from, std::int32_t to) {
            ++ends_[static_cast<std::size_t>(std::min(from, to)) + 1];
        });
        for (std::size_t i = 0; i < n_points; ++i) ends_[i + 1] += ends_[i];
        sides_.resize(ends_.back());
        // The start of each bucket walks to its end while it fills.
        for_each_side(triangles, [&](std::size_t triangle, std::int32_t from, std::int32_t to) {
            sides_[ends_[static_cast<std::size_t>(std::min(from, to))]++] =
                Side(std::max(from, to), triangle, from > to);
        });
    }

    /// Calls `visit` with the lower point and the sides of each edge, in the order of lower,
    /// then upper points.
    template <class Visit>
    void ForEachEdge(Visit visit) {
        std::size_t begin = 0;
        for (std::size_t point = 0; point + 1 < ends_.size(); ++point) {
            const auto bucket = std::span(sides_).subspan(begin, ends_[point] - begin);
            begin = ends_[point];
            std::sort(bucket.begin(), bucket.end());
            for (std::size_t first = 0; first < bucket.size();) {
                std::size_t end = first + 1;
                while (end < bucket.size() && bucket[end].Upper() == bucket[first].Upper()) ++end;
                visit(static_cast<std::int32_t>(point),
                      std::span<const Side>(bucket.subspan(first, end - first)));
                first = end;
            }
        }
    }

private:
    template <class Visit>
    static void for_each_side(std::span<const Triangle> triangles, Visit visit) {
        for (std::size_t t = 0; t < triangles.size(); ++t) {
            const Triangle& triangle = triangles[t];
            if (repeats_corner(triangle)) continue;
            visit(t, triangle[0], triangle[1]);
            visit(t, triangle[1], triangle[2]);
            visit(t, triangle[2], triangle[0]);
        }
    }

    LargeVector<std::size_t> ends_;
    LargeVector<Side> sides_;
};

}  // namespace zol::engine::geometry
