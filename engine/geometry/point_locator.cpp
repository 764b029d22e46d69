#include "engine/geometry/point_locator.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "engine/geometry/orientation.h"

namespace zol::engine::geometry {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr float kInfinityF = std::numeric_limits<float>::infinity();

// So many triangles a cell on average: fewer cells make longer lists, more cells only
// more memory.
constexpr double kTrianglesACell = 1.0;

// A triangle that is longer than a cell stands in several; coarser cells are taken until
// all lists together are no longer than this.
constexpr double kEntriesATriangle = 8.0;

struct Interval {
    double lower;
    double upper;
};

Interval interval_of(const MeshView& mesh, std::size_t triangle, std::size_t axis) {
    const auto [lower, upper] =
        std::minmax({mesh.Corner(triangle, 0)[axis], mesh.Corner(triangle, 1)[axis],
                     mesh.Corner(triangle, 2)[axis]});
    return {lower, upper};
}

}  // namespace

std::int64_t PointLocator::Cells::Of(double coordinate) const {
    const double cell = (coordinate - lower) * a_unit;
    return static_cast<std::int64_t>(std::clamp(cell, 0.0, static_cast<double>(number - 1)));
}

// What is added to a cell, in cells, exceeds every rounding error in placing it.
constexpr double kMargin = 1e-6;

double PointLocator::Cells::Start(std::int64_t cell) const {
    return a_unit > 0.0 ? lower + (static_cast<double>(cell) - kMargin) / a_unit : -kInfinity;
}

double PointLocator::Cells::End(std::int64_t cell) const {
    return a_unit > 0.0 ? lower + (static_cast<double>(cell + 1) + kMargin) / a_unit : kInfinity;
}

PointLocator::PointLocator(const MeshView& mesh) : mesh_(mesh) {
    if (mesh_.triangles.empty()) return;
    lower_.fill(kInfinity);
    upper_.fill(-kInfinity);
    for (std::size_t t = 0; t < mesh_.triangles.size(); ++t) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const Interval interval = interval_of(mesh_, t, axis);
            lower_[axis] = std::min(lower_[axis], interval.lower);
            upper_[axis] = std::max(upper_[axis], interval.upper);
        }
    }
    ChooseAxis();
    LayOutCells();
    FillCells();
}

/// Along the axis on which a ray at a random place has the fewest boxes over and under it.
void PointLocator::ChooseAxis() {
    std::array<double, 3> boxes_on_a_ray{};
    for (std::size_t t = 0; t < mesh_.triangles.size(); ++t) {
        std::array<double, 3> part{};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const Interval interval = interval_of(mesh_, t, axis);
            const double length = upper_[axis] - lower_[axis];
            part[axis] = length > 0.0 ? (interval.upper - interval.lower) / length : 1.0;
        }
        for (std::size_t axis = 0; axis < 3; ++axis) {
            boxes_on_a_ray[axis] += part[(axis + 1) % 3] * part[(axis + 2) % 3];
        }
    }
    // On a tie the vertical, which is what a person would take.
    axis_ = 2;
    for (const std::size_t axis : {std::size_t{1}, std::size_t{0}}) {
        if (boxes_on_a_ray[axis] < boxes_on_a_ray[axis_]) axis_ = axis;
    }
    u_ = (axis_ + 1) % 3;
    v_ = (axis_ + 2) % 3;
}

