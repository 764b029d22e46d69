#include <algorithm>
#include <cmath>
#include <string>

#include "tools/zol/exit_codes.h"
#include "tools/zol/grid_statistics.h"
#include "tools/zol/grid_writers.h"
#include "tools/zol/number_text.h"

namespace zol::tool {

namespace {

/// Whether one cell size serves both axes: told by the farthest node, which may move by
/// a millionth of a cell.
bool is_square(const Lattice& nodes) {
    const double apart = std::abs(nodes.dx - nodes.dy);
    return apart * std::max(nodes.width, nodes.height) <= 1e-6 * nodes.dx;
}

/// -9999, or with as many nines as put it below `minimum`. Compared as floats, since
/// most programs read these files into floats.
double nodata_below(double minimum) {
    double nodata = -9999;
    while (static_cast<float>(nodata) >= static_cast<float>(minimum)) {
        nodata = nodata * 10 - 9;
        if (nodata < -1e30) {
            throw UsageError("the values go down to " + std::string(number_text(minimum)) +
                             ", which leaves no room for a NODATA_value in ESRI ASCII. "
                             "--format csv can hold them.");
        }
    }
    return nodata;
}

void write_header(const Lattice& nodes, double nodata, Output& output) {
    const auto write_fact = [&](std::string_view name, std::string_view text) {
        output.Write(name);
        output.Write(' ');
        output.Write(text);
        output.Write('\n');
    };
    write_fact("ncols", std::to_string(nodes.width));
    write_fact("nrows", std::to_string(nodes.height));
    write_fact("xllcenter", number_text(nodes.first_x));
    write_fact("yllcenter", number_text(nodes.first_y));
    if (is_square(nodes)) {
        write_fact("cellsize", number_text(nodes.dx));
    } else {
        write_fact("dx", number_text(nodes.dx));
        write_fact("dy", number_text(nodes.dy));
    }
    write_fact("NODATA_value", number_text(nodata));
}

}  // namespace

void write_asc(const Grid& grid, ProgressBar& progress, Output& output) {
    GridStatistics statistics;
    walk(grid, progress, [&](const Run& run) { statistics.Add(run.values); });
    const double nodata = nodata_below(statistics.HasValues() ? statistics.Minimum() : 0);

    write_header(grid.Nodes(), nodata, output);
    const int width = grid.Nodes().width;
    walk(grid, progress, [&](const Run& run) {
        int i = run.i;
        for (const double value : run.values) {
            output.Write(number_text(std::isnan(value) ? nodata : value));
            output.Write(++i == width ? '\n' : ' ');
        }
    });
}

}  // namespace zol::tool
