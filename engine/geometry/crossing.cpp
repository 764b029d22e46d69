#include "engine/geometry/crossing.h"

#include <vector>

#include "engine/geometry/orientation.h"
#include "engine/geometry/triangle_meet.h"
#include "engine/geometry/weld.h"

namespace zol::engine::geometry {

namespace {

std::vector<bool> have_area(const MeshView& mesh) {
    std::vector<bool> result(mesh.triangles.size());
    for (std::size_t t = 0; t < result.size(); ++t) {
        result[t] = !repeats_corner(mesh.triangles[t]) &&
                    !is_degenerate(mesh.Corner(t, 0), mesh.Corner(t, 1), mesh.Corner(t, 2));
    }
    return result;
}

}  // namespace

std::optional<TrianglePair> some_crossing(const MeshView& mesh, const TriangleTree& tree) {
    const std::vector<bool> has_area = have_area(mesh);
    std::optional<TrianglePair> found;
    tree.AnyPair([&](std::uint32_t left, std::uint32_t right) {
        if (has_area[left] && has_area[right] &&
            meet_beyond_shared(mesh.points, mesh.triangles[left], mesh.triangles[right])) {
            found.emplace(left, right);
        }
        return found.has_value();
    });
    return found;
}

}  // namespace zol::engine::geometry
