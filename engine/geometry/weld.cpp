#include "engine/geometry/weld.h"

#include <bit>
#include <cstddef>

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

    /// The number under which a point of these coordinates stands, `number` if it is new.
    std::int32_t FindOrAdd(std::int32_t number) {
        const Point& point = points_[static_cast<std::size_t>(number)];
        std::size_t slot = hash_of(point) & mask_;
        while (slots_[slot] != kFree) {
            if (points_[static_cast<std::size_t>(slots_[slot])] == point) return slots_[slot];
            slot = (slot + 1) & mask_;
        }
        slots_[slot] = number;
        return number;
    }

private:
    static constexpr std::int32_t kFree = -1;

    std::span<const Point> points_;
    std::vector<std::int32_t> slots_;
    std::size_t mask_;
};

}  // namespace

std::vector<std::int32_t> first_of_same(std::span<const Point> points) {
    PointTable table(points);
    std::vector<std::int32_t> first(points.size());
    bool repeats = false;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const auto number = static_cast<std::int32_t>(i);
        first[i] = table.FindOrAdd(number);
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
