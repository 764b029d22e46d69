#include "engine/geometry/clear_parts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <numeric>

#include "engine/geometry/edge_sides.h"
#include "engine/geometry/orientation.h"
#include "engine/geometry/outline.h"
#include "engine/geometry/vector.h"

namespace zol::engine::geometry {

namespace {

/// Along which axis, and from which end of it, a triangle is looked at: twice the axis, and
/// one more from below. kUnseen for one that shows nothing, as one without area.
using Direction = std::uint8_t;
constexpr Direction kUnseen = 6;

/// From which the first triangle named turns counter-clockwise.
View view_from(Direction direction) {
    const std::size_t axis = direction / 2;
    const View above{(axis + 1) % 3, (axis + 2) % 3};
    return direction % 2 == 0 ? above : View{above.v, above.u};
}

/// In hundredths of its length, if it has an area; only to choose by.
using Normal = std::array<std::int8_t, 3>;

int dot(const Normal& a, const Normal& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

using AxisOrder = std::array<std::size_t, 3>;

/// The same direction for as many triangles as possible, so that parts are large and their
/// outlines short: along the first axis of an order on which not too little is seen.
Direction direction_of(const Point& a, const Point& b, const Point& c, const Normal& normal,
                       const AxisOrder& order) {
    // At a lower angle, a part that curves hides much of itself.
    constexpr int kLeastSeen = 10;
    const std::size_t axis = *std::find_if(order.begin(), order.end() - 1, [&](std::size_t i) {
        return std::abs(int{normal[i]}) >= kLeastSeen;
    });
    const std::size_t u = (axis + 1) % 3;
    const std::size_t v = (axis + 2) % 3;
    const int turn = orient2d(a[u], a[v], b[u], b[v], c[u], c[v]);
    if (turn == 0) return kUnseen;
    return static_cast<Direction>(2 * axis + (turn > 0 ? 0 : 1));
}

/// Sets of triangles (union-find with path halving; the least number is the head).
class Sets {
public:
    explicit Sets(std::size_t triangles) : head_(triangles) {
        std::iota(head_.begin(), head_.end(), std::uint32_t{0});
    }
    std::uint32_t HeadOf(std::uint32_t triangle) {
        while (head_[triangle] != triangle) {
            head_[triangle] = head_[head_[triangle]];
            triangle = head_[triangle];
        }
        return triangle;
    }
    void Unite(std::uint32_t a, std::uint32_t b) {
        const std::uint32_t one = HeadOf(a);
        const std::uint32_t other = HeadOf(b);
        head_[std::max(one, other)] = std::min(one, other);
    }

private:
    std::vector<std::uint32_t> head_;
};

/// A side on the outline of its part.
struct PartSide {
    std::uint32_t part;
    OutlineSide side;
};

/// An edge over which two triangles meet at a sharp angle.
struct SharpEdge {
    Side one;
    Side other;
    std::int32_t lower;
};

class Finder {
public:
    explicit Finder(const MeshView& mesh)
        : mesh_(mesh),
          sets_(mesh.triangles.size()),
          normals_(mesh.triangles.size()),
          directions_(mesh.triangles.size()) {
        Look();
        JoinOverEdges();
    }

    std::vector<std::uint32_t> Find() {
        std::vector<std::uint32_t> parts(mesh_.triangles.size());
        std::vector<std::uint32_t> sizes(mesh_.triangles.size(), 0);
        for (std::size_t t = 0; t < parts.size(); ++t) {
            parts[t] = sets_.HeadOf(static_cast<std::uint32_t>(t));
            ++sizes[parts[t]];
        }
        const std::vector<bool> is_clear = WhichAreClear(sizes);
        const auto without_area = static_cast<std::uint32_t>(parts.size() + 1);
        for (std::size_t t = 0; t < parts.size(); ++t) {
            if (directions_[t] == kUnseen) {
                parts[t] = HasArea(t) ? 0 : without_area;
            } else {
                parts[t] = is_clear[parts[t]] && !IsAtOutline(t) ? parts[t] + 1 : 0;
            }
        }
        return parts;
    }

private:
    bool HasArea(std::size_t t) const {
        return !is_degenerate(mesh_.Corner(t, 0), mesh_.Corner(t, 1), mesh_.Corner(t, 2));
    }

    void Look() {
        Vector areas{};
        for (std::size_t t = 0; t < normals_.size(); ++t) {
            const Point& a = mesh_.Corner(t, 0);
            const Vector normal = cross(minus(mesh_.Corner(t, 1), a), minus(mesh_.Corner(t, 2), a));
            const double length = std::sqrt(geometry::dot(normal, normal));
            for (std::size_t axis = 0; axis < 3; ++axis) {
                areas[axis] += std::fabs(normal[axis]);
                normals_[t][axis] =
                    static_cast<std::int8_t>(length > 0.0 ? 100 * normal[axis] / length : 0.0);
            }
        }
        // First that along which the mesh shows most of its area.
        AxisOrder order = {2, 1, 0};
        std::stable_sort(order.begin(), order.end(),
                         [&](std::size_t i, std::size_t j) { return areas[i] > areas[j]; });
        for (std::size_t t = 0; t < normals_.size(); ++t) {
            directions_[t] = direction_of(mesh_.Corner(t, 0), mesh_.Corner(t, 1),
                                          mesh_.Corner(t, 2), normals_[t], order);
        }
    }

    /// Two triangles that continue each other, are looked at from the same direction and
    /// meet at no sharp angle are of one part. A rim that is one with a surface would spoil
    /// its outline.
    void JoinOverEdges() {
        constexpr int kSharp = 3000;
        EdgeSides(mesh_.points.size(), mesh_.triangles)
            .ForEachEdge([&](std::int32_t lower, std::span<const Side> sides) {
                const bool is_pair =
                    sides.size() == 2 && sides[0].IsDownwards() != sides[1].IsDownwards();
                const std::uint32_t one = sides.front().Triangle();
                const std::uint32_t other = sides.back().Triangle();
                if (is_pair && directions_[one] == directions_[other]) {
                    if (dot(normals_[one], normals_[other]) >= kSharp) {
                        sets_.Unite(one, other);
                        return;
                    }
                    sharp_.push_back({sides[0], sides[1], lower});
                    return;
                }
                for (const Side& side : sides) AddToOutline(lower, side);
            });
        // Where they are of one part by another way, their edge is not on its outline.
        for (const SharpEdge& edge : sharp_) {
            if (sets_.HeadOf(edge.one.Triangle()) == sets_.HeadOf(edge.other.Triangle())) continue;
            AddToOutline(edge.lower, edge.one);
            AddToOutline(edge.lower, edge.other);
        }
        at_outline_.resize(mesh_.points.size());
        for (PartSide& side : outlines_) {
            side.part = sets_.HeadOf(side.part);
            at_outline_[static_cast<std::size_t>(side.side.from)] = true;
            at_outline_[static_cast<std::size_t>(side.side.to)] = true;
        }
        std::stable_sort(outlines_.begin(), outlines_.end(),
                         [](const PartSide& a, const PartSide& b) { return a.part < b.part; });
    }

    void AddToOutline(std::int32_t lower, const Side& side) {
        OutlineSide on_outline{lower, side.Upper()};
        if (side.IsDownwards()) std::swap(on_outline.from, on_outline.to);
        outlines_.push_back({side.Triangle(), on_outline});
    }

    std::vector<bool> WhichAreClear(const std::vector<std::uint32_t>& sizes) const {
        std::vector<bool> is_clear(sizes.size(), false);
        std::vector<OutlineSide> sides;
        for (std::size_t first = 0; first < outlines_.size();) {
            const std::uint32_t part = outlines_[first].part;
            sides.clear();
            for (; first < outlines_.size() && outlines_[first].part == part; ++first) {
                sides.push_back(outlines_[first].side);
            }
            // Of a part with so long an outline few triangles are not at it.
            if (directions_[part] == kUnseen || sides.size() > sizes[part]) continue;
            constexpr std::size_t kLooksATriangle = 16;
            is_clear[part] = covers_once(mesh_.points, sides, view_from(directions_[part]),
                                         kLooksATriangle * sizes[part]);
        }
        return is_clear;
    }

    bool IsAtOutline(std::size_t triangle) const {
        const Triangle& corners = mesh_.triangles[triangle];
        return std::any_of(corners.begin(), corners.end(), [this](std::int32_t corner) {
            return at_outline_[static_cast<std::size_t>(corner)];
        });
    }

    MeshView mesh_;
    Sets sets_;
    std::vector<Normal> normals_;
    std::vector<Direction> directions_;
    std::vector<SharpEdge> sharp_;
    std::vector<PartSide> outlines_;
    std::vector<bool> at_outline_;
};

}  // namespace

std::vector<std::uint32_t> clear_parts(const MeshView& mesh) {
    return Finder(mesh).Find();
}

}  // namespace zol::engine::geometry
