#include "engine/geometry/triangle_tree.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "engine/geometry/local_origin.h"

namespace zol::engine::geometry {

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

// One step beyond the nearest float, also where that is exact: what is rounded is itself
// a rounded difference.
float rounded_down(double value) {
    return std::nextafter(static_cast<float>(value), -kInfinity);
}

float rounded_up(double value) {
    return std::nextafter(static_cast<float>(value), kInfinity);
}

/// The lower 21 bits of a number, with two zero bits behind each.
std::uint64_t spread(std::uint64_t bits) {
    bits &= 0x1FFFFFU;
    bits = (bits | bits << 32U) & 0x1F00000000FFFFU;
    bits = (bits | bits << 16U) & 0x1F0000FF0000FFU;
    bits = (bits | bits << 8U) & 0x100F00F00F00F00FU;
    bits = (bits | bits << 4U) & 0x10C30C30C30C30C3U;
    bits = (bits | bits << 2U) & 0x1249249249249249U;
    return bits;
}

struct Place {
    std::uint64_t code;
    std::uint32_t triangle;
};

/// Places of boxes on a Morton curve through the middles of all of them, in a cube of
/// cells: steps of the curve are as long on each axis.
class Curve {
public:
    explicit Curve(const std::vector<FloatBox>& boxes) {
        std::array<float, 3> upper{};
        lower_.fill(kInfinity);
        upper.fill(-kInfinity);
        for (const FloatBox& box : boxes) {
            for (std::size_t axis = 0; axis < 3; ++axis) {
                lower_[axis] = std::min(lower_[axis], box.lower[axis]);
                upper[axis] = std::max(upper[axis], box.upper[axis]);
            }
        }
        double longest = 0.0;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            longest = std::max(longest, double{upper[axis]} - double{lower_[axis]});
        }
        cells_a_unit_ = longest > 0.0 && std::isfinite(longest) ? kCells / longest : 0.0;
    }

    std::uint64_t CodeOf(const FloatBox& box) const {
        std::uint64_t code = 0;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const double middle = (double{box.lower[axis]} + double{box.upper[axis]}) / 2;
            const double cell = (middle - double{lower_[axis]}) * cells_a_unit_;
            code |= spread(static_cast<std::uint64_t>(std::clamp(cell, 0.0, kCells - 1))) << axis;
        }
        return code;
    }

private:
    static constexpr double kCells = 1 << 21;

    std::array<float, 3> lower_{};
    double cells_a_unit_ = 0.0;
};

/// By code, and by triangle where codes are the same: least significant digit first.
void sort_by_code(std::vector<Place>& places) {
    constexpr unsigned kDigitBits = 11;
    constexpr unsigned kCodeBits = 63;
    std::vector<Place> sorted(places.size());
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

std::vector<FloatBox> boxes_of(const MeshView& mesh, const Point& origin, std::size_t axes) {
    std::vector<FloatBox> boxes(mesh.triangles.size());
    for (std::size_t t = 0; t < boxes.size(); ++t) {
        for (std::size_t axis = 0; axis < axes; ++axis) {
            const double a = mesh.Corner(t, 0)[axis];
            const double b = mesh.Corner(t, 1)[axis];
            const double c = mesh.Corner(t, 2)[axis];
            boxes[t].lower[axis] = rounded_down(std::min({a, b, c}) - origin[axis]);
            boxes[t].upper[axis] = rounded_up(std::max({a, b, c}) - origin[axis]);
        }
    }
    return boxes;
}

std::vector<EightBoxes> packed(std::size_t count, auto box_at) {
    std::vector<EightBoxes> nodes((count + EightBoxes::kBoxes - 1) / EightBoxes::kBoxes);
    for (std::size_t i = 0; i < count; ++i) {
        nodes[i / EightBoxes::kBoxes].Set(i % EightBoxes::kBoxes, box_at(i));
    }
    return nodes;
}

}  // namespace

TriangleTree::TriangleTree(const MeshView& mesh, Bounds bounds)
    : bounds_(bounds), origin_(local_origin(mesh.points)), order_(mesh.triangles.size()) {
    if (order_.empty()) return;
    // In plan all heights are 0, on both sides.
    const std::vector<FloatBox> boxes = boxes_of(mesh, origin_, bounds == Bounds::Plan ? 2 : 3);
    {
        const Curve curve(boxes);
        std::vector<Place> places(boxes.size());
        for (std::size_t t = 0; t < boxes.size(); ++t) {
            places[t] = {curve.CodeOf(boxes[t]), static_cast<std::uint32_t>(t)};
        }
        sort_by_code(places);
        for (std::size_t i = 0; i < places.size(); ++i) order_[i] = places[i].triangle;
    }
    levels_.push_back(packed(order_.size(), [&](std::size_t i) { return boxes[order_[i]]; }));
    while (levels_.back().size() > 1) {
        const std::vector<EightBoxes>& below = levels_.back();
        levels_.push_back(packed(below.size(), [&](std::size_t i) { return below[i].Around(); }));
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
