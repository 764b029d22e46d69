#include "engine/formats/mesh/blocker_tree.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zol::engine {

int turn_of(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c) {
    // Flattening a face costs a few roundings of its extent, the products one more each.
    constexpr double kNoise = 16 * 0x1p-52;
    const double left = (b[0] - a[0]) * (c[1] - a[1]);
    const double right = (b[1] - a[1]) * (c[0] - a[0]);
    const double area = left - right;
    if (std::fabs(area) <= kNoise * (std::fabs(left) + std::fabs(right))) return 0;
    return area > 0 ? 1 : -1;
}

void BlockerTree::Build(const std::vector<PlanePoint>& points, std::vector<std::int32_t> members) {
    points_ = &points;
    members_ = std::move(members);
    is_in_.assign(members_.size(), true);
    std::size_t leaves = 1;
    for (std::size_t size = members_.size(); size > kLeaf; size = (size + 1) / 2) leaves *= 2;
    nodes_.assign(2 * leaves - 1, Node());
    if (!members_.empty()) Fill({0, 0, members_.size()});
    places_.resize(points.size());
    spots_.resize(members_.size());
    for (std::size_t i = 0; i < members_.size(); ++i) {
        const auto member = static_cast<std::size_t>(members_[i]);
        places_[member] = static_cast<std::int32_t>(i);
        spots_[i] = points[member];
    }
}

void BlockerTree::Fill(const Range& range) {
    const auto at = [&](std::size_t i) {
        return members_.begin() + static_cast<std::ptrdiff_t>(i);
    };
    const auto point = [&](std::int32_t member) -> const PlanePoint& {
        return (*points_)[static_cast<std::size_t>(member)];
    };
    Node& node = nodes_[range.node];
    node.left = range.end - range.begin;
    node.low = node.high = point(members_[range.begin]);
    for (std::size_t i = range.begin; i < range.end; ++i) {
        for (std::size_t axis = 0; axis < 2; ++axis) {
            node.low[axis] = std::min(node.low[axis], point(members_[i])[axis]);
            node.high[axis] = std::max(node.high[axis], point(members_[i])[axis]);
        }
    }
    if (range.IsLeaf()) return;
    const std::size_t axis = node.high[0] - node.low[0] >= node.high[1] - node.low[1] ? 0 : 1;
    std::nth_element(
        at(range.begin), at(range.Middle()), at(range.end),
        [&](std::int32_t a, std::int32_t b) { return point(a)[axis] < point(b)[axis]; });
    Fill(range.Lower());
    Fill(range.Upper());
}

void BlockerTree::Remove(std::int32_t member) {
    const auto place = static_cast<std::size_t>(places_[static_cast<std::size_t>(member)]);
    is_in_[place] = false;
    Range range{0, 0, members_.size()};
    while (true) {
        --nodes_[range.node].left;
        if (range.IsLeaf()) return;
        range = place < range.Middle() ? range.Lower() : range.Upper();
    }
}

BlockerTree::Wanted::Wanted(const std::array<PlanePoint, 3>& triangle)
    : corners(triangle), low(triangle[0]), high(triangle[0]) {
    for (const PlanePoint& corner : triangle) {
        for (std::size_t axis = 0; axis < 2; ++axis) {
            low[axis] = std::min(low[axis], corner[axis]);
            high[axis] = std::max(high[axis], corner[axis]);
        }
    }
}

bool BlockerTree::Wanted::IsApartFrom(const Node& node) const {
    for (std::size_t axis = 0; axis < 2; ++axis) {
        if (node.high[axis] < low[axis] || node.low[axis] > high[axis]) return true;
    }
    for (std::size_t i = 0; i < 3; ++i) {
        const PlanePoint& a = corners[i];
        const PlanePoint& b = corners[(i + 1) % 3];
        // The corner of the node's box that lies farthest to the left of the side.
        const PlanePoint far = {b[1] > a[1] ? node.low[0] : node.high[0],
                                b[0] > a[0] ? node.high[1] : node.low[1]};
        if (turn_of(a, b, far) < 0) return true;
    }
    return false;
}

}  // namespace zol::engine
