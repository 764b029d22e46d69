// Which triangles lie near something: a tree of boxes over the triangles of a mesh.
//
// A packed tree: the triangles stand in the order of a Morton curve through their middles
// (the order of Karras, "Maximizing Parallelism in the Construction of BVHs", 2012), eight
// to a leaf; eight nodes of a level lie under one of the next, and the bounds of eight are
// looked at together. Bounds are floats against an origin in the middle of the mesh,
// rounded outwards: they only ever pass too much, and every answer is the visitor's, on the
// exact coordinates.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "engine/geometry/eight_boxes.h"
#include "engine/geometry/mesh_view.h"

namespace zol::engine::geometry {

/// A closed box in the coordinates of the mesh.
struct Box {
    Point lower;
    Point upper;
};

class TriangleTree {
public:
    /// What the boxes bound: the triangles in space, or their pictures in plan.
    enum class Bounds { Space, Plan };

    /// O(n log n) in time; some 33 bytes a triangle, and 40 more while it is built.
    explicit TriangleTree(const MeshView& mesh, Bounds bounds = Bounds::Space);

    /// Calls `visit` with the number of each triangle whose bounds meet the box, until it
    /// answers true; tells whether it did.
    template <class Visit>
    bool AnyInBox(const Box& box, Visit visit) const {
        const FloatBox bounds = Rounded(box);
        return AnyLeaf(bounds, 0, [&](std::size_t leaf) {
            return AnyOf(levels_[0][leaf].Meeting(bounds),
                         [&](std::size_t child) { return visit(order_[leaf * kFan + child]); });
        });
    }

    /// Calls `visit` with each pair of triangles, the lower number first, whose bounds meet,
    /// until it answers true; tells whether it did. In an order that the mesh alone decides.
    template <class Visit>
    bool AnyPair(Visit visit) const {
        for (std::size_t left = 0; left < Leaves(); ++left) {
            const EightBoxes& boxes = levels_[0][left];
            const bool stopped = AnyLeaf(boxes.Around(), left, [&](std::size_t right) {
                return AnyPairOfLeaves(left, right, visit);
            });
            if (stopped) return true;
        }
        return false;
    }

private:
    static constexpr std::size_t kFan = EightBoxes::kBoxes;

    std::size_t Leaves() const { return levels_.empty() ? 0 : levels_[0].size(); }
    FloatBox Rounded(const Box& box) const;

    /// Calls `visit` with each number whose bit is set, until it answers true.
    template <class Visit>
    static bool AnyOf(std::uint32_t bits, Visit visit) {
        for (; bits != 0; bits &= bits - 1) {
            if (visit(static_cast<std::size_t>(std::countr_zero(bits)))) return true;
        }
        return false;
    }

    /// Calls `visit` with each leaf from `first` on whose bounds meet the box.
    template <class Visit>
    bool AnyLeaf(const FloatBox& box, std::size_t first, Visit visit) const {
        return Leaves() > 0 && AnyLeafBelow(levels_.size() - 1, 0, box, first, visit);
    }

    /// Below the node of that number on that level; a node of level 0 is a leaf.
    template <class Visit>
    bool AnyLeafBelow(std::size_t level, std::size_t number, const FloatBox& box, std::size_t first,
                      Visit& visit) const {
        const std::size_t leaves_below = std::size_t{1} << (3 * level);
        if ((number + 1) * leaves_below <= first) return false;
        if (level == 0) return visit(number);
        return AnyOf(levels_[level][number].Meeting(box), [&](std::size_t child) {
            return AnyLeafBelow(level - 1, number * kFan + child, box, first, visit);
        });
    }

    template <class Visit>
    bool AnyPairOfLeaves(std::size_t left, std::size_t right, Visit& visit) const {
        const EightBoxes& boxes = levels_[0][left];
        for (std::size_t i = 0; i < kFan && left * kFan + i < order_.size(); ++i) {
            std::uint32_t bits = levels_[0][right].Meeting(boxes.Get(i));
            // Of one leaf with itself, each pair once.
            if (left == right) bits &= ~((std::uint32_t{2} << i) - 1);
            const std::uint32_t a = order_[left * kFan + i];
            const bool stopped = AnyOf(bits, [&](std::size_t j) {
                const std::uint32_t b = order_[right * kFan + j];
                return a < b ? visit(a, b) : visit(b, a);
            });
            if (stopped) return true;
        }
        return false;
    }

    Bounds bounds_;
    Point origin_;
    /// Triangle numbers in the order of the curve.
    std::vector<std::uint32_t> order_;
    /// From the leaves, whose boxes are those of eight places in order_, to the one root.
    std::vector<std::vector<EightBoxes>> levels_;
};

}  // namespace zol::engine::geometry
