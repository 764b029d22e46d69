// A union of solids, and how much of a lone box lies in it.
//
// A box that no surface touches is inside or outside as its middle is. Of one that one
// solid touches, the triangles over its floor tell the volume (block_pieces.h); where
// several do, or one that crosses itself there, the stack of their sheets does
// (stack_volume.h). Nothing is sampled.
#pragma once

#include <memory>
#include <vector>

#include "engine/geometry/mesh_view.h"
#include "engine/geometry/solid.h"
#include "engine/geometry/triangle_tree.h"

namespace zol::engine::geometry {

/// Of a volume, less than this part of a box counts as none of it, and more than the rest
/// as all: turning a mesh leaves slivers of some 1e-10 where a face would lie in a wall.
inline constexpr double kSliver = 1e-9;

/// 0, `whole`, or what lies between.
inline double without_slivers(double volume, double whole) {
    if (!(volume > kSliver * whole)) return 0.0;
    return volume < (1.0 - kSliver) * whole ? volume : whole;
}

inline Point middle_of(const Box& box) {
    Point middle{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        middle[axis] = box.lower[axis] + (box.upper[axis] - box.lower[axis]) / 2;
    }
    return middle;
}

inline double volume_of(const Box& box) {
    return (box.upper[0] - box.lower[0]) * (box.upper[1] - box.lower[1]) *
           (box.upper[2] - box.lower[2]);
}

class Selection {
public:
    void Add(std::unique_ptr<const Solid> solid) { solids_.push_back(std::move(solid)); }
    const std::vector<std::unique_ptr<const Solid>>& Solids() const { return solids_; }

    /// A point on a surface is taken as moved by the tie rule of orientation.h.
    bool Contains(const Point& point) const;

    /// The volume of the part of a box that is selected, without slivers: exact up to
    /// rounding. For a box of some volume.
    double VolumeIn(const Box& box) const;

    /// The least box around the selected part of a box, some of which is selected.
    Box ExtentIn(const Box& box) const;

private:
    std::vector<std::unique_ptr<const Solid>> solids_;
};

}  // namespace zol::engine::geometry
