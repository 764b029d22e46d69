// Which triangles lie near something: a tree of boxes over the triangles of a mesh.
//
// A packed tree: the triangles stand in the order of a Morton curve through their middles
// (the order of Karras, "Maximizing Parallelism in the Construction of BVHs", 2012), eight
// to a leaf; eight nodes of a level lie under one of the next, and the bounds of eight are
// looked at together. Those that look one way along the main axis of the mesh all stand
// before those that look the other way: boxes then hold one wall of a thin body, not both.
// Bounds are floats against an origin in the middle of the mesh, rounded outwards: they
// only ever pass too much, and every answer is the visitor's, on the exact coordinates.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "engine/geometry/eight_boxes.h"
#include "engine/geometry/large_vector.h"
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
        return AnyLeaf(bounds, [&](std::size_t leaf) {
            return AnyOf(levels_[0][leaf].Meeting(bounds),
                         [&](std::size_t child) { return visit(order_[leaf * kFan + child]); });
        });
    }

    /// Calls `visit` with each pair of triangles, the lower number first, whose bounds meet,
    /// until it answers true; tells whether it did. In an order that the mesh alone decides.
    template <class Visit>
    bool AnyPair(Visit visit) const {
        return AnyPair(Groups(), visit);
    }

    /// Sets of triangles over a tree.
    class Groups {
    public:
        /// No sets.
        Groups() = default;
        /// By a number for each triangle; 0 is for those that are in no set.
        Groups(const TriangleTree& tree, const std::vector<std::uint32_t>& of_triangles);

        bool AreOne(std::size_t level, std::size_t left, std::size_t right) const {
            return !levels_.empty() && levels_[level][left] != 0 &&
                   levels_[level][left] == levels_[level][right];
        }

    private:
        /// The set that all below a place are of, if they are of one, else 0: first for the
        /// places of triangles, then for the nodes of each level.
        std::vector<LargeVector<std::uint32_t>> levels_;
    };

    /// The same, but without pairs of triangles of one set.
    template <class Visit>
    bool AnyPair(const Groups& groups, Visit visit) const {
        return Leaves() > 0 && AnyPairBelow(levels_.size(), 0, groups, visit);
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

    // Places are numbered level by level: at level 0 those of triangles in order_, at each
    // other one the nodes of levels_[level - 1], whose boxes bound eight places below.

    /// Calls `visit` with each leaf whose bounds meet the box.
    template <class Visit>
    bool AnyLeaf(const FloatBox& box, Visit visit) const {
        return Leaves() > 0 && AnyLeafBelow(levels_.size(), 0, box, visit);
    }

    template <class Visit>
    bool AnyLeafBelow(std::size_t level, std::size_t place, const FloatBox& box,
                      Visit& visit) const {
        if (level == 1) return visit(place);
        return AnyOf(levels_[level - 1][place].Meeting(box), [&](std::size_t child) {
            return AnyLeafBelow(level - 1, place * kFan + child, box, visit);
        });
    }

    template <class Visit>
    bool AnyPairBelow(std::size_t level, std::size_t place, const Groups& groups,
                      Visit& visit) const {
        if (level == 0 || groups.AreOne(level, place, place)) return false;
        const EightBoxes& boxes = levels_[level - 1][place];
        const std::size_t below = level == 1 ? order_.size() : levels_[level - 2].size();
        const std::size_t first = place * kFan;
        for (std::size_t i = 0; i < std::min(kFan, below - first); ++i) {
            if (AnyPairBelow(level - 1, first + i, groups, visit)) return true;
            const FloatBox box = boxes.Get(i);
            const std::uint32_t later = ~((std::uint32_t{2} << i) - 1);
            const bool stopped = AnyOf(boxes.Meeting(box) & later, [&](std::size_t j) {
                return AnyPairAcross(level - 1, {first + i, box}, {first + j, boxes.Get(j)}, groups,
                                     visit);
            });
            if (stopped) return true;
        }
        return false;
    }

    struct Bounded {
        std::size_t place;
        FloatBox box;
    };

    /// Of two places whose boxes meet.
    template <class Visit>
    bool AnyPairAcross(std::size_t level, const Bounded& left, const Bounded& right,
                       const Groups& groups, Visit& visit) const {
        if (groups.AreOne(level, left.place, right.place)) return false;
        if (level == 0) return VisitPair(left.place, right.place, visit);
        const EightBoxes& of_left = levels_[level - 1][left.place];
        const EightBoxes& of_right = levels_[level - 1][right.place];
        const std::uint32_t near_left = of_right.Meeting(left.box);
        if (near_left == 0) return false;
        return AnyOf(of_left.Meeting(right.box), [&](std::size_t i) {
            const Bounded one{left.place * kFan + i, of_left.Get(i)};
            return AnyOf(of_right.Meeting(one.box) & near_left, [&](std::size_t j) {
                const std::size_t other = right.place * kFan + j;
                // The boxes of triangles have been looked at now.
                if (level == 1) {
                    return !groups.AreOne(0, one.place, other) &&
                           VisitPair(one.place, other, visit);
                }
                return AnyPairAcross(level - 1, one, {other, of_right.Get(j)}, groups, visit);
            });
        });
    }

    template <class Visit>
    bool VisitPair(std::size_t left, std::size_t right, Visit& visit) const {
        const std::uint32_t a = order_[left];
        const std::uint32_t b = order_[right];
        return a < b ? visit(a, b) : visit(b, a);
    }

    Bounds bounds_;
    Point origin_;
    /// Triangle numbers in the order of the curve.
    LargeVector<std::uint32_t> order_;
    /// From the leaves, whose boxes are those of eight places in order_, to the one root.
    std::vector<LargeVector<EightBoxes>> levels_;
};

}  // namespace zol::engine::geometry
