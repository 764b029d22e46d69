// A grid of cells over the pictures that triangles make in the plane of two axes.
//
// It only finds what may lie in a cell, always too much rather than too little: a cell is
// taken to be a millionth larger than it is, which exceeds every rounding error in placing
// a point, since no cell is smaller than a billionth of its coordinates.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "engine/geometry/mesh_view.h"

namespace zol::engine::geometry {

/// The box around the corners of all triangles, and how large the triangles are in it.
struct TriangleSizes {
    explicit TriangleSizes(const MeshView& mesh);

    double Length(std::size_t axis) const { return upper[axis] - lower[axis]; }
    /// Into how many boxes of triangles a line along the axis runs, on average.
    double BoxesOnALine(std::size_t axis) const;

    Point lower;
    Point upper;
    double triangles;
    /// Summed over the boxes of all triangles: their lengths, and their areas as seen along
    /// each axis.
    std::array<double, 3> lengths{};
    std::array<double, 3> areas{};
};

/// Cells along one axis of the plane. Their numbers rise with the coordinate and never
/// fall.
class CellsOnAxis {
public:
    CellsOnAxis() = default;
    /// One cell where there is no room for more.
    CellsOnAxis(double lower, double upper, double wanted);

    std::int64_t Number() const { return number_; }
    /// In cells from the lower end.
    double Place(double coordinate) const { return (coordinate - lower_) * a_unit_; }
    std::int64_t Of(double coordinate) const { return PartOf<1>(coordinate); }
    /// Counts parts of cells, of which each has the same number.
    template <int Parts>
    std::int64_t PartOf(double coordinate) const {
        return static_cast<std::int64_t>(
            std::clamp(Place(coordinate) * Parts, 0.0, static_cast<double>(number_ * Parts - 1)));
    }
    /// A coordinate well inside the cell.
    double Middle(std::int64_t cell) const {
        return lower_ + (static_cast<double>(cell) + 0.5) * width_;
    }

private:
    double lower_ = 0.0;
    double width_ = 0.0;
    double a_unit_ = 0.0;
    std::int64_t number_ = 1;
};

/// How far to the left of an edge of a picture the middle of a cell lies, times the length
/// of the edge. Distances are in cells.
class EdgeOfPicture {
public:
    EdgeOfPicture(double from_u, double from_v, double to_u, double to_v, double noise)
        : du_(to_u - from_u),
          dv_(to_v - from_v),
          at_origin_(dv_ * (from_u - 0.5) - du_ * (from_v - 0.5)),
          reach_(std::fabs(du_) + std::fabs(dv_)),
          unsure_(kMargin * reach_ + noise) {}

    double LeftOf(double cell_u, double cell_v) const {
        return at_origin_ + du_ * cell_v - dv_ * cell_u;
    }
    bool IsUnsure(double left) const { return std::fabs(left) <= unsure_; }
    /// How far to the right the middle of a square of that side may lie, while it reaches
    /// over the edge.
    double Across(double side) const { return 0.5 * side * reach_ + unsure_; }
    /// What a step of one cell adds.
    double StepU() const { return -dv_; }
    double StepV() const { return du_; }

private:
    static constexpr double kMargin = 1e-6;

    double du_;
    double dv_;
    double at_origin_;
    double reach_;
    double unsure_;
};

/// A cell that the picture of a triangle may touch.
class TouchedCell {
public:
    /// `left` is that of the middle, for each edge.
    TouchedCell(std::size_t number, const std::array<EdgeOfPicture, 3>& edges,
                const std::array<double, 3>& left)
        : number_(number), edges_(&edges), left_(left) {}

    std::size_t Number() const { return number_; }

    /// Whether the middle of the cell lies in the picture.
    enum class Middle : std::uint8_t { Outside, Inside, Unsure };
    Middle GetMiddle() const {
        bool inside = true;
        for (std::size_t i = 0; i < 3; ++i) {
            if ((*edges_)[i].IsUnsure(left_[i])) return Middle::Unsure;
            inside = inside && left_[i] > 0.0;
        }
        return inside ? Middle::Inside : Middle::Outside;
    }

    /// A bit for each of the 4 x 4 parts of the cell that the picture may touch, counted as
    /// PictureGrid::PartOf does.
    std::uint16_t Parts() const;

private:
    std::size_t number_;
    const std::array<EdgeOfPicture, 3>* edges_;
    std::array<double, 3> left_;
};

class PictureGrid {
public:
    PictureGrid() = default;
    /// Over the plane that is looked at along `axis`, in about square cells: about as many
    /// as there are triangles, fewer where these are long and would stand in too many.
    PictureGrid(const TriangleSizes& sizes, std::size_t axis);