/// About square cells, as many as lists of the wanted length ask for.
void PointLocator::LayOutCells() {
    const double length_u = upper_[u_] - lower_[u_];
    const double length_v = upper_[v_] - lower_[v_];
    const auto triangles = static_cast<double>(mesh_.triangles.size());
    const auto lay_out = [](double lower, double length, double wanted) {
        Cells cells;
        cells.lower = lower;
        cells.number = static_cast<std::int64_t>(std::clamp(wanted, 1.0, 1e8));
        cells.a_unit = length > 0.0 ? static_cast<double>(cells.number) / length : 0.0;
        // One cell for a mesh without extent on this axis, and for lengths at the ends of
        // the range of doubles.
        if (!(cells.a_unit > 0.0) || !std::isfinite(cells.a_unit)) cells = Cells{lower, 0.0, 1};
        return cells;
    };
    double cells = triangles / kTrianglesACell;
    while (true) {
        const double side = std::sqrt(length_u / cells * length_v);
        const double wanted_u = side > 0.0 ? length_u / side : cells;
        const double wanted_v = side > 0.0 ? length_v / side : cells;
        cells_u_ = lay_out(lower_[u_], length_u, std::min(wanted_u, cells));
        cells_v_ = lay_out(lower_[v_], length_v, std::min(wanted_v, cells));
        double entries = 0.0;
        for (std::size_t t = 0; t < mesh_.triangles.size(); ++t) {
            const CellRange range = RangeOf(t);
            entries += static_cast<double>(range.last_u - range.first_u + 1) *
                       static_cast<double>(range.last_v - range.first_v + 1);
        }
        if (entries <= kEntriesATriangle * triangles || cells <= 1.0) return;
        cells /= 2.0;
    }
}

PointLocator::CellRange PointLocator::RangeOf(std::size_t triangle) const {
    const Interval u = interval_of(mesh_, triangle, u_);
    const Interval v = interval_of(mesh_, triangle, v_);
    return {cells_u_.Of(u.lower), cells_u_.Of(u.upper), cells_v_.Of(v.lower), cells_v_.Of(v.upper)};
}

namespace {

/// The picture of a triangle in the plane, counter-clockwise.
class Picture {
public:
    Picture(const MeshView& mesh, std::size_t triangle, std::size_t u, std::size_t v) {
        for (std::size_t i = 0; i < 3; ++i) {
            const Point& corner = mesh.Corner(triangle, i);
            corners_[i] = {corner[u], corner[v]};
        }
        turn_ = orient2d(corners_[0].u, corners_[0].v, corners_[1].u, corners_[1].v, corners_[2].u,
                         corners_[2].v);
        if (turn_ < 0) std::swap(corners_[1], corners_[2]);
    }

    /// True for a triangle that the ray can only run along: no moved point lies over it.
    bool IsEmpty() const { return turn_ == 0; }

    /// False only where an edge has all of the box on its outer side.
    bool MayTouch(double u0, double u1, double v0, double v1) const {
        for (std::size_t i = 0; i < 3; ++i) {
            const Corner& from = corners_[i];
            const Corner& to = corners_[(i + 1) % 3];
            const double du = to.u - from.u;
            const double dv = to.v - from.v;
            // The corner of the box that is farthest to the left of the edge.
            const double left = du * ((du > 0.0 ? v1 : v0) - from.v);
            const double right = dv * ((dv > 0.0 ? u0 : u1) - from.u);
            if (left - right < -1e-12 * (std::fabs(left) + std::fabs(right))) return false;
        }
        return true;
    }

private:
    struct Corner {
        double u;
        double v;
    };

    std::array<Corner, 3> corners_{};
    int turn_;
};

}  // namespace

template <class Visit>
void PointLocator::ForEachEntry(Visit visit) const {
    for (std::size_t t = 0; t < mesh_.triangles.size(); ++t) {
        const Picture picture(mesh_, t, u_, v_);
        if (picture.IsEmpty()) continue;
        const CellRange range = RangeOf(t);
        const bool is_in_one = range.first_u == range.last_u && range.first_v == range.last_v;
        for (std::int64_t v = range.first_v; v <= range.last_v; ++v) {
            for (std::int64_t u = range.first_u; u <= range.last_u; ++u) {
                if (is_in_one || picture.MayTouch(cells_u_.Start(u), cells_u_.End(u),
                                                  cells_v_.Start(v), cells_v_.End(v))) {
                    visit(static_cast<std::size_t>(v * cells_u_.number + u), t);
                }
            }
        }
    }
}

