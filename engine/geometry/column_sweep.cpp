#include "engine/geometry/column_sweep.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

#include "engine/geometry/orientation.h"
#include "engine/geometry/vector.h"

namespace zol::engine::geometry {

namespace {

/// The height of a triangle's plane over a point of the plan, and how far off it may be.
class PlaneHeight {
public:
    PlaneHeight(const Point& a, const Point& b, const Point& c) : a_(a) {
        const Vector u = minus(b, a);
        const Vector v = minus(c, a);
        normal_ = cross(u, v);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const std::size_t next = (axis + 1) % 3;
            const std::size_t last = (axis + 2) % 3;
            sizes_[axis] = std::fabs(u[next] * v[last]) + std::fabs(u[last] * v[next]);
        }
    }

    struct Value {
        double height;
        /// Infinite where the plane is too steep to tell.
        double error;
    };

    Value Over(double x, double y) const {
        constexpr double kInfinity = std::numeric_limits<double>::infinity();
        // Roundings counted generously: each product of differences is good to 8 units, each
        // product with it to 16.
        constexpr double kUnits = 16.0 * kRoundoff;
        const double dx = x - a_[0];
        const double dy = y - a_[1];
        const double steepness = std::fabs(normal_[2]);
        if (!(steepness > 4.0 * kUnits * sizes_[2])) return {a_[2], kInfinity};
        const double rise = -(normal_[0] * dx + normal_[1] * dy) / normal_[2];
        const double of_rise =
            (sizes_[0] * std::fabs(dx) + sizes_[1] * std::fabs(dy) + sizes_[2] * std::fabs(rise)) *
            (4.0 * kUnits) / steepness;
        const double of_sum = kUnits * (std::fabs(a_[2]) + std::fabs(rise));
        return {a_[2] + rise, of_rise + of_sum};
    }

private:
    Point a_;
    Vector normal_{};
    std::array<double, 3> sizes_{};
};

/// The crossings of one triangle.
class TriangleSweep {
public:
    TriangleSweep(const Point& a, const Point& b, const Point& c, const PointGrid& grid,
                  std::vector<Crossing>& crossings)
        : a_(a), b_(b), c_(c), grid_(grid), crossings_(crossings) {}

    /// Over the lines whose numbers along x and y lie in these ranges, ends excluded.
    void Run(std::size_t first_x, std::size_t end_x, std::size_t first_y, std::size_t end_y) {
        constexpr std::size_t kFew = 8;
        const bool few = (end_x - first_x) * (end_y - first_y) <= kFew;
        for (std::size_t j = first_y; j < end_y; ++j) {
            const auto [from, to] = few ? std::pair(first_x, end_x) : LinesInRow(j, first_x, end_x);
            for (std::size_t i = from; i < to; ++i) Cross(i, j);
        }
    }

private:
    void Cross(std::size_t i, std::size_t j) {
        const Point at{grid_.x[i], grid_.y[j], 0.0};
        const int facing = facing_over<0, 1>(a_, b_, c_, at);
        if (facing == 0) return;
        const std::size_t layer = FirstAbove(at, facing);
        if (layer == 0) return;
        crossings_.push_back({static_cast<std::uint32_t>(j * grid_.x.Count() + i),
                              static_cast<std::uint32_t>(layer), facing});
    }

    /// The first layer above the plane: by its height in doubles, and by exact orientation
    /// for the points, if any, that are closer than that is good for.
    std::size_t FirstAbove(Point at, int facing) {
        const Ticks& z = grid_.z;
        if (!plane_) plane_.emplace(a_, b_, c_);
        const double lowest = std::min(a_[2], std::min(b_[2], c_[2]));
        const double highest = std::max(a_[2], std::max(b_[2], c_[2]));
        const PlaneHeight::Value plane = plane_->Over(at[0], at[1]);
        // Written for errors that are infinite or not a number, too.
        const double below = plane.height - plane.error;
        const double above = plane.height + plane.error;
        const double from = below > lowest ? below : lowest;
        const double to = above < highest ? above : highest;
        std::size_t first = z.NotBelow(from);
        if (first == z.Count() || z[first] > to) return first;
        std::size_t end = z.Above(to);
        while (first < end) {
            const std::size_t middle = first + (end - first) / 2;
            at[2] = z[middle];
            if (orient3d_moved(a_, b_, c_, at) == facing) {
                end = middle;
            } else {
                first = middle + 1;
            }
        }
        return first;
    }