    /// The axes of the plane, in cyclic order behind the one that it is looked at along.
    std::size_t U() const { return u_; }
    std::size_t V() const { return v_; }

    std::size_t Cells() const {
        return static_cast<std::size_t>(along_u_.Number() * along_v_.Number());
    }
    /// Where a point of the plane lies.
    struct Place {
        std::size_t cell;
        /// The bit of the part of the cell.
        std::uint16_t part;
    };
    Place PlaceOf(const Point& point) const {
        const std::int64_t u = along_u_.PartOf<4>(point[u_]);
        const std::int64_t v = along_v_.PartOf<4>(point[v_]);
        return {static_cast<std::size_t>((v >> 2) * along_u_.Number() + (u >> 2)),
                static_cast<std::uint16_t>(1U << ((v & 3) * 4 + (u & 3)))};
    }

    /// Calls `visit` with each cell that the picture of the triangle may touch.
    template <class Visit>
    void ForEachCell(const MeshView& mesh, std::size_t triangle, Visit visit) const;

    /// A point over the middle of a cell.
    Point MiddleOf(std::size_t cell) const {
        const auto row = static_cast<std::int64_t>(cell) / along_u_.Number();
        Point middle{};
        middle[u_] = along_u_.Middle(static_cast<std::int64_t>(cell) - row * along_u_.Number());
        middle[v_] = along_v_.Middle(row);
        return middle;
    }

private:
    std::size_t u_ = 0;
    std::size_t v_ = 1;
    CellsOnAxis along_u_;
    CellsOnAxis along_v_;
    /// What placing a corner may be wrong by, in cells and for each cell of distance.
    double noise_ = 0.0;
};

template <class Visit>
void PictureGrid::ForEachCell(const MeshView& mesh, std::size_t triangle, Visit visit) const {
    const Point& a = mesh.Corner(triangle, 0);
    const Point& b = mesh.Corner(triangle, 1);
    const Point& c = mesh.Corner(triangle, 2);
    const auto [lower_u, upper_u] = std::minmax({a[u_], b[u_], c[u_]});
    const auto [lower_v, upper_v] = std::minmax({a[v_], b[v_], c[v_]});
    const std::int64_t first_u = along_u_.Of(lower_u);
    const std::int64_t last_u = along_u_.Of(upper_u);
    const std::int64_t first_v = along_v_.Of(lower_v);
    const std::int64_t last_v = along_v_.Of(upper_v);

    // Against the first cell, so that numbers are as small as the triangle is.
    const auto place_u = [&](const Point& p) {
        return along_u_.Place(p[u_]) - static_cast<double>(first_u);
    };
    const auto place_v = [&](const Point& p) {
        return along_v_.Place(p[v_]) - static_cast<double>(first_v);
    };
    const double au = place_u(a);
    const double av = place_v(a);
    double bu = place_u(b);
    double bv = place_v(b);
    double cu = place_u(c);
    double cv = place_v(c);
    const double noise = noise_ * static_cast<double>(last_u - first_u + last_v - first_v + 2);
    // Counter-clockwise. Of a picture so thin that this is not sure, no edge is either.
    if ((bu - au) * (cv - av) < (bv - av) * (cu - au)) {
        std::swap(bu, cu);
        std::swap(bv, cv);
    }
    const std::array<EdgeOfPicture, 3> edges = {EdgeOfPicture(au, av, bu, bv, noise),
                                                EdgeOfPicture(bu, bv, cu, cv, noise),
                                                EdgeOfPicture(cu, cv, au, av, noise)};
    const std::array<double, 3> across = {edges[0].Across(1.0), edges[1].Across(1.0),
                                          edges[2].Across(1.0)};
    for (std::int64_t v = first_v; v <= last_v; ++v) {
        for (std::int64_t u = first_u; u <= last_u; ++u) {
            const auto cell_u = static_cast<double>(u - first_u);
            const auto cell_v = static_cast<double>(v - first_v);
            const std::array<double, 3> left = {edges[0].LeftOf(cell_u, cell_v),
                                                edges[1].LeftOf(cell_u, cell_v),
                                                edges[2].LeftOf(cell_u, cell_v)};
            if (left[0] < -across[0] || left[1] < -across[1] || left[2] < -across[2]) continue;
            visit(TouchedCell(static_cast<std::size_t>(v * along_u_.Number() + u), edges, left));
        }
    }
}

}  // namespace zol::engine::geometry
