// Where GDAL says that a raster lies, as a lattice of nodes.
#pragma once

#include "engine/grid/lattice.h"
#include "engine/grid/raster_file.h"

namespace zol::engine::grid {

/// Nodes at the centres of the raster's cells. GDAL has brought rasters of points to the
/// same form, so nothing is shifted for them here. Without a geotransform, one that all
/// ground control points fit serves, or the coordinate variables of a netCDF file; with none
/// of these, nodes lie at whole numbers from 0, the raster's last row at y = 0, and
/// `is_placed` is false. Throws ReadError, also for a raster that is turned or sheared, or
/// whose netCDF coordinates are not evenly apart. Inside a GdalScope.
Lattice raster_lattice(const RasterFile& file, int band, bool& is_placed);

}  // namespace zol::engine::grid
