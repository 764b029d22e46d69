// Grids as text files, written as they are read.
#pragma once

#include "tools/zol/grid.h"
#include "tools/zol/output.h"

namespace zol::tool {

/// Rows i,j,x,y,z from the north, west to east; z is the value. Masked nodes are left out,
/// or have an empty z where `with_masked` asks for them.
void write_csv(const Grid& grid, bool with_masked, ProgressBar& progress, Output& output);

/// An ESRI ASCII grid with xllcenter and yllcenter. Where the cells are not square it has
/// dx and dy in the place of cellsize. Its NODATA_value is below all values of the grid,
/// for which the grid is walked twice: `progress` counts each node two times.
void write_asc(const Grid& grid, ProgressBar& progress, Output& output);

}  // namespace zol::tool
