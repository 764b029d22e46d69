// A mesh as the set of points that it selects: what is inside of it, or below it.
//
// A closed mesh selects what it winds round. An open one selects what lies vertically below
// it: its triangles are turned upwards, walls are hung under its border, and its picture is
// laid out as a floor, so that it becomes a closed body as well.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/geometry/column_sweep.h"
#include "engine/geometry/mesh_view.h"
#include "engine/geometry/point_locator.h"
#include "engine/geometry/triangle_tree.h"

namespace zol::engine::geometry {

class Solid {
public:
    /// Points as mesh_view.h has them. `floor` lies below whatever will be asked.
    Solid(std::vector<Point> points, std::vector<Triangle> triangles, double floor);

    /// What a person should know of the mesh: that it is open, that triangles were left out
    /// or turned. One line each.
    const std::vector<std::string>& Remarks() const { return remarks_; }

    InsideRule Rule() const { return rule_; }
    /// Turned so that outer sides face outwards, as far as the mesh has such.
    MeshView Mesh() const { return {points_, triangles_}; }

    /// A point on the surface is taken as moved by the tie rule.
    bool Contains(const Point& point) const;

    /// The number that the rule is asked about: how often the mesh winds round the point,
    /// or whether an odd number of sheets is over it. A point on the surface as in Contains.
    int WindingAt(const Point& point) const;

    /// What a triangle counts for where volumes are added up, so that sheets over a point
    /// add up to 1 inside and to 0 outside: 1 where the body is on its inner side alone, -1
    /// where it is on its outer side alone, 0 where it is on both or on none. kCrossing where
    /// that is not the same for all of it, since it meets another triangle.
    using Weight = std::int8_t;
    static constexpr Weight kCrossing = 2;
    /// By triangle; empty where all of them are 1. Found when first asked for.
    const std::vector<Weight>& Weights() const;
    Weight WeightOf(std::size_t triangle) const {
        return Weights().empty() ? Weight{1} : Weights()[triangle];
    }

    /// Built when first asked for.
    const TriangleTree& Tree() const;

private:
    const PointLocator& Locator() const;
    void CloseUp(std::size_t n_points);
    void TurnUpwards();
    void ExtendDownTo(double floor);
    void LeaveOutFlat();
    void MarkCrossings(std::vector<Weight>& weights) const;
    Weight WeightBySides(std::size_t triangle) const;

    std::vector<Point> points_;
    std::vector<Triangle> triangles_;
    /// The first of triangles_ that are the mesh's own; a floor and walls come behind them.
    std::size_t own_triangles_ = 0;
    bool closed_ = false;
    InsideRule rule_ = InsideRule::NonZero;
    std::vector<std::string> remarks_;
    // Answers that are made on first need: a solid is for one thread at a time.
    mutable std::optional<std::vector<Weight>> weights_;
    mutable std::unique_ptr<const TriangleTree> tree_;
    mutable std::unique_ptr<const PointLocator> locator_;
};

}  // namespace zol::engine::geometry
