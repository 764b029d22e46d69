// How large a grid is drawn, and how many nodes a cell of the picture stands for.
#pragma once

#include "tools/zol/grid_nodes.h"

namespace zol::tool {

struct MapScale {
    /// Nodes to a cell.
    int columns_each = 1;
    int rows_each = 1;
    /// Pixels to a cell: whole ones where the shape of the cells lets them be.
    double cell_width = 1;
    double cell_height = 1;
    /// Whether a unit of the ground is as long to the north as to the east. A strip that
    /// would be too thin to see is widened instead.
    bool is_equal = true;
};

/// Small grids are blown up and large ones reduced, so that the longer side has some
/// hundred pixels and never more than 1300.
MapScale scale_for(const Lattice& nodes);

}  // namespace zol::tool
