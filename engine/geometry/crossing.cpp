#include "engine/geometry/crossing.h"

#include "engine/geometry/clear_parts.h"
#include "engine/geometry/orientation.h"
#include "engine/geometry/triangle_meet.h"

namespace zol::engine::geometry {

namespace {

bool has_area(const MeshView& mesh, std::size_t triangle) {
    const Point& a = mesh.Corner(triangle, 0);
    const Point& b = mesh.Corner(triangle, 1);
    const Point& c = mesh.Corner(triangle, 2);
    // Mostly the first look is enough.
    return orient2d<0, 1>(a, b, c) != 0 || !is_degenerate(a, b, c);
}

}  // namespace

std::optional<TrianglePair> some_crossing(const MeshView& mesh, const TriangleTree& tree) {
    std::optional<TrianglePair> found;
    const TriangleTree::Groups clear(tree, clear_parts(mesh));
    tree.AnyPair(clear, [&](std::uint32_t left, std::uint32_t right) {
        // Few get as far as to be asked for their area.
        if (meet_beyond_shared(mesh.points, mesh.triangles[left], mesh.triangles[right]) &&
            has_area(mesh, left) && has_area(mesh, right)) {
            found.emplace(left, right);
        }
        return found.has_value();
    });
    return found;
}

}  // namespace zol::engine::geometry
