// The mesh that the geometry of this folder works on, wherever it is kept.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace zol::engine::geometry {

/// x, y, z. Every coordinate is finite and at most 1e100 in size, so that products of
/// three differences neither overflow nor lose their exact tails.
using Point = std::array<double, 3>;

/// Three point indices, counter-clockwise seen from outside.
using Triangle = std::array<std::int32_t, 3>;

/// Borrowed: what it views must outlive every structure that is built on it.
struct MeshView {
    std::span<const Point> points;
    std::span<const Triangle> triangles;

    const Point& Corner(std::size_t triangle, std::size_t corner) const {
        return points[static_cast<std::size_t>(triangles[triangle][corner])];
    }
};

}  // namespace zol::engine::geometry
