// Turns the triangles of a mesh so that neighbours run along their edge in opposite
// directions.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "engine/geometry/mesh_view.h"

namespace zol::engine::geometry {

/// For each triangle whether it has to be turned. Of the two ways to orient a part, a set
/// of triangles joined over edges that have just two of them, the one that turns fewer is
/// taken, and none on a tie. Nothing for a mesh that can't be oriented, such as a Moebius
/// strip. Over welded triangles; O(n) in time where points have few edges each.
std::optional<std::vector<bool>> turns_to_orient(std::span<const Triangle> triangles);

}  // namespace zol::engine::geometry
