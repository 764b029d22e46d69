// The nodes of a grid: where they are, and values of some of them.
#pragma once

#include <span>

namespace zol::tool {

/// Where the nodes are. Indices count from the south-west node, i to the east and j to
/// the north.
struct Lattice {
    int width = 0;
    int height = 0;
    double first_x = 0;
    double first_y = 0;
    double last_x = 0;
    double last_y = 0;
    double dx = 1;
    double dy = 1;

    double X(int i) const { return first_x + i * dx; }
    double Y(int j) const { return first_y + j * dy; }
    long long NNodes() const { return static_cast<long long>(width) * height; }
};

struct NodeIndex {
    int i = 0;
    int j = 0;
};

/// Neighbours in a row, from node (i, j) to the east; NaN where one is masked.
struct Run {
    int i = 0;
    int j = 0;
    std::span<const double> values;
};

}  // namespace zol::tool
