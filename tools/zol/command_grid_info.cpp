// `zol grid info`: where a grid lies, and what its values are like.

#include <optional>

#include "tools/zol/exit_codes.h"
#include "tools/zol/grid_commands.h"
#include "tools/zol/grid_statistics.h"
#include "tools/zol/grid_text.h"
#include "tools/zol/layout.h"
#include "tools/zol/number_text.h"
#include "tools/zol/open_model.h"

namespace zol::tool {

namespace {

GridStatistics statistics_of(const Grid& grid) {
    GridStatistics statistics;
    ProgressBar progress(grid.Nodes().NNodes(), "nodes", ProgressBar::Meanwhile::Nothing);
    walk(grid, progress, [&](const Run& run) { statistics.Add(run.values); });
    return statistics;
}

std::string values_text(const GridStatistics& statistics) {
    if (!statistics.HasValues()) return "none: every node is masked";
    std::string text(number_text(statistics.Minimum()));
    text += " to ";
    text += number_text(statistics.Maximum());
    text += ", mean ";
    text += computed_text(statistics.Mean());
    return text;
}

void write_fact(Output& output, const char* label, const std::string& text) {
    constexpr std::size_t kLabelWidth = 12;
    write_line(output, padded(label, kLabelWidth) + text);
}

void write_place(const GridInfoRequest& request, const Lattice& nodes, Output& output) {
    write_fact(output, "Grid", request.file);
    write_fact(
        output, "Nodes",
        std::to_string(nodes.width) + " x " + std::to_string(nodes.height) + " (east x north)");
    write_fact(output, "Extent", extent_text(nodes));
    write_fact(output, "Spacing", pair_text(nodes.dx, nodes.dy));
}

void write_values(const GridStatistics& statistics, Output& output) {
    write_fact(output, "Masked",
               std::to_string(statistics.NMasked()) + " of " + std::to_string(statistics.NNodes()) +
                   " nodes");
    write_fact(output, "Values", values_text(statistics));
}

void write_json(const GridInfoRequest& request, const Lattice& nodes,
                const std::optional<GridStatistics>& statistics, Output& output) {
    JsonWriter json(output);
    json.BeginObject();
    json.Key("name");
    json.Text(request.file);
    json.Key("nodes");
    json.BeginList(JsonWriter::Layout::Flat);
    json.Whole(nodes.width);
    json.Whole(nodes.height);
    json.EndList();
    json.Key("extent");
    write_extent(json, nodes);
    json.Key("spacing");
    write_pair(json, nodes.dx, nodes.dy);
    if (statistics) {
        json.Key("masked");
        json.Whole(statistics->NMasked());
        json.Key("minimum");
        json.Number(statistics->Minimum());
        json.Key("maximum");
        json.Number(statistics->Maximum());
        json.Key("mean");
        json.Number(statistics->Mean());
    }
    json.EndObject();
}

}  // namespace

int run_grid_info(const GridInfoRequest& request, Output& output) {
    const auto grid = open_grid(request.file);
    if (request.as_json) {
        std::optional<GridStatistics> statistics;
        if (!request.only_places) statistics = statistics_of(*grid);
        write_json(request, grid->Nodes(), statistics, output);
        return kGood;
    }
    write_place(request, grid->Nodes(), output);
    if (!request.only_places) {
        // Ahead of the walk, which a damaged block ends without any values.
        output.Flush();
        write_values(statistics_of(*grid), output);
    }
    return kGood;
}

}  // namespace zol::tool
