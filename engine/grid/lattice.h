// Where the nodes of a grid lie.
#pragma once

#include <cstdint>

namespace zol::engine::grid {

/// Nodes along one axis, evenly apart.
struct Axis {
    std::int32_t count = 1;
    /// Coordinates of the two extreme nodes.
    double lower = 0.0;
    double upper = 0.0;
    double spacing = 1.0;
    /// True when the file has the node of greatest coordinate first.
    bool turned = false;

    /// `count` nodes, the file's first at `start` + `offset` * `step` and each further one
    /// `step` on; a negative step goes down. Both ends are reckoned from `start`, so that
    /// no error adds up. Throws ReadError when no such nodes can be told apart in doubles.
    static Axis FromSteps(double start, double offset, double step, std::int32_t count);
};

struct Lattice {
    Axis x;
    Axis y;
};

}  // namespace zol::engine::grid
