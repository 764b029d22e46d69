#include "engine/geometry/weld.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <numeric>
#include <optional>

#include "engine/geometry/large_vector.h"

namespace zol::engine::geometry {

namespace {

/// Equal for points that compare equal. Multiply-and-fold after each coordinate: those of
/// a lattice differ in few high bits only.
std::uint64_t hash_of(const Point& point) {
    std::uint64_t hash = 0;
    for (const double coordinate : point) {
        // Adding 0 makes 0 of -0.
        hash = (hash ^ std::bit_cast<std::uint64_t>(coordinate + 0.0)) * 0x9E3779B97F4A7C15U;
        hash ^= hash >> 32U;
    }
    return hash;
}

/// Open addressing over point numbers, at most half full.
class PointTable {
public:
    explicit PointTable(std::span<const Point> points)
        : points_(points),
          slots_(std::bit_ceil(points.size() * 2 + 1), kFree),
          mask_(slots_.size() - 1) {}

    /// Has the place of a point fetched that will be looked for soon.
    void Expect(std::size_t number) const {
#if defined(__GNUC__)
        __builtin_prefetch(&slots_[hash_of(points_[number]) & mask_]);
#endif
    }

    /// The number under which a point of these coordinates stands, `number` if it is new.
    /// Nothing where so many others stand in its way that the points must have been made for
    /// that.
    std::optional<std::int32_t> FindOrAdd(std::int32_t number) {
        constexpr int kMostInTheWay = 2000;
        const Point& point = points_[static_cast<std::size_t>(number)];
        std::size_t slot = hash_of(point) & mask_;
        for (int in_the_way = 0; slots_[slot] != kFree; ++in_the_way) {
            if (points_[static_cast<std::size_t>(slots_[slot])] == point) return slots_[slot];
            if (in_the_way == kMostInTheWay) return std::nullopt;
            slot = (slot + 1) & mask_;
        }
        slots_[slot] = number;
        return number;
    }

private:
    static constexpr std::int32_t kFree = -1;

    std::span<const Point> points_;
    LargeVector<std::int32_t> slots_;
    std::size_t mask_;
};

/// As first_of_same, but never empty: by sorting, in O(n log n) whatever the points are.
std::vector<std::int32_t> first_by_order(std::span<const Point> points) {
    std::vector<std::int32_t> order(points.size());
    std::iota(order.begin(), order.end(), 0);
    const auto point = [&](std::int32_t i) -> const Point& {
        return points[static_cast<std::size_t>(i)];
    };
    std::sort(order.begin(), order.end(), [&](std::int32_t a, std::int32_t b) {
        return point(a) != point(b) ? point(a) < point(b) : a < b;
    });
    std::vector<std::int32_t> first(points.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        const bool is_same = i > 0 && point(order[i]) == point(order[i - 1]);
        first[static_cast<std::size_t>(order[i])] =
            is_same ? first[static_cast<std::size_t>(order[i - 1])] : order[i];
    }
    return first;
}

}  // namespace

std::vector<std::int32_t> first_of_same(std::span<const Point> points) {
    PointTable table(points);
    std::vector<std::int32_t> first(points.size());
    bool repeats = false;
    for (std::size_t i = 0; i < points.size(); ++i) {
        constexpr std::size_t kAhead = 8;
        if (i + kAhead < points.size()) table.Expect(i + kAhead);
        const auto number = static_cast<std::int32_t>(i);
        const std::optional<std::int32_t> found = table.FindOrAdd(number);
        if (!found) return first_by_order(points);
        first[i] = *found;
        repeats = repeats || first[i] != number;
    }
    if (!repeats) first.clear();
    return first;
}

std::vector<Triangle> welded_triangles(const MeshView& mesh) {
    const std::vector<std::int32_t> first = first_of_same(mesh.points);
    if (first.empty()) return {};
    std::vector<Triangle> welded(mesh.triangles.begin(), mesh.triangles.end());
    for (Triangle& triangle : welded) {
        for (std::int32_t& corner : triangle) corner = first[static_cast<std::size_t>(corner)];
    }
    return welded;
}

}  // namespace zol::engine::geometry
