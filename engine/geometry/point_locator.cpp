#include "engine/geometry/point_locator.h"

#include <algorithm>
#include <cstdlib>
#include <span>

#include "engine/geometry/orientation.h"

namespace zol::engine::geometry {

namespace {

/// Calls `ask` with the two axes of the plane that is looked at along `axis`.
template <class Ask>
auto along_axis(std::size_t axis, Ask ask) {
    switch (axis) {
        case 0:
            return ask.template operator()<1, 2>();
        case 1:
            return ask.template operator()<2, 0>();
        default:
            return ask.template operator()<0, 1>();
    }
}

void prefetch(const void* address) {
#if defined(__GNUC__)
    __builtin_prefetch(address);
#else
    static_cast<void>(address);
#endif
}

std::size_t chosen_axis(const TriangleSizes& sizes) {
    // On a tie the vertical, which is what a person would take.
    std::size_t chosen = 2;
    for (const std::size_t axis : {std::size_t{1}, std::size_t{0}}) {
        if (sizes.BoxesOnALine(axis) < sizes.BoxesOnALine(chosen)) chosen = axis;
    }
    return chosen;
}

}  // namespace

/// A triangle over a cell.
struct PointLocator::Entry {
    std::uint32_t triangle;
    std::uint16_t lower;
    std::uint16_t upper;
    std::uint16_t parts;
    /// Which way its picture turns if the middle of the cell lies in that, else 0.
    std::int8_t facing;
    /// The ray can only run along it: it parts a gap, but no point lies over it.
    bool stands;
};

PointLocator::PointLocator(const MeshView& mesh) : mesh_(mesh) {
    if (mesh_.triangles.empty()) {
        // No point is inside of this box.
        lower_.fill(1.0);
        return;
    }
    const TriangleSizes sizes(mesh_);
    lower_ = sizes.lower;
    upper_ = sizes.upper;
    axis_ = chosen_axis(sizes);
    grid_ = PictureGrid(sizes, axis_);
    levels_ = CellsOnAxis(lower_[axis_], upper_[axis_], double{kTopLevel} + 1);
    LargeVector<Entry> entries = PlaceTriangles();
    AddColumns(entries);
}

/// The entries of all cells, cell by cell; where each cell's end is left in its column.
LargeVector<PointLocator::Entry> PointLocator::PlaceTriangles() {
    columns_.resize(grid_.Cells() + 1);
    for (std::size_t t = 0; t < mesh_.triangles.size(); ++t) {
        grid_.ForEachCell(mesh_, t,
                          [this](const TouchedCell& cell) { ++columns_[cell.Number() + 1].first; });
    }
    for (std::size_t cell = 0; cell < grid_.Cells(); ++cell) {
        columns_[cell + 1].first += columns_[cell].first;
    }
    LargeVector<Entry> entries(columns_.back().first);
    // Each start walks to the next one while its cell fills.
    along_axis(axis_, [&]<std::size_t U, std::size_t V>() {
        for (std::size_t t = 0; t < mesh_.triangles.size(); ++t) {
            const Point& a = mesh_.Corner(t, 0);
            const Point& b = mesh_.Corner(t, 1);
            const Point& c = mesh_.Corner(t, 2);
            const auto [lowest, highest] = std::minmax({a[axis_], b[axis_], c[axis_]});
            const int turn = orient2d<U, V>(a, b, c);
            Entry entry{
                static_cast<std::uint32_t>(t), LevelOf(lowest), LevelOf(highest), 0, 0, turn == 0};
            grid_.ForEachCell(mesh_, t, [&](const TouchedCell& cell) {
                const TouchedCell::Middle middle = cell.GetMiddle();
                int facing = middle == TouchedCell::Middle::Inside ? turn : 0;
                if (middle == TouchedCell::Middle::Unsure) {
                    facing = facing_over<U, V>(a, b, c, grid_.MiddleOf(cell.Number()));
                }
                entry.facing = static_cast<std::int8_t>(facing);
                entry.parts = cell.Parts();
                entries[columns_[cell.Number()].first++] = entry;
            });
        }
    });
    return entries;
}

void PointLocator::AddColumns(LargeVector<Entry>& entries) {
    candidates_.reserve(entries.size());
    std::size_t begin = 0;
    for (std::size_t cell = 0; cell < grid_.Cells(); ++cell) {
        const std::size_t end = columns_[cell].first;
        columns_[cell] = MakeColumn(std::span(entries).subspan(begin, end - begin));
        begin = end;
    }
    columns_.back() = MakeColumn({});
}

/// The middle of the cell stands for all of it: each triangle over it counts for the gaps
/// below.
PointLocator::Column PointLocator::MakeColumn(std::span<Entry> entries) {
    Column column;
    column.first = static_cast<std::uint32_t>(candidates_.size());
    if (entries.empty()) return column;
    std::sort(entries.begin(), entries.end(),
              [](const Entry& a, const Entry& b) { return a.upper > b.upper; });
    column.highest = entries.front().upper;
    int winding = 0;
    // Levels are whole: between two that are next to each other is no gap.
    int widest = 1;
    for (const Entry& entry : entries) {
        // Here `lowest` is that of the triangles before this one.
        const int width = column.lowest - entry.upper;
        const auto n_above = candidates_.size() - column.first;
        const bool fits = winding == static_cast<std::int16_t>(winding) &&
                          n_above == static_cast<std::uint16_t>(n_above);
        if (&entry != &entries.front() && width > widest && fits) {
            widest = width;
            column.gap_upper = column.lowest;
            column.gap_lower = entry.upper;
            column.gap_winding = static_cast<std::int16_t>(winding);
            column.n_above = static_cast<std::uint16_t>(n_above);
        }
        column.lowest = std::min(column.lowest, entry.lower);
        winding += entry.facing;
        if (!entry.stands) {
            candidates_.push_back({mesh_.triangles[entry.triangle], entry.upper, entry.parts});
        }
    }
    return column;
}

/// Those of some candidates that a ray from the point meets, and the sheets that it is
/// known to meet already.
template <std::size_t U, std::size_t V>
PointLocator::Sheets PointLocator::Met(const Point& point, std::span<const Candidate> candidates,
                                       unsigned level, unsigned part, Sheets sheets) const {
    const auto point_at = [this](std::int32_t number) -> const Point& {
        return mesh_.points[static_cast<std::size_t>(number)];
    };
    // A few at a time, all their corners on the way before the first is looked at: what is
    // looked at then depends on where the point lies, which no processor foresees.
    constexpr std::size_t kAtATime = 16;
    while (!candidates.empty()) {
        const auto some = candidates.first(std::min(candidates.size(), kAtATime));
        candidates = candidates.subspan(some.size());
        std::array<const Triangle*, kAtATime> chosen;
        std::size_t number = 0;
        for (const Candidate& candidate : some) {
            chosen[number] = &candidate.corners;
            const bool may_be_over = (candidate.parts & part) != 0U;
            // Without a jump, which would be a guess.
            number += std::size_t{may_be_over} * std::size_t{candidate.upper >= level};
        }
        for (const Triangle* t : std::span(chosen).first(number)) {
            for (const std::int32_t corner : *t) prefetch(&point_at(corner));
        }
        for (const Triangle* t : std::span(chosen).first(number)) {
            const Point& a = point_at((*t)[0]);
            const Point& b = point_at((*t)[1]);
            const Point& c = point_at((*t)[2]);
            const int facing = facing_over<U, V>(a, b, c, point);
            if (facing == 0) continue;
            // The ray meets it if the point is behind the side that looks along the ray.
            if (orient3d_moved(a, b, c, point) == facing) continue;
            sheets.winding += facing;
            ++sheets.crossings;
        }
    }
    return sheets;
}

PointLocator::Sheets PointLocator::SheetsOver(const Point& point) const {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        // Not a number fails both.
        if (!(point[axis] >= lower_[axis] && point[axis] <= upper_[axis])) return {};
    }
    const PictureGrid::Place place = grid_.PlaceOf(point);
    const Column* const column = &columns_[place.cell];
    const unsigned level = LevelOf(point[axis_]);
    if (level < column->lowest || level > column->highest) return {};
    const bool is_below = level <= column->gap_lower;
    const bool is_above = !is_below && level >= column->gap_upper;
    const Sheets in_gap{column->gap_winding,
                        static_cast<unsigned>(std::abs(int{column->gap_winding}))};
    if (!is_below && !is_above) return in_gap;
    const std::uint32_t first_below = column->first + column->n_above;
    const std::uint32_t first = is_below ? first_below : column->first;
    const std::uint32_t end = is_below ? column[1].first : first_below;
    const auto candidates = std::span(candidates_).subspan(first, end - first);
    return along_axis(axis_, [&]<std::size_t U, std::size_t V>() {
        return Met<U, V>(point, candidates, level, place.part, is_below ? in_gap : Sheets{});
    });
}

}  // namespace zol::engine::geometry
