// Whether a mesh is the graph of a height over the plan: a surface that no vertical line
// meets twice.
#pragma once

#include <cstdint>
#include <optional>
#include <utility>

#include "engine/geometry/mesh_view.h"

namespace zol::engine::geometry {

/// What keeps a mesh from being one: two triangles that some vertical line meets at
/// different heights, or one, twice, that stands vertical. Nothing for a mesh that is one.
/// Exact; triangles without area are passed over. Over welded triangles, or else triangles
/// that lie on each other cost a look at each pair of them.
std::optional<std::pair<std::uint32_t, std::uint32_t>> some_second_height(const MeshView& mesh);

}  // namespace zol::engine::geometry
