// `zol grid export`: all nodes of a grid, to a file or to standard output.

#include "tools/zol/exit_codes.h"
#include "tools/zol/grid_commands.h"
#include "tools/zol/grid_writers.h"
#include "tools/zol/open_model.h"
#include "tools/zol/output_file.h"

namespace zol::tool {

namespace {

void write_grid(const Grid& grid, const GridExportRequest& request, Output& output) {
    const int n_walks = request.as_asc ? 2 : 1;
    ProgressBar progress(n_walks * grid.Nodes().NNodes(), "nodes", meanwhile_of(request.to));
    if (request.as_asc) {
        write_asc(grid, progress, output);
    } else {
        write_csv(grid, request.all, progress, output);
    }
}

}  // namespace

int run_grid_export(const GridExportRequest& request, Output& output) {
    const auto grid = open_grid(request.file);
    write_to(request.to, {request.file}, output,
             [&](Output& stream) { write_grid(*grid, request, stream); });
    return kGood;
}

}  // namespace zol::tool
