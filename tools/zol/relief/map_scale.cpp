#include "tools/zol/relief/map_scale.h"

#include <algorithm>
#include <cmath>

namespace zol::tool {

namespace {

constexpr double kLongestSide = 1300;
// Beyond this a blown-up picture is only larger, not clearer.
constexpr double kLongestBlownUp = 900;
constexpr double kLargestCell = 100;
constexpr double kThinnestSide = 24;

/// How many nodes have to share a cell that is at least one pixel wide.
int nodes_to_a_pixel(double pixels_each) {
    // What a scale has by rounding must not double the nodes.
    return std::max(1, static_cast<int>(std::ceil(1 / pixels_each - 1e-9)));
}

double whole_pixels(double size) {
    return size >= 1 ? std::floor(size) : size;
}

}  // namespace

MapScale scale_for(const Lattice& nodes) {
    // Pixels for the distance between nodes, at the largest size of the map.
    const double wide = nodes.width * nodes.dx;
    const double high = nodes.height * nodes.dy;
    const double scale = kLongestSide / std::max(wide, high);
    double pixels_east = nodes.dx * scale;
    double pixels_north = nodes.dy * scale;

    MapScale result;
    result.columns_each = nodes_to_a_pixel(pixels_east);
    result.rows_each = nodes_to_a_pixel(pixels_north);
    if (result.columns_each == 1 && result.rows_each == 1) {
        const double less = std::min(kLongestBlownUp / kLongestSide,
                                     kLargestCell / std::max(pixels_east, pixels_north));
        // Never below one pixel for a node: averaging starts where a node has less.
        const double least = std::min(1.0, 1 / std::min(pixels_east, pixels_north));
        pixels_east *= std::max(less, least);
        pixels_north *= std::max(less, least);
    }
    const double stretch_east = std::max(1.0, kThinnestSide / (nodes.width * pixels_east));
    const double stretch_north = std::max(1.0, kThinnestSide / (nodes.height * pixels_north));
    result.is_equal = stretch_east == 1 && stretch_north == 1;
    pixels_east *= stretch_east;
    pixels_north *= stretch_north;
    if (!result.is_equal) {
        result.columns_each = nodes_to_a_pixel(pixels_east);
        result.rows_each = nodes_to_a_pixel(pixels_north);
    }

    result.cell_width = pixels_east * result.columns_each;
    result.cell_height = pixels_north * result.rows_each;
    if (result.is_equal) {
        const double smaller = std::min(result.cell_width, result.cell_height);
        const double trim = whole_pixels(smaller) / smaller;
        result.cell_width *= trim;
        result.cell_height *= trim;
    } else {
        result.cell_width = whole_pixels(result.cell_width);
        result.cell_height = whole_pixels(result.cell_height);
    }
    return result;
}

}  // namespace zol::tool
