#include "engine/geometry/picture_grid.h"

#include <limits>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zol::engine::geometry {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Fewer cells make longer lists, more cells only more memory.
constexpr double kTrianglesACell = 3.0;

// A triangle that is longer than a cell stands in several; coarser cells are taken until
// all lists together are expected to be no longer than this.
constexpr double kEntriesATriangle = 8.0;
// They are counted in 32 bits, and may be four times as many as expected.
constexpr double kMostEntries = 1e9;

constexpr double kMostCellsOnAxis = 1e8;
/// Of its coordinates, a cell is no smaller part.
constexpr double kLeastCell = 0x1p-30;

#if defined(__SSE2__)

/// Four values, the first in the lowest bit, as one sign each.
class Four {
public:
    Four(double first, double step)
        : values_(_mm_add_ps(_mm_set1_ps(static_cast<float>(first)),
                             _mm_mul_ps(_mm_set1_ps(static_cast<float>(step)),
                                        _mm_set_ps(3.0F, 2.0F, 1.0F, 0.0F)))) {}

    void Add(double number) {
        values_ = _mm_add_ps(values_, _mm_set1_ps(static_cast<float>(number)));
    }
    /// A bit for each place at which none of three is below 0.
    static unsigned NoneBelow(const std::array<Four, 3>& of) {
        const __m128 least = _mm_min_ps(of[0].values_, _mm_min_ps(of[1].values_, of[2].values_));
        return static_cast<unsigned>(_mm_movemask_ps(_mm_cmpge_ps(least, _mm_setzero_ps())));
    }

private:
    __m128 values_;
};

#else

class Four {
public:
    Four(double first, double step) {
        for (std::size_t i = 0; i < 4; ++i) {
            values_[i] =
                static_cast<float>(first) + static_cast<float>(step) * static_cast<float>(i);
        }
    }

    void Add(double number) {
        for (float& value : values_) value += static_cast<float>(number);
    }
    static unsigned NoneBelow(const std::array<Four, 3>& of) {
        unsigned bits = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            const float least =
                std::min(of[0].values_[i], std::min(of[1].values_[i], of[2].values_[i]));
            bits |= least >= 0.0F ? 1U << i : 0U;
        }
        return bits;
    }

private:
    std::array<float, 4> values_{};
};

#endif

/// How far beyond an edge the middles of the lowest row of parts still touch.
Four lowest_row(const EdgeOfPicture& edge, double left) {
    constexpr double kToFirst = -1.5 / 4;
    return {left + kToFirst * (edge.StepU() + edge.StepV()) + edge.Across(1.0 / 4),
            edge.StepU() / 4};
}

}  // namespace

// Floats do: they are wrong by parts of the numbers in them, which are of the size of the
// edge where that is near, and its margin is many of these parts.
std::uint16_t TouchedCell::Parts() const {
    std::array<Four, 3> rows = {lowest_row((*edges_)[0], left_[0]),
                                lowest_row((*edges_)[1], left_[1]),
                                lowest_row((*edges_)[2], left_[2])};
    unsigned bits = 0;
    for (unsigned row = 0; row < 4; ++row) {
        bits |= Four::NoneBelow(rows) << (4 * row);
        for (std::size_t i = 0; i < 3; ++i) rows[i].Add((*edges_)[i].StepV() / 4);
    }
    return static_cast<std::uint16_t>(bits);
}

TriangleSizes::TriangleSizes(const MeshView& mesh)
    : triangles(static_cast<double>(mesh.triangles.size())) {
    lower.fill(kInfinity);
    upper.fill(-kInfinity);
    for (std::size_t t = 0; t < mesh.triangles.size(); ++t) {
        std::array<double, 3> length{};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const auto [least, greatest] = std::minmax(
                {mesh.Corner(t, 0)[axis], mesh.Corner(t, 1)[axis], mesh.Corner(t, 2)[axis]});
            lower[axis] = std::min(lower[axis], least);
            upper[axis] = std::max(upper[axis], greatest);
            length[axis] = greatest - least;
            lengths[axis] += length[axis];
        }
        for (std::size_t axis = 0; axis < 3; ++axis) {
            areas[axis] += length[(axis + 1) % 3] * length[(axis + 2) % 3];
        }
    }
}

double TriangleSizes::BoxesOnALine(std::size_t axis) const {
    const std::size_t u = (axis + 1) % 3;
    const std::size_t v = (axis + 2) % 3;
    // A mesh that is flat has all of its boxes at one place of that axis.
    if (!(Length(u) > 0.0)) return Length(v) > 0.0 ? lengths[v] / Length(v) : triangles;
    if (!(Length(v) > 0.0)) return lengths[u] / Length(u);
    return areas[axis] / Length(u) / Length(v);
}

CellsOnAxis::CellsOnAxis(double lower, double upper, double wanted) : lower_(lower) {
    const double length = upper - lower;
    const double finest = std::max(std::fabs(lower), std::fabs(upper)) * kLeastCell;
    const double most = std::min(kMostCellsOnAxis, length / finest);
    // Not a number, where all coordinates are 0, compares false.
    const double number = most >= 1.0 ? std::floor(std::clamp(wanted, 1.0, most)) : 1.0;
    const double a_unit = number / length;
    // Lengths at the ends of the range of doubles.
    if (!(length > 0.0) || !std::isfinite(length) || !std::isfinite(a_unit) || !(a_unit > 0.0)) {
        return;
    }
    number_ = static_cast<std::int64_t>(number);
    a_unit_ = a_unit;
    width_ = length / number;
}

PictureGrid::PictureGrid(const TriangleSizes& sizes, std::size_t axis)
    : u_((axis + 1) % 3), v_((axis + 2) % 3) {
    const double length_u = sizes.Length(u_);
    const double length_v = sizes.Length(v_);
    double cells = std::max(1.0, sizes.triangles / kTrianglesACell);
    while (true) {
        const double side = std::sqrt(length_u / cells * length_v);
        const double wanted_u = side > 0.0 ? length_u / side : cells;
        const double wanted_v = side > 0.0 ? length_v / side : cells;
        along_u_ = CellsOnAxis(sizes.lower[u_], sizes.upper[u_], std::min(wanted_u, cells));
        along_v_ = CellsOnAxis(sizes.lower[v_], sizes.upper[v_], std::min(wanted_v, cells));
        // A box of m by n cells meets (m + 1) (n + 1) of them on average.
        const auto u = static_cast<double>(along_u_.Number());
        const auto v = static_cast<double>(along_v_.Number());
        const double lengths_u = length_u > 0.0 ? sizes.lengths[u_] / length_u * u : 0.0;
        const double lengths_v = length_v > 0.0 ? sizes.lengths[v_] / length_v * v : 0.0;
        const double areas = length_u > 0.0 && length_v > 0.0
                                 ? sizes.areas[axis] / length_u * u / length_v * v
                                 : 0.0;
        const double entries = areas + lengths_u + lengths_v + sizes.triangles;
        if (cells <= 1.0 ||
            entries <= std::min(kEntriesATriangle * sizes.triangles, kMostEntries)) {
            break;
        }
        cells = std::max(1.0, cells / 2.0);
    }
    // A coordinate against the lower end, times the cells a unit, is wrong by a few last
    // places of the number of cells.
    noise_ = 0x1p-48 * static_cast<double>(along_u_.Number() + along_v_.Number());
}

}  // namespace zol::engine::geometry
