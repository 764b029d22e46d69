// How the triangles of a mesh are joined along their edges.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>

#include "engine/geometry/mesh_view.h"

namespace zol::engine::geometry {

/// Edges of one kind: how many, and the first in the order of their lower points.
struct EdgeCount {
    std::size_t number = 0;
    std::optional<std::pair<std::int32_t, std::int32_t>> first;
};

/// Triangles that repeat a corner have no edges. Those without area do: one that fills
/// the gap between a long edge and two short ones beside it is what closes the mesh there.
struct EdgeFacts {
    /// Along a border: with one triangle.
    EdgeCount border;
    /// With more than two triangles.
    EdgeCount crowded;
    /// With two triangles that run along it in the same direction.
    EdgeCount misdirected;
    /// With an odd number of triangles: border edges and some of the crowded ones.
    std::size_t odd = 0;
    /// Along which more triangles run one way than the other.
    std::size_t unbalanced = 0;
    /// All of them.
    std::size_t edges = 0;

    /// No edge has more than two triangles, and two run along it in opposite directions.
    bool IsConsistent() const { return crowded.number == 0 && misdirected.number == 0; }
    /// Every edge has an even number of triangles, so that the mesh parts space in two
    /// kinds of regions: behind an odd and behind an even number of sheets.
    bool IsClosed() const { return edges > 0 && odd == 0; }
    /// As many triangles run along each edge one way as the other: the mesh is a cycle,
    /// and the winding number and Gauss's theorem hold for it.
    bool IsCycle() const { return edges > 0 && unbalanced == 0; }
};

/// Over welded triangles. O(n) in time for meshes whose points have few edges each, O(n)
/// in memory: 20 bytes an edge while it runs.
EdgeFacts edge_facts(std::size_t n_points, std::span<const Triangle> triangles);

}  // namespace zol::engine::geometry
