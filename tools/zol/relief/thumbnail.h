// A grid brought down to what a picture can show, in one walk and in constant memory.
#pragma once

#include <vector>

#include "tools/zol/grid_nodes.h"

namespace zol::tool {

/// Cells from north to south, west to east. Each is the mean of the nodes in it that are
/// not masked, and NaN where there are none.
struct Thumbnail {
    int width = 0;
    int height = 0;
    /// Size of a cell.
    double dx = 1;
    double dy = 1;
    /// Outer edges.
    double west = 0;
    double north = 0;
    /// Nodes to a cell along each axis.
    int columns_each = 1;
    int rows_each = 1;
    std::vector<double> values;

    bool HasValues() const;
    bool HasHoles() const;
    double At(int column, int row) const {
        return values[static_cast<std::size_t>(row) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(column)];
    }
};

class ThumbnailMaker {
public:
    /// Cells of `columns_each` x `rows_each` nodes, counted from the north-west node.
    ThumbnailMaker(const Lattice& nodes, int columns_each, int rows_each);

    /// Takes runs in the order of `walk`. What is not finite counts as masked.
    void Take(const Run& run);
    Thumbnail Finish();

private:
    void EndRow();

    Lattice nodes_;
    Thumbnail thumbnail_;
    int row_ = 0;
    std::vector<double> sums_;
    std::vector<long long> counts_;
};

}  // namespace zol::tool
