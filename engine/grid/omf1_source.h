// Grids from the grid surfaces of OMF 1 files.
#pragma once

#include <memory>
#include <string>

#include "engine/formats/file.h"
#include "engine/grid/source.h"

namespace zol::engine::grid {

/// Opens the first grid surface of a file, or the first of the name when `element_name` is
/// not empty; the value of a node is its height. Throws ReadError, also for a surface that
/// does not lie level along x and y, or whose nodes are not evenly apart; the error for a
/// name that is no grid surface lists the elements that exist.
Source open_omf1(const std::shared_ptr<const File>& file, const std::string& element_name);

}  // namespace zol::engine::grid
