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

/// Calls `visit` with each crossing pair until it answers true.
template <class Visit>
void for_crossings(const MeshView& mesh, const TriangleTree& tree, Visit visit) {
    const std::vector<bool> has_area = have_area(mesh);
    tree.AnyPair([&](std::uint32_t left, std::uint32_t right) {
        return has_area[left] && has_area[right] &&
               meet_beyond_shared(mesh.points, mesh.triangles[left], mesh.triangles[right]) &&
               visit(TrianglePair(left, right));
    });
}

}  // namespace

std::optional<TrianglePair> some_crossing(const MeshView& mesh, const TriangleTree& tree) {
    std::optional<TrianglePair> found;
    for_crossings(mesh, tree, [&](const TrianglePair& pair) {
        found = pair;
        return true;
    });
    return found;
}

Crossings count_crossings(const MeshView& mesh, const TriangleTree& tree) {
    Crossings crossings;
    for_crossings(mesh, tree, [&](const TrianglePair& pair) {
        ++crossings.pairs;
        if (!crossings.first || pair < *crossings.first) crossings.first = pair;
        return false;
    });
    return crossings;
}

}  // namespace zol::engine::geometry
