#include "engine/geometry/crossing.h"

#include "engine/geometry/crossing_count.h"

namespace zol::engine::geometry {

std::optional<TrianglePair> some_crossing(const MeshView& mesh, const TriangleTree& tree) {
    return count_crossings(mesh, tree, 1).first;
}

}  // namespace zol::engine::geometry
