// What every reader of grids produces, and what a grid answers from.
#pragma once

#include <memory>
#include <string>

#include "engine/grid/lattice.h"
#include "engine/grid/node_reader.h"

namespace zol::engine::grid {

/// An opened grid: its lattice is known, its nodes are not read yet.
struct Source {
    Lattice lattice;
    std::unique_ptr<NodeReader> nodes;
};

/// Opens a grid file: recognises it by content and picks the band or the element that the
/// name carries after its last '#', when no file has the whole name. Throws ReadError with
/// the reason when there is no grid in it, and nothing else but std::bad_alloc.
Source open_source(const std::string& name);

}  // namespace zol::engine::grid
