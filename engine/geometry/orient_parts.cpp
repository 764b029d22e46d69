#include "engine/geometry/orient_parts.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <utility>

#include "engine/geometry/edge_sides.h"

namespace zol::engine::geometry {

namespace {

/// Sets of triangles, each with a turn against the head of its set (union-find with
/// parity, by size and with path halving).
class Parts {
public:
    explicit Parts(std::size_t triangles)
        : head_(triangles), size_(triangles, 1), turned_(triangles, 0) {
        std::iota(head_.begin(), head_.end(), std::uint32_t{0});
    }

    struct Place {
        std::uint32_t head;
        bool turned;
    };

    Place Find(std::uint32_t triangle) {
        bool turned = false;
        while (head_[triangle] != triangle) {
            const std::uint32_t above = head_[triangle];
            // Halving: hang it on the one above, unless that is the head.
            if (head_[above] != above) {
                turned_[triangle] = turned_[triangle] != turned_[above] ? 1 : 0;
                head_[triangle] = head_[above];
            }
            turned ^= turned_[triangle] != 0;
            triangle = head_[triangle];
        }
        return {triangle, turned};
    }

    /// False where the two are of one set that says otherwise.
    bool Unite(std::uint32_t a, std::uint32_t b, bool turned) {
        Place left = Find(a);
        Place right = Find(b);
        const bool between = (left.turned != right.turned) != turned;
        if (left.head == right.head) return !between;
        if (size_[left.head] < size_[right.head]) std::swap(left, right);
        head_[right.head] = left.head;
        turned_[right.head] = between ? 1 : 0;
        size_[left.head] += size_[right.head];
        return true;
    }

private:
    std::vector<std::uint32_t> head_;
    std::vector<std::uint32_t> size_;
    std::vector<std::uint8_t> turned_;
};

/// Of the points that the triangles name.
std::size_t point_count(std::span<const Triangle> triangles) {
    std::int32_t greatest = 0;
    for (const Triangle& t : triangles) greatest = std::max({greatest, t[0], t[1], t[2]});
    return static_cast<std::size_t>(greatest) + 1;
}

/// False where the triangles can't be oriented.
bool unite_over_edges(EdgeSides sides, Parts& parts) {
    bool can_be = true;
    sides.ForEachEdge([&](std::int32_t, std::span<const Side> edge) {
        if (!can_be || edge.size() != 2) return;
        can_be = parts.Unite(edge[0].Triangle(), edge[1].Triangle(),
                             edge[0].IsDownwards() == edge[1].IsDownwards());
    });
    return can_be;
}

}  // namespace

std::optional<std::vector<bool>> turns_to_orient(std::span<const Triangle> triangles) {
    Parts parts(triangles.size());
    if (!unite_over_edges(EdgeSides(point_count(triangles), triangles), parts)) {
        return std::nullopt;
    }

    std::vector<std::uint32_t> turned_of_part(triangles.size(), 0);
    std::vector<std::uint32_t> size_of_part(triangles.size(), 0);
    std::vector<bool> turns(triangles.size());
    for (std::size_t t = 0; t < triangles.size(); ++t) {
        const Parts::Place place = parts.Find(static_cast<std::uint32_t>(t));
        turns[t] = place.turned;
        ++size_of_part[place.head];
        turned_of_part[place.head] += place.turned ? 1 : 0;
    }
    for (std::size_t t = 0; t < triangles.size(); ++t) {
        const std::uint32_t head = parts.Find(static_cast<std::uint32_t>(t)).head;
        if (turned_of_part[head] > size_of_part[head] - turned_of_part[head]) {
            turns[t] = !turns[t];
        }
    }
    return turns;
}

}  // namespace zol::engine::geometry
