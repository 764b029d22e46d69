#include "tools/zol/grid_sample.h"

#include <cmath>

namespace zol::tool {

namespace {

constexpr double kOnLine = 1e-6;

std::optional<double> along(double first, double spacing, int count, double coordinate) {
    double place = (coordinate - first) / spacing;
    const double line = std::round(place);
    if (std::abs(place - line) <= kOnLine) place = line;
    if (!(place >= 0 && place <= count - 1)) return std::nullopt;
    return place;
}

}  // namespace

std::optional<GridPlace> place_of(const Lattice& nodes, double x, double y) {
    const auto u = along(nodes.first_x, nodes.dx, nodes.width, x);
    const auto v = along(nodes.first_y, nodes.dy, nodes.height, y);
    if (!u || !v) return std::nullopt;
    return GridPlace{*u, *v};
}

NodeIndex nearest_node(const GridPlace& place) {
    return {static_cast<int>(std::floor(place.u + 0.5)),
            static_cast<int>(std::floor(place.v + 0.5))};
}

GridSquare square_around(const GridPlace& place) {
    GridSquare square;
    square.south_west = {static_cast<int>(place.u), static_cast<int>(place.v)};
    square.east = place.u - square.south_west.i;
    square.north = place.v - square.south_west.j;
    square.north_east = {square.south_west.i + (square.east > 0 ? 1 : 0),
                         square.south_west.j + (square.north > 0 ? 1 : 0)};
    return square;
}

double bilinear(const GridSquare& square, const CornerValues& values) {
    // lerp is exact at its ends and between equal values, which a sum of weights is not.
    return std::lerp(std::lerp(values.south_west, values.south_east, square.east),
                     std::lerp(values.north_west, values.north_east, square.east), square.north);
}

}  // namespace zol::tool
