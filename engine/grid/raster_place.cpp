#include "engine/grid/raster_place.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <string_view>
#include <system_error>

#include "engine/formats/number_text.h"
#include "engine/formats/read_error.h"

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

/// The two numbers of "{-15,15}".
bool read_range(const char* text, double& from, double& to) {
    if (text == nullptr) {
        return false;
    }
    const std::string_view range(text);
    const std::size_t comma = range.find(',');
    if (!range.starts_with('{') || !range.ends_with('}') || comma == range.npos) {
        return false;
    }
    const char* const middle = range.data() + comma;
    const char* const end = range.data() + range.size() - 1;
    const auto first = std::from_chars(range.data() + 1, middle, from);
    const auto second = std::from_chars(middle + 1, end, to);
    return first.ec == std::errc() && first.ptr == middle && second.ec == std::errc() &&
           second.ptr == end;
}

/// netCDF grids of the GMT tools: their axes are called x and y and state their ranges, but
/// say nothing else by which GDAL would know them for axes. It has turned their first row,
/// the southern one, to be the last.
bool from_axis_ranges(GDALDatasetH dataset, int columns, int rows, GeoTransform& g) {
    double west = 0.0;
    double east = 0.0;
    double south = 0.0;
    double north = 0.0;
    if (!read_range(GDALGetMetadataItem(dataset, "x#actual_range", nullptr), west, east) ||
        !read_range(GDALGetMetadataItem(dataset, "y#actual_range", nullptr), south, north)) {
        return false;
    }
    // The ranges are of nodes, or of the outer edges of cells.
    const char* const offset = GDALGetMetadataItem(dataset, "NC_GLOBAL#node_offset", nullptr);
    const bool edges = offset != nullptr && std::string_view(offset) == "1";
    if (!(west < east) || !(south < north) || (!edges && (columns < 2 || rows < 2))) {
        return false;
    }
    const double along_x = (east - west) / (edges ? columns : columns - 1);
    const double along_y = (north - south) / (edges ? rows : rows - 1);
    const double outward = edges ? 0.0 : kHalfCell;
    g = {west - outward * along_x, along_x, 0.0, north + outward * along_y, 0.0, -along_y};
    return true;
}

}  // namespace

Lattice raster_lattice(GDALDatasetH dataset, bool& is_placed) {
    const int columns = GDALGetRasterXSize(dataset);
    const int rows = GDALGetRasterYSize(dataset);
    GeoTransform g{};
    is_placed = GDALGetGeoTransform(dataset, g.data()) == CE_None ||
                from_control_points(dataset, g) || from_axis_ranges(dataset, columns, rows, g);
    if (!is_placed) {
        return {Axis::FromSteps(0.0, 0.0, 1.0, columns),
                Axis::FromSteps(rows - 1, 0.0, -1.0, rows)};
    }
    refuse_turned(g);
    return {Axis::FromSteps(g[0], kHalfCell, g[1], columns),
            Axis::FromSteps(g[3], kHalfCell, g[5], rows)};
}

}  // namespace zol::engine::grid
