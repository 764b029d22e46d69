#include "engine/grid/raster_place.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>

#include "engine/formats/number_text.h"
#include "engine/formats/read_error.h"
#include "engine/grid/netcdf_axes.h"

namespace zol::engine::grid {

namespace {

/// x = g[0] + column g[1] + row g[2], y = g[3] + column g[4] + row g[5], with (0, 0) the
/// outer corner of the first cell.
using GeoTransform = std::array<double, 6>;

// Less than this part of a cell a cell is rounding.
constexpr double kMostTurn = 1e-10;

// To the centre of the first cell.
constexpr double kHalfCell = 0.5;

std::string text_of(const GeoTransform& g) {
    std::string text;
    for (const double number : g) {
        text += (text.empty() ? "" : ", ") + number_text(number);
    }
    return text;
}

void refuse_turned(const GeoTransform& g) {
    const double across = std::max(std::fabs(g[1]), std::fabs(g[5]));
    const double turn = std::max(std::fabs(g[2]), std::fabs(g[4]));
    // Written so that NaN passes: the axes refuse it.
    if (!(turn > kMostTurn * across)) {
        return;
    }
    const bool quarter = across <= kMostTurn * turn;
    throw ReadError((quarter ? "its rows run north and its columns east"
                             : "it is rotated or sheared, so its nodes are no lattice along x and "
                               "y; resample it first") +
                    std::string(" (geotransform ") + text_of(g) + ")");
}

bool from_control_points(GDALDatasetH dataset, GeoTransform& g) {
    const int count = GDALGetGCPCount(dataset);
    return count > 0 &&
           GDALGCPsToGeoTransform(count, GDALGetGCPs(dataset), g.data(), FALSE) != FALSE;
}

/// Of one node the spacing is not known: that of the other axis serves, or 1.
double spacing_beside(double step, double other) {
    return step != 0.0 ? step : (other != 0.0 ? std::fabs(other) : 1.0);
}

/// Of axes that no convention marks, GDAL takes the first row for the southern one, and
/// turns it to be the last.
Lattice lattice_of_axes(const NetcdfAxes& axes, int columns, int rows) {
    const double along_x = spacing_beside(axes.x.step, axes.y.step);
    const double along_y = spacing_beside(axes.y.step, axes.x.step);
    return {Axis::FromSteps(axes.x.first, 0.0, along_x, columns),
            Axis::FromSteps(axes.y.first, 1.0 - rows, -along_y, rows)};
}

}  // namespace

Lattice raster_lattice(const RasterFile& file, int band, bool& is_placed) {
    GDALDatasetH dataset = file.Dataset();
    const int columns = GDALGetRasterXSize(dataset);
    const int rows = GDALGetRasterYSize(dataset);
    // Looked at also where GDAL has used them: for their being even.
    std::optional<NetcdfAxes> axes;
    if (file.DriverName() == "netCDF") {
        axes = netcdf_axes(file, band);
    }
    GeoTransform g{};
    is_placed =
        GDALGetGeoTransform(dataset, g.data()) == CE_None || from_control_points(dataset, g);
    if (is_placed) {
        refuse_turned(g);
        return {Axis::FromSteps(g[0], kHalfCell, g[1], columns),
                Axis::FromSteps(g[3], kHalfCell, g[5], rows)};
    }
    if (axes) {
        is_placed = true;
        return lattice_of_axes(*axes, columns, rows);
    }
    return {Axis::FromSteps(0.0, 0.0, 1.0, columns), Axis::FromSteps(rows - 1, 0.0, -1.0, rows)};
}

}  // namespace zol::engine::grid
