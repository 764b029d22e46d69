// Where a mesh crosses itself.
#pragma once

#include <cstdint>
#include <optional>
#include <utility>

#include "engine/geometry/mesh_view.h"
#include "engine/geometry/triangle_tree.h"

namespace zol::engine::geometry {

/// Two triangles, the lower number first.
using TrianglePair = std::pair<std::uint32_t, std::uint32_t>;

/// Some pair of triangles that have more in common than the corner or edge that they
/// share, or nothing. Exact, so that a touch counts too: a corner on another triangle's
/// edge, two faces that lie on each other. Triangles without area are passed over. Over a
/// mesh of welded triangles and the tree of its boxes in space.
std::optional<TrianglePair> some_crossing(const MeshView& mesh, const TriangleTree& tree);

}  // namespace zol::engine::geometry
