// Solids of known measure, and what can be wrong with one.
#pragma once

#include <cmath>
#include <cstdint>
#include <numbers>
#include <span>
#include <vector>

#include "engine/geometry/mesh_view.h"

namespace zol::testing {

using engine::geometry::MeshView;
using engine::geometry::Point;
using engine::geometry::Triangle;

struct Mesh {
    std::vector<Point> points;
    std::vector<Triangle> triangles;

    MeshView View() const { return {points, triangles}; }

    /// Both, side by side in one mesh.
    Mesh With(const Mesh& other) const {
        Mesh both = *this;
        const auto first = static_cast<std::int32_t>(points.size());
        both.points.insert(both.points.end(), other.points.begin(), other.points.end());
        for (const Triangle& t : other.triangles) {
            both.triangles.push_back({t[0] + first, t[1] + first, t[2] + first});
        }
        return both;
    }

    Mesh Moved(const Point& by) const {
        Mesh moved = *this;
        for (Point& point : moved.points) {
            for (std::size_t axis = 0; axis < 3; ++axis) point[axis] += by[axis];
        }
        return moved;
    }

    Mesh TurnedInsideOut() const {
        Mesh turned = *this;
        for (Triangle& t : turned.triangles) std::swap(t[1], t[2]);
        return turned;
    }

    /// Every triangle with three points of its own.
    Mesh Unwelded() const {
        Mesh apart;
        for (const Triangle& t : triangles) {
            const auto first = static_cast<std::int32_t>(apart.points.size());
            for (const std::int32_t corner : t) {
                apart.points.push_back(points[static_cast<std::size_t>(corner)]);
            }
            apart.triangles.push_back({first, first + 1, first + 2});
        }
        return apart;
    }
};

/// Corner numbers have bit 0 for x, bit 1 for y, bit 2 for z.
inline Mesh box(const Point& lower, const Point& upper) {
    Mesh mesh;
    for (std::size_t corner = 0; corner < 8; ++corner) {
        mesh.points.push_back({(corner & 1U) != 0 ? upper[0] : lower[0],
                               (corner & 2U) != 0 ? upper[1] : lower[1],
                               (corner & 4U) != 0 ? upper[2] : lower[2]});
    }
    mesh.triangles = {{0, 2, 3}, {0, 3, 1}, {4, 5, 7}, {4, 7, 6}, {0, 1, 5}, {0, 5, 4},
                      {2, 6, 7}, {2, 7, 3}, {0, 4, 6}, {0, 6, 2}, {1, 3, 7}, {1, 7, 5}};
    return mesh;
}

inline Mesh tetrahedron(const Point& origin, double side) {
    return {{origin,
             {origin[0] + side, origin[1], origin[2]},
             {origin[0], origin[1] + side, origin[2]},
             {origin[0], origin[1], origin[2] + side}},
            {{0, 2, 1}, {0, 1, 3}, {1, 2, 3}, {2, 0, 3}}};
}

/// Rings of points about the z axis between two poles, or round a torus.
inline Mesh sphere(const Point& middle, double radius, int rings, int around) {
    Mesh mesh;
    const auto put = [&](double polar, double azimuth) {
        mesh.points.push_back({middle[0] + radius * std::sin(polar) * std::cos(azimuth),
                               middle[1] + radius * std::sin(polar) * std::sin(azimuth),
                               middle[2] + radius * std::cos(polar)});
    };
    const auto at = [around](int ring, int step) {
        return 2 + (ring - 1) * around + step % around;
    };
    mesh.points.push_back({middle[0], middle[1], middle[2] + radius});
    mesh.points.push_back({middle[0], middle[1], middle[2] - radius});
    for (int ring = 1; ring < rings; ++ring) {
        for (int step = 0; step < around; ++step) {
            put(std::numbers::pi * ring / rings, 2 * std::numbers::pi * step / around);
        }
    }
    for (int step = 0; step < around; ++step) {
        mesh.triangles.push_back({0, at(1, step), at(1, step + 1)});
        mesh.triangles.push_back({1, at(rings - 1, step + 1), at(rings - 1, step)});
        for (int ring = 1; ring + 1 < rings; ++ring) {
            mesh.triangles.push_back({at(ring, step), at(ring + 1, step), at(ring + 1, step + 1)});
            mesh.triangles.push_back({at(ring, step), at(ring + 1, step + 1), at(ring, step + 1)});
        }
    }
    return mesh;
}

inline Mesh torus(double radius, double tube, int around, int along_tube) {
    Mesh mesh;
    const auto at = [=](int i, int j) { return (i % around) * along_tube + j % along_tube; };
    for (int i = 0; i < around; ++i) {
        for (int j = 0; j < along_tube; ++j) {
            const double a = 2 * std::numbers::pi * i / around;
            const double b = 2 * std::numbers::pi * j / along_tube;
            const double from_axis = radius + tube * std::cos(b);
            mesh.points.push_back(
                {from_axis * std::cos(a), from_axis * std::sin(a), tube * std::sin(b)});
            mesh.triangles.push_back({at(i, j), at(i + 1, j), at(i + 1, j + 1)});
            mesh.triangles.push_back({at(i, j), at(i + 1, j + 1), at(i, j + 1)});
        }
    }
    return mesh;
}

/// A terrain: n x n cells of a height over the plan, each cut in two.
template <class Height>
Mesh terrain(int n, Height height) {
    Mesh mesh;
    for (int j = 0; j <= n; ++j) {
        for (int i = 0; i <= n; ++i) {
            mesh.points.push_back({double(i), double(j), height(i, j)});
        }
    }
    for (int j = 0; j < n; ++j) {
        for (int i = 0; i < n; ++i) {
            const int a = j * (n + 1) + i;
            mesh.triangles.push_back({a, a + 1, a + n + 2});
            mesh.triangles.push_back({a, a + n + 2, a + n + 1});
        }
    }
    return mesh;
}

/// Where surveys are: as far from the origin as a last place of a nanometre allows.
inline constexpr Point kFarAway{612345.0, 7012345.0, 1234.0};

}  // namespace zol::testing
