#include "engine/geometry/orient_parts.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <utility>

#include "engine/geometry/weld.h"

namespace zol::engine::geometry {

namespace {

struct Side {
    std::int32_t lower;
    std::int32_t upper;
    std::uint32_t triangle;
    bool downwards;

    bool SharesEdgeWith(const Side& other) const {
        return lower == other.lower && upper == other.upper;
    }
};

std::vector<Side> sides_by_edge(std::span<const Triangle> triangles) {
    std::vector<Side> sides;
    sides.reserve(triangles.size() * 3);
    for (std::size_t t = 0; t < triangles.size(); ++t) {
        const Triangle& triangle = triangles[t];
        if (repeats_corner(triangle)) continue;
        for (std::size_t corner = 0; corner < 3; ++corner) {
            const std::int32_t from = triangle[corner];
            const std::int32_t to = triangle[(corner + 1) % 3];
            sides.push_back(
                {std::min(from, to), std::max(from, to), static_cast<std::uint32_t>(t), from > to});
        }
    }
    std::sort(sides.begin(), sides.end(), [](const Side& a, const Side& b) {
        return std::pair(a.lower, a.upper) < std::pair(b.lower, b.upper);
    });
    return sides;
}

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

/// False where the triangles can't be oriented.
bool unite_over_edges(const std::vector<Side>& sides, Parts& parts) {
    for (std::size_t first = 0; first < sides.size();) {
        std::size_t end = first + 1;
        while (end < sides.size() && sides[end].SharesEdgeWith(sides[first])) ++end;
        if (end - first == 2) {
            const Side& a = sides[first];
            const Side& b = sides[first + 1];
            if (!parts.Unite(a.triangle, b.triangle, a.downwards == b.downwards)) return false;
        }
        first = end;
    }
    return true;
}

}  // namespace

std::optional<std::vector<bool>> turns_to_orient(std::span<const Triangle> triangles) {
    Parts parts(triangles.size());
    if (!unite_over_edges(sides_by_edge(triangles), parts)) return std::nullopt;

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
