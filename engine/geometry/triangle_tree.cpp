#include "engine/geometry/triangle_tree.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <utility>

#include "engine/geometry/local_origin.h"
#include "engine/geometry/vector.h"

namespace zol::engine::geometry {

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
/// For values around 0.
constexpr double kLeast = std::numeric_limits<float>::min();

// Wider by the last places of a float, which is more than what rounding took from a
// difference before, and takes from this one; quicker than the very next float. Never
// infinite, as the bounds of empty boxes are.
constexpr double kWider = 0x1p-22;

float rounded(double value) {
    constexpr auto kMost = double{std::numeric_limits<float>::max()};
    return static_cast<float>(std::clamp(value, -kMost, kMost));
}

float rounded_down(double value) {
    return rounded(value - std::fabs(value) * kWider - kLeast);
}

float rounded_up(double value) {
    return rounded(value + std::fabs(value) * kWider + kLeast);
}

/// The lower 10 bits of a number, with two zero bits behind each.
std::uint32_t spread(std::uint32_t bits) {
    bits = (bits | bits << 16U) & 0x030000FFU;
    bits = (bits | bits << 8U) & 0x0300F00FU;
    bits = (bits | bits << 4U) & 0x030C30C3U;
    bits = (bits | bits << 2U) & 0x09249249U;
    return bits;
}

struct Place {
    std::uint32_t code;
    std::uint32_t triangle;
};

/// Places on a Morton curve through a cube of cells around all points: steps of the curve
/// are as long on each axis. Finer cells would part triangles that leaves hold together
/// anyway.
class Curve {
public:
    /// Behind all places.
    static constexpr std::uint32_t kEnd = 1U << 30;

    Curve(std::span<const Point> points, const Point& origin) {
        // The origin is in the middle: a cube that is not too small will do.
        double reach = 0.0;
        for (const Point& point : points) {
            for (std::size_t axis = 0; axis < 3; ++axis) {
                reach = std::max(reach, std::fabs(point[axis] - origin[axis]));
            }
        }
        cells_a_unit_ = reach > 0.0 ? kCells / 2 / reach : 0.0;
        if (!std::isfinite(cells_a_unit_)) cells_a_unit_ = 0.0;
    }

    /// Of a place that is given against the origin.
    std::uint32_t CodeOf(const Vector& place) const {
        std::uint32_t code = 0;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const double cell = place[axis] * cells_a_unit_ + kCells / 2;
            code |= spread(static_cast<std::uint32_t>(std::clamp(cell, 0.0, kCells - 1))) << axis;
        }
        return code;
    }

private:
    static constexpr double kCells = 1 << 10;

    double cells_a_unit_ = 0.0;
};

/// By code, and by triangle where codes are the same: least significant digit first.
void sort_by_code(LargeVector<Place>& places) {
    constexpr unsigned kDigitBits = 11;
    constexpr unsigned kCodeBits = 31;
    LargeVector<Place> sorted(places.size());
    for (unsigned shift = 0; shift < kCodeBits; shift += kDigitBits) {
        std::array<std::size_t, (1U << kDigitBits) + 1> starts{};
        const auto digit = [shift](const Place& place) {
            return place.code >> shift & ((1U << kDigitBits) - 1);
        };
        for (const Place& place : places) ++starts[digit(place) + 1];
        for (std::size_t i = 1; i < starts.size(); ++i) starts[i] += starts[i - 1];
        for (const Place& place : places) sorted[starts[digit(place)]++] = place;
        places.swap(sorted);
    }
}

