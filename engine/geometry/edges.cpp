#include "engine/geometry/edges.h"

#include <algorithm>
#include <vector>

#include "engine/geometry/weld.h"

namespace zol::engine::geometry {

namespace {

/// A side of a triangle, kept in the bucket of its lower point: its upper point, times
/// two, and whether it runs downwards.
using HalfEdge = std::uint64_t;

HalfEdge half_edge(std::int32_t upper, bool downwards) {
    return static_cast<std::uint64_t>(static_cast<std::uint32_t>(upper)) << 1U |
           (downwards ? 1U : 0U);
}

std::int32_t upper_of(HalfEdge half) {
    return static_cast<std::int32_t>(half >> 1U);
}

template <class Visit>
void for_each_side(std::span<const Triangle> triangles, Visit visit) {
    for (const Triangle& triangle : triangles) {
        if (repeats_corner(triangle)) continue;
        visit(triangle[0], triangle[1]);
        visit(triangle[1], triangle[2]);
        visit(triangle[2], triangle[0]);
    }
}

/// All sides, bucketed by lower point: counted, then placed.
class HalfEdges {
public:
    HalfEdges(std::size_t n_points, std::span<const Triangle> triangles)
        : starts_(n_points + 1, 0) {
        for_each_side(triangles, [&](std::int32_t from, std::int32_t to) {
            ++starts_[static_cast<std::size_t>(std::min(from, to)) + 1];
        });
        for (std::size_t i = 0; i < n_points; ++i) starts_[i + 1] += starts_[i];
        halves_.resize(starts_.back());
        // Each start walks to the next one while its bucket fills.
        for_each_side(triangles, [&](std::int32_t from, std::int32_t to) {
            const bool downwards = from > to;
            halves_[starts_[static_cast<std::size_t>(std::min(from, to))]++] =
                half_edge(std::max(from, to), downwards);
        });
    }

    std::size_t Points() const { return starts_.size() - 1; }

    std::span<HalfEdge> Bucket(std::size_t point) {
        const std::size_t start = point == 0 ? 0 : starts_[point - 1];
        return std::span(halves_).subspan(start, starts_[point] - start);
    }

private:
    std::vector<std::size_t> starts_;
    std::vector<HalfEdge> halves_;
};

void count(EdgeCount& kind, std::size_t lower, std::int32_t upper) {
    if (kind.number++ == 0) kind.first = {static_cast<std::int32_t>(lower), upper};
}

}  // namespace

EdgeFacts edge_facts(std::size_t n_points, std::span<const Triangle> triangles) {
    EdgeFacts facts;
    HalfEdges all(n_points, triangles);
    for (std::size_t point = 0; point < all.Points(); ++point) {
        const std::span<HalfEdge> bucket = all.Bucket(point);
        std::sort(bucket.begin(), bucket.end());
        for (std::size_t i = 0; i < bucket.size();) {
            const std::int32_t upper = upper_of(bucket[i]);
            std::size_t downwards = 0;
            const std::size_t first = i;
            for (; i < bucket.size() && upper_of(bucket[i]) == upper; ++i) {
                downwards += bucket[i] & 1U;
            }
            const std::size_t sides = i - first;
            const bool is_balanced = downwards * 2 == sides;
            ++facts.edges;
            facts.odd += sides % 2;
            facts.unbalanced += is_balanced ? 0 : 1;
            if (sides == 1) count(facts.border, point, upper);
            if (sides > 2) count(facts.crowded, point, upper);
            if (sides == 2 && !is_balanced) count(facts.misdirected, point, upper);
        }
    }
    return facts;
}

}  // namespace zol::engine::geometry
