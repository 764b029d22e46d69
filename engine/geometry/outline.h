// The outline of a part of a surface, as seen along an axis.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "engine/geometry/mesh_view.h"

namespace zol::engine::geometry {

/// A side of a triangle that no other one of its part continues; the part lies to its left.
struct OutlineSide {
    std::int32_t from;
    std::int32_t to;
};

/// What one looks at: the plane of two axes, seen from the side on which the second one
/// is to the left of the first.
struct View {
    std::size_t u;
    std::size_t v;
};

/// Whether a part that shows its outer side with all of its triangles covers no point of
/// the view twice, which its outline tells: the sides form loops that neither meet
/// themselves nor each other, and beside each loop the part lies once, and nothing of it on
/// the other side. Exact where it says so; false also where telling would take more than
/// `effort` looks at sides, for a part of many holes. The sides are put in another order.
bool covers_once(std::span<const Point> points, std::span<OutlineSide> sides, const View& view,
                 std::size_t effort);

}  // namespace zol::engine::geometry