/// The triangles in the order of the curve, those that look back along the axis on which
/// the mesh shows most of its area behind the others.
LargeVector<std::uint32_t> order_of(const MeshView& mesh, const Point& origin) {
    const Curve curve(mesh.points, origin);
    LargeVector<Place> places(mesh.triangles.size());
    // A bit for each axis.
    std::vector<std::uint8_t> looks_back(places.size());
    Vector areas{};
    for (std::size_t t = 0; t < places.size(); ++t) {
        const Vector a = minus(mesh.Corner(t, 0), origin);
        const Vector b = minus(mesh.Corner(t, 1), origin);
        const Vector c = minus(mesh.Corner(t, 2), origin);
        Vector middle{};
        const Vector normal = cross(minus(b, a), minus(c, a));
        unsigned back = 0;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            middle[axis] =
                (std::min({a[axis], b[axis], c[axis]}) + std::max({a[axis], b[axis], c[axis]})) / 2;
            areas[axis] += std::fabs(normal[axis]);
            back |= normal[axis] < 0.0 ? 1U << axis : 0U;
        }
        places[t] = {curve.CodeOf(middle), static_cast<std::uint32_t>(t)};
        looks_back[t] = static_cast<std::uint8_t>(back);
    }
    const auto main_axis = std::max_element(areas.begin(), areas.end()) - areas.begin();
    for (std::size_t t = 0; t < places.size(); ++t) {
        if ((unsigned{looks_back[t]} >> main_axis & 1U) != 0) places[t].code |= Curve::kEnd;
    }
    sort_by_code(places);
    LargeVector<std::uint32_t> order(places.size());
    for (std::size_t i = 0; i < order.size(); ++i) order[i] = places[i].triangle;
    return order;
}

FloatBox box_of(const MeshView& mesh, std::size_t triangle, const Point& origin, std::size_t axes) {
    FloatBox box{};
    for (std::size_t axis = 0; axis < axes; ++axis) {
        const double a = mesh.Corner(triangle, 0)[axis];
        const double b = mesh.Corner(triangle, 1)[axis];
        const double c = mesh.Corner(triangle, 2)[axis];
        box.lower[axis] = rounded_down(std::min({a, b, c}) - origin[axis]);
        box.upper[axis] = rounded_up(std::max({a, b, c}) - origin[axis]);
    }
    return box;
}

LargeVector<EightBoxes> packed(std::size_t count, auto box_at) {
    LargeVector<EightBoxes> nodes;
    nodes.reserve((count + EightBoxes::kBoxes - 1) / EightBoxes::kBoxes);
    for (std::size_t i = 0; i < count; ++i) {
        if (i % EightBoxes::kBoxes == 0) nodes.emplace_back();
        nodes.back().Set(i % EightBoxes::kBoxes, box_at(i));
    }
    return nodes;
}

}  // namespace

TriangleTree::TriangleTree(const MeshView& mesh, Bounds bounds)
    : bounds_(bounds), origin_(local_origin(mesh.points)), order_(order_of(mesh, origin_)) {
    if (order_.empty()) return;
    // In plan all heights are 0, on both sides.
    const std::size_t axes = bounds == Bounds::Plan ? 2 : 3;
    levels_.push_back(packed(
        order_.size(), [&](std::size_t i) { return box_of(mesh, order_[i], origin_, axes); }));
    while (levels_.back().size() > 1) {
        const LargeVector<EightBoxes>& below = levels_.back();
        levels_.push_back(packed(below.size(), [&](std::size_t i) { return below[i].Around(); }));
    }
}

TriangleTree::Groups::Groups(const TriangleTree& tree,
                             const std::vector<std::uint32_t>& of_triangles) {
    levels_.resize(1);
    levels_[0].reserve(of_triangles.size());
    for (const std::uint32_t triangle : tree.order_) levels_[0].push_back(of_triangles[triangle]);
    for (const LargeVector<EightBoxes>& nodes : tree.levels_) {
        const LargeVector<std::uint32_t>& below = levels_.back();
        LargeVector<std::uint32_t> groups(nodes.size());
        for (std::size_t node = 0; node < groups.size(); ++node) {
            const std::size_t first = node * kFan;
            const std::size_t end = std::min(first + kFan, below.size());
            const bool is_one =
                std::all_of(below.begin() + static_cast<std::ptrdiff_t>(first),
                            below.begin() + static_cast<std::ptrdiff_t>(end),
                            [&](std::uint32_t group) { return group == below[first]; });
            groups[node] = is_one ? below[first] : 0;
        }
        levels_.push_back(std::move(groups));
    }
}

FloatBox TriangleTree::Rounded(const Box& box) const {
    FloatBox rounded{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        rounded.lower[axis] = rounded_down(box.lower[axis] - origin_[axis]);
        rounded.upper[axis] = rounded_up(box.upper[axis] - origin_[axis]);
    }
    if (bounds_ == Bounds::Plan) {
        rounded.lower[2] = -kInfinity;
        rounded.upper[2] = kInfinity;
    }
    return rounded;
}

}  // namespace zol::engine::geometry
