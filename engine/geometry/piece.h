// Plane convex pieces that triangles are cut into by the walls of blocks.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "engine/geometry/mesh_view.h"

namespace zol::engine::geometry {

/// A convex polygon in the plane of the triangle that it was cut from, with that
/// triangle's sense of turning. A cut adds one corner at most, and a box has six walls.
class Piece {
public:
    Piece() = default;
    Piece(const Point& a, const Point& b, const Point& c) : corners_{a, b, c}, size_(3) {}

    std::size_t Size() const { return size_; }
    const Point& operator[](std::size_t i) const { return corners_[i]; }
    const Point* begin() const { return corners_.data(); }
    const Point* end() const { return corners_.data() + size_; }
    void Clear() { size_ = 0; }
    void Add(const Point& corner) { corners_[size_++] = corner; }

    std::pair<double, double> Range(std::size_t axis) const {
        double least = corners_[0][axis];
        double greatest = least;
        for (std::size_t i = 1; i < size_; ++i) {
            least = std::min(least, corners_[i][axis]);
            greatest = std::max(greatest, corners_[i][axis]);
        }
        return {least, greatest};
    }

    /// Twice the area of its picture in plan, positive where it turns counter-clockwise
    /// there, and the integral over that area of three times the height above `z`, doubled.
    struct Sums {
        double area2 = 0.0;
        double volume6 = 0.0;
    };
    Sums Above(double z) const {
        Sums sums;
        const Point& a = corners_[0];
        for (std::size_t i = 2; i < size_; ++i) {
            const Point& b = corners_[i - 1];
            const Point& c = corners_[i];
            const double area2 = (b[0] - a[0]) * (c[1] - a[1]) - (c[0] - a[0]) * (b[1] - a[1]);
            sums.area2 += area2;
            sums.volume6 += area2 * ((a[2] - z) + (b[2] - z) + (c[2] - z));
        }
        return sums;
    }

    /// Cuts it at a wall across an axis into what lies below it and what lies above.
    /// Corners of the cut are put on the wall to the bit, and depend on the edge alone and
    /// not on the sense in which it runs: neighbours that share the edge share the corner.
    void Cut(std::size_t axis, double wall, Piece& below, Piece& above) const {
        below.Clear();
        above.Clear();
        const Point* from = &corners_[size_ - 1];
        for (std::size_t i = 0; i < size_; ++i) {
            const Point* const to = &corners_[i];
            const double start = (*from)[axis];
            const double end = (*to)[axis];
            if ((start < wall && end > wall) || (start > wall && end < wall)) {
                const Point crossing =
                    start < end ? Between(*from, *to, axis, wall) : Between(*to, *from, axis, wall);
                below.Add(crossing);
                above.Add(crossing);
            }
            if (end <= wall) below.Add(*to);
            if (end >= wall) above.Add(*to);
            from = to;
        }
    }

private:
    static constexpr std::size_t kMostCorners = 12;

    static Point Between(const Point& lower, const Point& upper, std::size_t axis, double wall) {
        const double part = (wall - lower[axis]) / (upper[axis] - lower[axis]);
        Point crossing{};
        for (std::size_t i = 0; i < 3; ++i) crossing[i] = lower[i] + part * (upper[i] - lower[i]);
        crossing[axis] = wall;
        return crossing;
    }

    std::array<Point, kMostCorners> corners_;
    std::size_t size_ = 0;
};

/// True for a piece that lies wholly in the wall. Exact, since cutting sets the coordinate.
inline bool lies_in(const Piece& piece, std::size_t axis, double wall) {
    return std::all_of(piece.begin(), piece.end(),
                       [&](const Point& corner) { return corner[axis] == wall; });
}

/// Cuts a piece by all walls that it crosses and calls `visit(cell, part)` for each part
/// between two of them, upwards; the first cell lies between walls 0 and 1. What lies
/// wholly in a wall belongs to the cell above it. What lies below the first wall is left
/// out, and what lies above the last one has the number of walls less one as its cell.
/// `walls` are Ticks, or what answers as they do.
template <class Walls, class Visit>
void cut_by_walls(const Piece& piece, std::size_t axis, const Walls& walls, Visit visit) {
    const auto [least, greatest] = piece.Range(axis);
    Piece below;
    std::array<Piece, 2> above;
    const Piece* rest = &piece;
    for (std::size_t wall = walls.Above(least);; ++wall) {
        if (wall == walls.Count() || greatest <= walls[wall]) {
            // All of it lies below this wall, and at or above the one before.
            if (wall > 0) visit(wall - 1, *rest);
            return;
        }
        Piece& next = above[wall % 2];
        rest->Cut(axis, walls[wall], below, next);
        if (wall > 0 && below.Size() >= 3) visit(wall - 1, below);
        if (next.Size() < 3) return;
        rest = &next;
    }
}

}  // namespace zol::engine::geometry
