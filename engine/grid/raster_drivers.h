// The formats of rasters that are read, as GDAL knows them.
#pragma once

namespace zol::engine::grid {

/// Makes the formats known to GDAL, if they are not yet, and gives their names with a
/// null at the end: no other format of the host program's is tried. Inside a GdalScope.
const char* const* raster_drivers();

}  // namespace zol::engine::grid
