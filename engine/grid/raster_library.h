// The library that reads rasters, loaded with the first raster that is opened.
//
// GDAL and what it stands on are more than a hundred libraries, which a program that only
// reads other data should neither load nor wait for.
#pragma once

#include "engine/grid/raster_source.h"

namespace zol::engine::grid {

/// Throws ReadError when the library is not there or can't be loaded.
const RasterReader& raster_reader();

}  // namespace zol::engine::grid
