// The commands of `zol grid`. Each writes its answer to `output`, which the caller
// flushes, or to the file asked for, and gives the exit code; what keeps it from an answer
// is thrown as one of the errors of exit_codes.h.
#pragma once

#include <optional>
#include <string>

#include "tools/zol/output.h"

namespace zol::tool {

struct GridInfoRequest {
    std::string file;
    /// Without a walk over the values.
    bool only_places = false;
    bool as_json = false;
};

struct GridAtRequest {
    std::string file;
    double x = 0;
    double y = 0;
    bool as_json = false;
};

struct GridExportRequest {
    std::string file;
    /// Standard output when there is none.
    std::optional<std::string> to;
    bool as_asc = false;
    /// Masked nodes too.
    bool all = false;
};

struct GridPlotRequest {
    std::string file;
    std::string to;
};

int run_grid_info(const GridInfoRequest& request, Output& output);
int run_grid_at(const GridAtRequest& request, Output& output);
int run_grid_export(const GridExportRequest& request, Output& output);
int run_grid_plot(const GridPlotRequest& request);

}  // namespace zol::tool
