#include "engine/block/lattice.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "engine/formats/number_text.h"
#include "engine/formats/read_error.h"

namespace zol::engine::block {

namespace {

constexpr double kEqualWidths = 1e-9;
// So many steps of double from face to face keep rounded faces apart.
constexpr double kStepsInCell = 4.0;

}  // namespace

Axis Axis::Regular(double lower, double size, std::int64_t count) {
    if (count < 1) throw ReadError("an axis has no cells");
    Axis axis;
    axis.lower_ = lower;
    axis.size_ = size;
    axis.count_ = count;
    axis.minimum_size_ = size;
    axis.maximum_size_ = size;
    axis.CheckEnds();
    return axis;
}

Axis Axis::Tensor(std::vector<double> edges) {
    if (edges.size() < 2) throw ReadError("an axis has no cells");
    Axis axis;
    axis.count_ = static_cast<std::int64_t>(edges.size()) - 1;
    axis.edges_ = std::move(edges);
    axis.CheckEnds();
    axis.minimum_size_ = axis.edges_[1] - axis.edges_[0];
    for (std::size_t i = 1; i < axis.edges_.size(); ++i) {
        const double size = axis.edges_[i] - axis.edges_[i - 1];
        if (!(size > 0.0)) {
            throw ReadError("cell " + std::to_string(i - 1) + " of an axis has no width at " +
                            number_text(axis.edges_[i]));
        }
        axis.minimum_size_ = std::min(axis.minimum_size_, size);
        axis.maximum_size_ = std::max(axis.maximum_size_, size);
    }
    return axis;
}

Axis Axis::FromWidths(const std::vector<double>& widths) {
    double sum = 0.0;
    std::vector<double> edges{sum};
    edges.reserve(widths.size() + 1);
    for (const double width : widths) edges.push_back(sum += width);
    if (widths.empty()) throw ReadError("an axis has no cells");
    const auto [least, greatest] = std::minmax_element(widths.begin(), widths.end());
    const auto count = static_cast<std::int64_t>(widths.size());
    if (*least == *greatest) return Regular(0.0, *least, count);
    if (*greatest - *least <= kEqualWidths * *greatest) {
        return Regular(0.0, sum / static_cast<double>(count), count);
    }
    Axis axis = Tensor(std::move(edges));
    axis.minimum_size_ = *least;
    axis.maximum_size_ = *greatest;
    return axis;
}

void Axis::CheckEnds() const {
    const double first = Lower(0);
    const double last = Lower(count_);
    if (!std::isfinite(first) || !std::isfinite(last)) {
        throw ReadError("an axis does not end at a finite place");
    }
    // The faces of a regular axis are rounded most where they are farthest from 0.
    const double farthest = std::max(std::abs(first), std::abs(last));
    const double step = std::nextafter(farthest, 2 * farthest) - farthest;
    if (IsRegular() && !(size_ >= kStepsInCell * step && size_ > 0.0)) {
        throw ReadError("cells of size " + number_text(size_) + " are too small for an axis from " +
                        number_text(first) + " to " + number_text(last));
    }
}

double Axis::Lower(std::int64_t cell) const {
    if (!edges_.empty()) return edges_[static_cast<std::size_t>(cell)];
    return lower_ + size_ * static_cast<double>(cell);
}

std::int64_t Axis::CellOf(double x) const {
    if (!(x >= Lower(0) && x <= Lower(count_))) return -1;
    if (x >= Lower(count_ - 1)) return count_ - 1;
    if (!edges_.empty()) {
        return std::upper_bound(edges_.begin(), edges_.end(), x) - edges_.begin() - 1;
    }
    // Division may round across a face, so the faces themselves have the last word.
    const double last = static_cast<double>(count_ - 1);
    const auto guess = static_cast<std::int64_t>(std::clamp((x - lower_) / size_, 0.0, last));
    if (Lower(guess) <= x && x < Upper(guess)) return guess;
    std::int64_t from = 0;
    std::int64_t to = count_;
    while (to - from > 1) {
        const std::int64_t middle = from + (to - from) / 2;
        (Lower(middle) <= x ? from : to) = middle;
    }
    return from;
}

LatticeGeometry::LatticeGeometry(Axis x, Axis y, Axis z, const CellOrder& order)
    : axes_{std::move(x), std::move(y), std::move(z)},
      numbering_(order, {axes_[0].Count(), axes_[1].Count(), axes_[2].Count()}) {}

geometry::Extent LatticeGeometry::BlockExtent(std::int64_t block) {
    const auto [i, j, k] = numbering_.CellAt(block);
    return {axes_[0].Lower(i), axes_[1].Lower(j), axes_[2].Lower(k),
            axes_[0].Upper(i), axes_[1].Upper(j), axes_[2].Upper(k)};
}

std::int64_t LatticeGeometry::Find(const geometry::Coord3D& point) {
    const Cell cell{axes_[0].CellOf(point.x), axes_[1].CellOf(point.y), axes_[2].CellOf(point.z)};
    if (std::min({cell[0], cell[1], cell[2]}) < 0) return -1;
    return numbering_.OrdinalOf(cell);
}

SchemaFacts lattice_facts(const Axis& x, const Axis& y, const Axis& z) {
    SchemaFacts facts;
    facts.extent = {x.Lower(0),         y.Lower(0),         z.Lower(0),
                    x.Lower(x.Count()), y.Lower(y.Count()), z.Lower(z.Count())};
    facts.dimensions = {static_cast<std::int32_t>(x.Count()), static_cast<std::int32_t>(y.Count()),
                        static_cast<std::int32_t>(z.Count())};
    facts.minimum_size = {x.MinimumSize(), y.MinimumSize(), z.MinimumSize()};
    facts.maximum_size = {x.MaximumSize(), y.MaximumSize(), z.MaximumSize()};
    return facts;
}

}  // namespace zol::engine::block
