// A point among the nodes of a grid: the nearest node, and the nodes around it with what
// each has in a bilinear value.
#pragma once

#include <optional>

#include "tools/zol/grid_nodes.h"

namespace zol::tool {

/// A point in spacings from the south-west node.
struct GridPlace {
    double u = 0;
    double v = 0;
};

/// Where a point lies; nothing for one outside the extent. A point nearer to a node's line
/// than a millionth of the spacing counts as on it, since coordinates are rounded in
/// files and by hand.
std::optional<GridPlace> place_of(const Lattice& nodes, double x, double y);

/// Of nodes equally near, the eastern and the northern one.
NodeIndex nearest_node(const GridPlace& place);

/// The nodes around a point. On a line between nodes the far side is the near one, so
/// that a node without weight is never asked for.
struct GridSquare {
    NodeIndex south_west;
    NodeIndex north_east;
    /// Parts of the way to the east and to the north, from 0 to below 1.
    double east = 0;
    double north = 0;
};

GridSquare square_around(const GridPlace& place);

struct CornerValues {
    double south_west = 0;
    double south_east = 0;
    double north_west = 0;
    double north_east = 0;
};

double bilinear(const GridSquare& square, const CornerValues& values);

}  // namespace zol::tool