void PointLocator::FillCells() {
    starts_.assign(static_cast<std::size_t>(cells_u_.number * cells_v_.number) + 1, 0);
    ForEachEntry([this](std::size_t cell, std::size_t) { ++starts_[cell]; });
    // Each start first is the end of its cell, and walks back while the cell fills.
    std::uint32_t end = 0;
    for (std::uint32_t& start : starts_) start = end += start;
    entries_.resize(end);
    ForEachEntry([this](std::size_t cell, std::size_t t) {
        const double top = interval_of(mesh_, t, axis_).upper - lower_[axis_];
        entries_[--starts_[cell]] = {static_cast<std::uint32_t>(t),
                                     std::nextafter(static_cast<float>(top), kInfinityF)};
    });
}

namespace {

/// Which way the picture of a triangle turns that the moved point lies over; 0 where it
/// lies over none of it.
template <std::size_t U, std::size_t V>
int facing_over(const Point& a, const Point& b, const Point& c, const Point& p) {
    // The three sides at one go, as their signs are as good as random to the processor.
    const double au = a[U] - p[U];
    const double av = a[V] - p[V];
    const double bu = b[U] - p[U];
    const double bv = b[V] - p[V];
    const double cu = c[U] - p[U];
    const double cv = c[V] - p[V];
    const PlaneDeterminant ab(au, av, bu, bv);
    const PlaneDeterminant bc(bu, bv, cu, cv);
    const PlaneDeterminant ca(cu, cv, au, av);
    if (ab.IsCertain() & bc.IsCertain() & ca.IsCertain()) {
        const int turns =
            (ab.IsPositive() ? 1 : 0) + (bc.IsPositive() ? 1 : 0) + (ca.IsPositive() ? 1 : 0);
        return turns == 3 ? 1 : turns == 0 ? -1 : 0;
    }
    const int facing = orient2d_moved<U, V>(a, b, p);
    const bool is_over =
        orient2d_moved<U, V>(b, c, p) == facing && orient2d_moved<U, V>(c, a, p) == facing;
    return is_over ? facing : 0;
}

}  // namespace

template <std::size_t U, std::size_t V>
PointLocator::Sheets PointLocator::SheetsAlong(const Point& point) const {
    Sheets sheets;
    const auto cell =
        static_cast<std::size_t>(cells_v_.Of(point[V]) * cells_u_.number + cells_u_.Of(point[U]));
    constexpr std::size_t kAlong = 3 - U - V;
    const float height =
        std::nextafter(static_cast<float>(point[kAlong] - lower_[kAlong]), -kInfinityF);
    for (std::uint32_t i = starts_[cell]; i < starts_[cell + 1]; ++i) {
        if (entries_[i].top < height) continue;
        const Triangle& corners = mesh_.triangles[entries_[i].triangle];
        const Point& a = mesh_.points[static_cast<std::size_t>(corners[0])];
        const Point& b = mesh_.points[static_cast<std::size_t>(corners[1])];
        const Point& c = mesh_.points[static_cast<std::size_t>(corners[2])];
        const int facing = facing_over<U, V>(a, b, c, point);
        if (facing == 0) continue;
        // The ray meets the triangle if the point is behind the side that looks along it.
        if (orient3d_moved(a, b, c, point) == facing) continue;
        sheets.winding += facing;
        ++sheets.crossings;
    }
    return sheets;
}

PointLocator::Sheets PointLocator::SheetsOver(const Point& point) const {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        // Not a number fails both.
        if (!(point[axis] >= lower_[axis] && point[axis] <= upper_[axis])) return {};
    }
    if (entries_.empty()) return {};
    switch (axis_) {
        case 0:
            return SheetsAlong<1, 2>(point);
        case 1:
            return SheetsAlong<2, 0>(point);
        default:
            return SheetsAlong<0, 1>(point);
    }
}

}  // namespace zol::engine::geometry
