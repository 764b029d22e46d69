// The volume of a union of solids in a box, where their surfaces may cross in it.
//
// Over one point of the plan the union is a stack of intervals between sheets. The plan is
// cut along all that changes the stack, the edges of the pieces and the lines in which two
// sheets cross, into trapezoids between vertical lines; over each the length of the stack
// is a linear function, whose integral is its value at the centroid times the area. So the
// result is exact up to rounding, and nothing depends on which of two sheets is taken for
// the upper one where they lie on each other.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "engine/geometry/column_sweep.h"
#include "engine/geometry/piece.h"

namespace zol::engine::geometry {

/// A piece of a solid's surface over a box, cut by the box's walls in plan and by its
/// floor; where it lies above the box, it has been brought down to the ceiling.
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

/// So many sheets are taken together at ease; a caller with more halves its box first. The
/// time grows with their number to the fourth power at worst.
inline constexpr std::size_t kFewSheets = 12;

/// The part of the box [lower, upper] that lies in one of the solids; `rules` by solid.
/// Coordinates are small, against a local origin. Of a box with more than 64 sheets the
/// stack over its middle stands for all.
double stack_volume(const std::vector<Sheet>& sheets, const std::vector<InsideRule>& rules,
                    const Point& lower, const Point& upper);

/// The sheet of a piece with some area in plan; `above` is the height to bring it down to,
/// for a piece that lies above the box. Nothing for an upright piece.
std::optional<Sheet> make_sheet(const Piece& piece, std::uint32_t solid,
                                std::optional<double> above);

}  // namespace zol::engine::geometry
