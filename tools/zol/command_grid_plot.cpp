// `zol grid plot`: a shaded relief of a grid, as a picture.

#include <cstdio>
#include <filesystem>

#include "tools/zol/exit_codes.h"
#include "tools/zol/grid_commands.h"
#include "tools/zol/grid_statistics.h"
#include "tools/zol/open_model.h"
#include "tools/zol/output_file.h"
#include "tools/zol/relief/map_scale.h"
#include "tools/zol/relief/picture.h"
#include "tools/zol/relief/thumbnail.h"

namespace zol::tool {

int run_grid_plot(const GridPlotRequest& request) {
    const auto grid = open_grid(request.file);
    OutputFile file(request.to, {request.file});

    PictureFacts facts;
    facts.title = std::filesystem::path(request.file).filename().string();
    facts.nodes = grid->Nodes();
    const MapScale scale = scale_for(grid->Nodes());
    ThumbnailMaker maker(grid->Nodes(), scale.columns_each, scale.rows_each);
    {
        ProgressBar progress(grid->Nodes().NNodes(), "nodes", ProgressBar::Meanwhile::Nothing);
        walk(*grid, progress, [&](const Run& run) {
            facts.statistics.Add(run.values);
            maker.Take(run);
        });
    }
    const Thumbnail surface = maker.Finish();
    if (!surface.HasValues()) {
        std::fprintf(stderr, "zol: no node of '%s' has a value to plot: %lld of %lld are masked.\n",
                     request.file.c_str(), facts.statistics.NMasked(), facts.statistics.NNodes());
        return kNotFound;
    }
    write_picture(surface, scale, facts, file.Stream());
    file.Finish();
    return kGood;
}

}  // namespace zol::tool
