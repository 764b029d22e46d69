// The volume of a union of solids in a box, where their surfaces may cross in it.
//
// Over one point of the plan the union is a stack of intervals between sheets. The plan is
// cut along all that changes the stack, the edges of the pieces and the lines in which two
// sheets cross, into trapezoids between vertical lines; over each the length of the stack
// is a linear function, whose integral is its value at the centroid times the area. What
// is inside of the widest interval there the solids are asked; from it on the sheets tell. So
// the result is exact up to rounding, nothing depends on which of two sheets is taken for the
// upper one where they lie on each other, and only what lies in the box is looked at.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "engine/geometry/piece.h"
#include "engine/geometry/solid.h"

namespace zol::engine::geometry {

/// A piece of a solid's surface in a box.
struct Sheet {
    Piece piece;
    std::uint32_t solid;
    /// 1 where it faces upwards, -1 where it faces downwards.
    std::int32_t facing;
    /// The plane of the triangle: height = base + slope_x x + slope_y y, against the middle
    /// of the box; kept within the heights of the piece.
    double base;
    double slope_x;
    double slope_y;
    double least;
    double greatest;

    double HeightAt(double x, double y) const {
        const double height = base + slope_x * x + slope_y * y;
        return height < least ? least : height > greatest ? greatest : height;
    }
};

/// So many pieces are taken together at ease; a caller with more halves its box first. The
/// time grows with their number to the fourth power at worst.
inline constexpr std::size_t kFewSheets = 32;

/// A line in plan, from left to right.
struct PlanLine {
    double x0;
    double y0;
    double x1;
    double y1;

    double At(double x) const {
        if (x <= x0) return y0;
        if (x >= x1) return y1;
        return y0 + (x - x0) / (x1 - x0) * (y1 - y0);
    }
};

/// All pieces in a box.
struct SheetsInBox {
    std::vector<const Solid*> solids;
    std::vector<Sheet> sheets;
    /// Of upright pieces, which are over no point of the plan but part it. Lines that lie on
    /// each other, as walls under a border do that hang from many heights, are one.
    std::vector<PlanLine> walls;
    /// Coordinates of sheets and corners are small, against this origin.
    Point origin;
    Point lower;
    Point upper;

    void Add(const Piece& piece, std::uint32_t solid);
    /// Walls make half the work of sheets, or less.
    std::size_t Count() const { return sheets.size() + walls.size() / 2; }
};

/// The part of the box that lies in one of the solids. Of a box with more than 128 pieces the
/// stack over its middle stands for all.
double stack_volume(const SheetsInBox& box);

}  // namespace zol::engine::geometry