    /// The lines of a row that may cross the triangle: what its edges leave between them at
    /// that y, a little to the outside.
    std::pair<std::size_t, std::size_t> LinesInRow(std::size_t j, std::size_t first_x,
                                                   std::size_t end_x) const {
        const double y = grid_.y[j];
        double least = std::numeric_limits<double>::infinity();
        double greatest = -least;
        const std::array<const Point*, 4> corners{&a_, &b_, &c_, &a_};
        for (std::size_t i = 0; i < 3; ++i) {
            const Point& from = *corners[i];
            const Point& to = *corners[i + 1];
            if (y < std::min(from[1], to[1]) || y > std::max(from[1], to[1])) continue;
            const double margin = 1e-15 * (std::fabs(from[0]) + std::fabs(to[0]));
            const auto [left, right] = std::minmax(from[0], to[0]);
            double low = left;
            double high = right;
            if (from[1] != to[1]) {
                low = from[0] + (y - from[1]) / (to[1] - from[1]) * (to[0] - from[0]);
                high = low;
            }
            least = std::min(least, low - margin);
            greatest = std::max(greatest, high + margin);
        }
        return {std::max(first_x, grid_.x.NotBelow(least)),
                std::min(end_x, grid_.x.Above(greatest))};
    }

    const Point& a_;
    const Point& b_;
    const Point& c_;
    const PointGrid& grid_;
    std::vector<Crossing>& crossings_;
    /// Most triangles are crossed by no line, and need none.
    std::optional<PlaneHeight> plane_;
};

/// The ticks from the least coordinate to the greatest, that one excluded: a line there
/// counts as moved beyond it.
std::pair<std::size_t, std::size_t> ticks_within(const Ticks& ticks, double a, double b, double c) {
    const double least = std::min(a, std::min(b, c));
    const double greatest = std::max(a, std::max(b, c));
    const std::size_t first = ticks.NotBelow(least);
    if (first == ticks.Count() || ticks[first] >= greatest) return {first, first};
    // Most triangles are smaller than a step.
    if (first + 1 == ticks.Count() || ticks[first + 1] >= greatest) return {first, first + 1};
    return {first, ticks.NotBelow(greatest)};
}

}  // namespace

bool add_crossings(const MeshView& mesh, const PointGrid& grid, std::size_t most,
                   std::vector<Crossing>& crossings) {
    if (grid.Columns() == 0 || grid.z.Count() == 0) return true;
    const double bottom = grid.z[0];
    for (const Triangle& triangle : mesh.triangles) {
        const Point& a = mesh.points[static_cast<std::size_t>(triangle[0])];
        const Point& b = mesh.points[static_cast<std::size_t>(triangle[1])];
        const Point& c = mesh.points[static_cast<std::size_t>(triangle[2])];
        const auto [first_x, end_x] = ticks_within(grid.x, a[0], b[0], c[0]);
        if (first_x == end_x) continue;
        const auto [first_y, end_y] = ticks_within(grid.y, a[1], b[1], c[1]);
        if (first_y == end_y || (a[2] < bottom && b[2] < bottom && c[2] < bottom)) continue;
        TriangleSweep(a, b, c, grid, crossings).Run(first_x, end_x, first_y, end_y);
        if (crossings.size() > most) return false;
    }
    return true;
}

}  // namespace zol::engine::geometry
