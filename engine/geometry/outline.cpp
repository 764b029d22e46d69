#include "engine/geometry/outline.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "engine/geometry/in_plane.h"
#include "engine/geometry/triangle_tree.h"

namespace zol::engine::geometry {

namespace {

/// The sides of an outline, numbered, each followed by one other.
class Loops {
public:
    Loops(std::span<const Point> points, std::span<OutlineSide> sides, const View& view) {
        const auto before = [](const OutlineSide& a, const OutlineSide& b) {
            return a.from < b.from;
        };
        std::sort(sides.begin(), sides.end(), before);
        starts_.reserve(sides.size());
        next_.reserve(sides.size());
        std::vector<bool> is_followed(sides.size(), false);
        for (const OutlineSide& side : sides) {
            const Point& start = points[static_cast<std::size_t>(side.from)];
            starts_.push_back({start[view.u], start[view.v], 0.0});
            const auto next =
                std::lower_bound(sides.begin(), sides.end(), OutlineSide{side.to, 0}, before);
            const auto number = static_cast<std::size_t>(next - sides.begin());
            // A point where the outline ends, or comes by twice.
            if (next == sides.end() || next->from != side.to || is_followed[number]) return;
            is_followed[number] = true;
            next_.push_back(number);
        }
    }

    /// False where the sides form no loops.
    bool AreLoops() const { return next_.size() == starts_.size(); }
    std::size_t Sides() const { return starts_.size(); }
    std::size_t Next(std::size_t side) const { return next_[side]; }
    const Point& Start(std::size_t side) const { return starts_[side]; }
    const Point& End(std::size_t side) const { return starts_[next_[side]]; }
    std::span<const Point> Starts() const { return starts_; }

    bool Meet(std::size_t one, std::size_t other) const {
        if (Next(one) == other && Next(other) == one) return true;
        if (Next(one) == other) return TurnsBack(one);
        if (Next(other) == one) return TurnsBack(other);
        return InPlane<0, 1>::SegmentsMeet(Start(one), End(one), Start(other), End(other));
    }

private:
    /// The next side lies on this one.
    bool TurnsBack(std::size_t side) const {
        const Point& before = Start(side);
        const Point& corner = End(side);
        const Point& behind = End(Next(side));
        if (orient2d<0, 1>(before, corner, behind) != 0) return false;
        return sign(before[0] - corner[0]) == sign(behind[0] - corner[0]) &&
               sign(before[1] - corner[1]) == sign(behind[1] - corner[1]);
    }

    std::vector<Point> starts_;
    std::vector<std::size_t> next_;
};

bool some_sides_meet(const Loops& loops) {
    // Triangles without area have the boxes of sides.
    std::vector<Triangle> sides(loops.Sides());
    for (std::size_t i = 0; i < sides.size(); ++i) {
        const auto next = static_cast<std::int32_t>(loops.Next(i));
        sides[i] = {static_cast<std::int32_t>(i), next, next};
    }
    const TriangleTree tree({loops.Starts(), sides}, TriangleTree::Bounds::Plan);
    return tree.AnyPair(
        [&](std::uint32_t one, std::uint32_t other) { return loops.Meet(one, other); });
}

/// The loop of each side, and the leftmost side of each loop, the lower one on a tie.
struct Numbered {
    explicit Numbered(const Loops& loops) : loop_of(loops.Sides(), kNone) {
        for (std::size_t first = 0; first < loops.Sides(); ++first) {
            if (loop_of[first] != kNone) continue;
            std::size_t leftmost = first;
            for (std::size_t side = first; loop_of[side] == kNone; side = loops.Next(side)) {
                loop_of[side] = leftmost_of.size();
                if (loops.Start(side) < loops.Start(leftmost)) leftmost = side;
            }
            leftmost_of.push_back(leftmost);
        }
    }

    static constexpr std::size_t kNone = ~std::size_t{0};

    std::vector<std::size_t> loop_of;
    std::vector<std::size_t> leftmost_of;
};

/// How often all loops but one wind round a point that lies on none of them.
int winding_of_others(const Loops& loops, const Numbered& numbered, std::size_t loop,
                      const Point& point) {
    int winding = 0;
    for (std::size_t side = 0; side < loops.Sides(); ++side) {
        if (numbered.loop_of[side] == loop) continue;
        const Point& a = loops.Start(side);
        const Point& b = loops.End(side);
        // Over the point, moved a little to the right.
        const bool runs_right = a[0] <= point[0] && point[0] < b[0];
        const bool runs_left = b[0] <= point[0] && point[0] < a[0];
        if (runs_right && orient2d<0, 1>(a, b, point) < 0) --winding;
        if (runs_left && orient2d<0, 1>(a, b, point) > 0) ++winding;
    }
    return winding;
}

}  // namespace

bool covers_once(std::span<const Point> points, std::span<OutlineSide> sides, const View& view,
                 std::size_t effort) {
    const Loops loops(points, sides, view);
    if (!loops.AreLoops()) return false;
    const Numbered numbered(loops);
    const std::size_t n_loops = numbered.leftmost_of.size();
    if (n_loops == 0 || n_loops > effort / loops.Sides() || some_sides_meet(loops)) return false;

    std::vector<std::size_t> before(loops.Sides());
    for (std::size_t side = 0; side < loops.Sides(); ++side) before[loops.Next(side)] = side;
    for (std::size_t loop = 0; loop < n_loops; ++loop) {
        const std::size_t leftmost = numbered.leftmost_of[loop];
        const Point& corner = loops.Start(leftmost);
        // To the left of the leftmost corner, or just under it, one is outside of the loop.
        const int outside = winding_of_others(loops, numbered, loop, corner);
        const bool runs_round =
            orient2d<0, 1>(loops.Start(before[leftmost]), corner, loops.End(leftmost)) > 0;
        // A loop that runs round the part has nothing of it outside; round a hole, all.
        if (outside != (runs_round ? 0 : 1)) return false;
    }
    return true;
}

}  // namespace zol::engine::geometry
