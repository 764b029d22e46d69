// Two triangles that are not vertical have pictures in plan that meet in a convex polygon,
// perhaps only a segment or a point. Over it the difference of their heights is a linear
// function, so it is 0 everywhere if it is 0 at the corners of that polygon. These are
// corners of one triangle inside the picture of the other, and proper crossings of two
// edges; at each the heights are the same when four points lie in one plane.
#include "engine/geometry/single_valued.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include "engine/geometry/in_plane.h"
#include "engine/geometry/orientation.h"
#include "engine/geometry/triangle_tree.h"

namespace zol::engine::geometry {

namespace {

using Plan = InPlane<0, 1>;

Corners corners(const MeshView& mesh, std::size_t triangle) {
    return {mesh.Corner(triangle, 0), mesh.Corner(triangle, 1), mesh.Corner(triangle, 2)};
}

std::array<const Point*, 3> each(const Corners& t) {
    return {&t.a, &t.b, &t.c};
}

bool a_corner_is_off(const Corners& of, const Corners& other) {
    const auto points = each(of);
    return std::any_of(points.begin(), points.end(), [&](const Point* corner) {
        return Plan::PointMeets(*corner, other) &&
               orient3d(other.a, other.b, other.c, *corner) != 0;
    });
}

bool cross_in_plan(const Point& p, const Point& q, const Point& a, const Point& b) {
    return Plan::Side(p, q, a) * Plan::Side(p, q, b) < 0 &&
           Plan::Side(a, b, p) * Plan::Side(a, b, q) < 0;
}

bool edges_pass_apart(const Corners& left, const Corners& right) {
    const auto of_left = each(left);
    const auto of_right = each(right);
    for (std::size_t i = 0; i < 3; ++i) {
        const Point& p = *of_left[i];
        const Point& q = *of_left[(i + 1) % 3];
        for (std::size_t j = 0; j < 3; ++j) {
            const Point& a = *of_right[j];
            const Point& b = *of_right[(j + 1) % 3];
            if (cross_in_plan(p, q, a, b) && orient3d(p, q, a, b) != 0) return true;
        }
    }
    return false;
}

enum class Stance : std::uint8_t { Lying, Vertical, WithoutArea };

Stance stance_of(const Corners& t) {
    const NormalSigns normal = normal_signs(t.a, t.b, t.c);
    if (normal.z != 0) return Stance::Lying;
    return normal.IsZero() ? Stance::WithoutArea : Stance::Vertical;
}

/// For each triangle the number of the set that it is of, such that two of one set meet no
/// vertical line at different heights: those without area, and those that have the same
/// three points. A file may hold any number of either at one place, and a look at each pair
/// of them would not end. 0 for a triangle that is alone.
std::vector<std::uint32_t> sets_of_alike(const MeshView& mesh, const std::vector<Stance>& stances) {
    constexpr std::uint32_t kWithoutArea = 1;
    constexpr std::uint32_t kFirstOfSame = 2;
    std::vector<std::uint32_t> sets(stances.size(), 0);
    std::vector<std::pair<Triangle, std::uint32_t>> lying;
    for (std::size_t t = 0; t < stances.size(); ++t) {
        if (stances[t] == Stance::WithoutArea) {
            sets[t] = kWithoutArea;
            continue;
        }
        Triangle sorted = mesh.triangles[t];
        std::sort(sorted.begin(), sorted.end());
        lying.emplace_back(sorted, static_cast<std::uint32_t>(t));
    }
    std::sort(lying.begin(), lying.end());
    for (std::size_t i = 1; i < lying.size(); ++i) {
        if (lying[i].first != lying[i - 1].first) continue;
        std::uint32_t& set = sets[lying[i - 1].second];
        if (set == 0) set = kFirstOfSame + static_cast<std::uint32_t>(i);
        sets[lying[i].second] = set;
    }
    return sets;
}

}  // namespace

std::optional<std::pair<std::uint32_t, std::uint32_t>> some_second_height(const MeshView& mesh) {
    std::vector<Stance> stances(mesh.triangles.size());
    for (std::size_t t = 0; t < stances.size(); ++t) {
        stances[t] = stance_of(corners(mesh, t));
        if (stances[t] == Stance::Vertical) {
            const auto number = static_cast<std::uint32_t>(t);
            return std::pair(number, number);
        }
    }
    const TriangleTree tree(mesh, TriangleTree::Bounds::Plan);
    std::optional<std::pair<std::uint32_t, std::uint32_t>> found;
    const TriangleTree::Groups alike(tree, sets_of_alike(mesh, stances));
    tree.AnyPair(alike, [&](std::uint32_t left, std::uint32_t right) {
        if (stances[left] != Stance::Lying || stances[right] != Stance::Lying) return false;
        const Corners l = corners(mesh, left);
        const Corners r = corners(mesh, right);
        if (!a_corner_is_off(l, r) && !a_corner_is_off(r, l) && !edges_pass_apart(l, r)) {
            return false;
        }
        found = {left, right};
        return true;
    });
    return found;
}

}  // namespace zol::engine::geometry
