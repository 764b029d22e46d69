#include "engine/block/cell_window.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace zol::engine::block {

namespace {

// Of these a sweep holds a few numbers each.
constexpr std::int64_t kMostColumns = std::int64_t{1} << 20;
constexpr std::int64_t kMostLayers = std::int64_t{1} << 22;
// Crossings and pieces that are usual for as many blocks: some 40 MB while they are sorted.
constexpr std::size_t kUsual = std::size_t{1} << 19;

double centre(const Axis& axis, std::int64_t cell) {
    return axis.Lower(cell) + (axis.Upper(cell) - axis.Lower(cell)) / 2;
}

/// The first cell of an axis for which `is_so` holds, as it does for all behind it.
template <class IsSo>
std::int64_t first_cell(const Axis& axis, IsSo is_so) {
    std::int64_t first = 0;
    std::int64_t end = axis.Count();
    while (first < end) {
        const std::int64_t middle = first + (end - first) / 2;
        if (is_so(middle)) {
            end = middle;
        } else {
            first = middle + 1;
        }
    }
    return first;
}

geometry::Ticks centres(const Axis& axis, std::int64_t first, std::int64_t end) {
    std::vector<double> at;
    at.reserve(static_cast<std::size_t>(end - first));
    for (std::int64_t cell = first; cell < end; ++cell) at.push_back(centre(axis, cell));
    return geometry::Ticks(std::move(at));
}

geometry::Ticks walls(const Axis& axis, std::int64_t first, std::int64_t end, double least,
                      double greatest) {
    std::vector<double> at;
    at.reserve(static_cast<std::size_t>(end - first) + 1);
    for (std::int64_t cell = first; cell <= end; ++cell) at.push_back(axis.Lower(cell));
    at.front() = std::max(at.front(), least);
    at.back() = std::min(at.back(), greatest);
    return geometry::Ticks(std::move(at));
}

}  // namespace

CellRange CellRange::And(const CellRange& other) const {
    CellRange both{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        both.first[axis] = std::max(first[axis], other.first[axis]);
        both.end[axis] = std::min(end[axis], other.end[axis]);
    }
    return both;
}

CellRange cells_within_limits(const MatchRegion& region, const Axes& axes) {
    CellRange range{};
    for (std::size_t i = 0; i < 3; ++i) {
        const Axis& axis = axes[i];
        const double lower = region.Limits().lower[i];
        const double upper = region.Limits().upper[i];
        if (region.IsExact()) {
            range.first[i] =
                first_cell(axis, [&](std::int64_t cell) { return axis.Upper(cell) > lower; });
            range.end[i] =
                first_cell(axis, [&](std::int64_t cell) { return axis.Lower(cell) >= upper; });
        } else {
            range.first[i] =
                first_cell(axis, [&](std::int64_t cell) { return centre(axis, cell) >= lower; });
            range.end[i] =
                first_cell(axis, [&](std::int64_t cell) { return centre(axis, cell) >= upper; });
        }
    }
    return range;
}

bool CellWindow::MayHold(const Cell& counts) {
    return counts[0] <= kMostColumns && counts[1] <= kMostColumns / counts[0] &&
           counts[2] <= kMostLayers;
}

std::optional<CellWindow> CellWindow::Over(const MatchRegion& region, const Axes& axes,
                                           const CellRange& range, std::size_t most) {
    const geometry::Selection& meshes = region.Meshes();
    const std::size_t limit =
        most < std::numeric_limits<std::uint32_t>::max() / kUsual
            ? most * kUsual
            : static_cast<std::size_t>(std::numeric_limits<std::uint32_t>::max());
    const auto from = [&](std::size_t i) { return range.first[i]; };
    const auto to = [&](std::size_t i) { return range.end[i]; };
    std::optional<geometry::ColumnStretches> columns;
    if (region.IsExact()) {
        const auto walls_of = [&](std::size_t i) {
            return walls(axes[i], from(i), to(i), region.Limits().lower[i],
                         region.Limits().upper[i]);
        };
        columns =
            geometry::select_by_volume(meshes, {walls_of(0), walls_of(1), walls_of(2)}, limit);
    } else {
        const auto centres_of = [&](std::size_t i) { return centres(axes[i], from(i), to(i)); };
        columns = geometry::select_by_centres(meshes, {centres_of(0), centres_of(1), centres_of(2)},
                                              4 * limit);
    }
    if (!columns) return std::nullopt;
    return CellWindow(range, std::move(*columns));
}

}  // namespace zol::engine::block
