// Where the coordinate variables of a netCDF file put its nodes. GDAL looks at those only
// that a convention marks as coordinates, and lets them be uneven by a tenth of a step.
#pragma once

#include <optional>
#include <string>

#include "engine/grid/raster_file.h"

namespace zol::engine::grid {

/// The coordinate of the first of an axis' nodes, in the order of the file, and how far on
/// each further one is; 0 for a single node.
struct NodeSteps {
    double first = 0.0;
    double step = 0.0;
};

struct NetcdfAxes {
    NodeSteps x;
    NodeSteps y;
};

/// The axes of a band's variable: the last of its dimensions is x, the one ahead of it y.
/// Nothing when one of them has no coordinates. Throws ReadError when coordinates are not
/// evenly apart, or x runs north.
std::optional<NetcdfAxes> netcdf_axes(const RasterFile& file, int band);

/// Of a file in which GDAL finds no band: throws ReadError when it is a netCDF file that would
/// have one if one of its dimensions had a length.
void refuse_netcdf_without_records(const std::string& path, GdalScope::Network network);

}  // namespace zol::engine::grid
