#include <cmath>

#include "tools/zol/grid_writers.h"
#include "tools/zol/number_text.h"

namespace zol::tool {

void write_csv(const Grid& grid, bool with_masked, ProgressBar& progress, Output& output) {
    const Lattice& nodes = grid.Nodes();
    // Named so that readers of lists of nodes, this library among them, find the place in x
    // and y and the value in z, and do not take the indices for it.
    output.Write("i,j,x,y,z\n");
    walk(grid, progress, [&](const Run& run) {
        const NumberText y = coordinate_text(nodes.Y(run.j));
        int i = run.i;
        for (const double value : run.values) {
            const int column = i++;
            const bool is_masked = std::isnan(value);
            if (is_masked && !with_masked) continue;
            output.Write(whole_text(column));
            output.Write(',');
            output.Write(whole_text(run.j));
            output.Write(',');
            output.Write(coordinate_text(nodes.X(column)));
            output.Write(',');
            output.Write(y);
            output.Write(',');
            if (!is_masked) output.Write(number_text(value));
            output.Write('\n');
        }
    });
}

}  // namespace zol::tool
