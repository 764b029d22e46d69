#include "tools/zol/relief/thumbnail.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace zol::tool {

namespace {

bool is_missing(double value) {
    return std::isnan(value);
}

int parts(int whole, int each) {
    return whole / each + (whole % each > 0 ? 1 : 0);
}

}  // namespace

bool Thumbnail::HasValues() const {
    return !std::all_of(values.begin(), values.end(), is_missing);
}

bool Thumbnail::HasHoles() const {
    return std::any_of(values.begin(), values.end(), is_missing);
}

ThumbnailMaker::ThumbnailMaker(const Lattice& nodes, int columns_each, int rows_each)
    : nodes_(nodes) {
    Thumbnail& made = thumbnail_;
    made.width = parts(nodes.width, columns_each);
    made.height = parts(nodes.height, rows_each);
    made.dx = nodes.dx * columns_each;
    made.dy = nodes.dy * rows_each;
    made.west = nodes.first_x - nodes.dx / 2;
    made.north = nodes.last_y + nodes.dy / 2;
    made.columns_each = columns_each;
    made.rows_each = rows_each;
    const auto width = static_cast<std::size_t>(made.width);
    made.values.reserve(width * static_cast<std::size_t>(made.height));
    sums_.resize(width);
    counts_.resize(width);
}

void ThumbnailMaker::Take(const Run& run) {
    const int row = (nodes_.height - 1 - run.j) / thumbnail_.rows_each;
    if (row != row_) EndRow();
    row_ = row;
    // Divided before they are added, so that no sum overflows.
    const double share = 1.0 / thumbnail_.columns_each / thumbnail_.rows_each;
    int i = run.i;
    for (const double value : run.values) {
        const auto column = static_cast<std::size_t>(i++ / thumbnail_.columns_each);
        if (!std::isfinite(value)) continue;
        sums_[column] += value * share;
        ++counts_[column];
    }
}

void ThumbnailMaker::EndRow() {
    const double whole = static_cast<double>(thumbnail_.columns_each) * thumbnail_.rows_each;
    for (std::size_t column = 0; column < sums_.size(); ++column) {
        const double filled = static_cast<double>(counts_[column]) / whole;
        thumbnail_.values.push_back(filled > 0 ? sums_[column] / filled
                                               : std::numeric_limits<double>::quiet_NaN());
    }
    std::fill(sums_.begin(), sums_.end(), 0.0);
    std::fill(counts_.begin(), counts_.end(), 0LL);
}

Thumbnail ThumbnailMaker::Finish() {
    EndRow();
    return std::move(thumbnail_);
}

}  // namespace zol::tool
