// `zol grid info`: where a grid lies, and what its values are like.

#include <algorithm>
#include <cstdio>
#include <limits>
#include <optional>
#include <string>

#include "tools/zol/exit_codes.h"
#include "tools/zol/grid_commands.h"
#include "tools/zol/grid_statistics.h"
#include "tools/zol/grid_text.h"
#include "tools/zol/layout.h"
#include "tools/zol/number_text.h"
#include "tools/zol/open_model.h"

namespace zol::tool {

namespace {

constexpr std::size_t kLabelWidth = 12;

/// The nodes that can't be read: how many, and the least rectangle that has them all.
struct Unreadable {
    long long count = 0;
    NodeIndex lower{std::numeric_limits<int>::max(), std::numeric_limits<int>::max()};
    NodeIndex upper{-1, -1};

    void Add(int i, int j) {
        ++count;
        lower = {std::min(lower.i, i), std::min(lower.j, j)};
        upper = {std::max(upper.i, i), std::max(upper.j, j)};
    }
};

struct Survey {
    /// Of all nodes; of use only when each can be read.
    GridStatistics statistics;
    Unreadable unreadable;
};

Survey survey_of(const Grid& grid) {
    Survey survey;
    const Lattice& nodes = grid.Nodes();
    ProgressBar progress(nodes.NNodes(), "nodes", ProgressBar::Meanwhile::Nothing);
    for (int j = nodes.height - 1; j >= 0; --j) {
        for (int i = 0; i < nodes.width; ++i) {
            if (const auto value = grid.ValueIfReadable(i, j)) {
                survey.statistics.Add({&*value, 1});
            } else {
                survey.unreadable.Add(i, j);
            }
        }
        progress.Advance(nodes.width);
    }
    return survey;
}

/// The exit code, and on standard error what can't be read.
int ended(const GridInfoRequest& request, const std::optional<Survey>& survey) {
    if (!survey || survey->unreadable.count == 0) return kGood;
    const Unreadable& part = survey->unreadable;
    std::fprintf(stderr, "zol: %lld nodes of '%s' can't be read, between %s and %s.\n", part.count,
                 request.file.c_str(), index_text(part.lower).c_str(),
                 index_text(part.upper).c_str());
    return kUnreadable;
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

void write_place(const GridInfoRequest& request, const Lattice& nodes, Output& output) {
    write_fact(output, kLabelWidth, "Grid", request.file);
    write_fact(
        output, kLabelWidth, "Nodes",
        std::to_string(nodes.width) + " x " + std::to_string(nodes.height) + " (east x north)");
    write_fact(output, kLabelWidth, "Extent", extent_text(nodes));
    write_fact(output, kLabelWidth, "Spacing", pair_text(nodes.dx, nodes.dy));
}

void write_values(const Survey& survey, Output& output) {
    const auto& [statistics, unreadable] = survey;
    if (unreadable.count > 0) {
        write_fact(output, kLabelWidth, "Unreadable",
                   std::to_string(unreadable.count) + " nodes between " +
                       index_text(unreadable.lower) + " and " + index_text(unreadable.upper));
        return;
    }
    write_fact(output, kLabelWidth, "Masked",
               std::to_string(statistics.NMasked()) + " of " + std::to_string(statistics.NNodes()) +
                   " nodes");
    write_fact(output, kLabelWidth, "Values", values_text(statistics));
}

void write_values(const Survey& survey, JsonWriter& json) {
    const auto& [statistics, unreadable] = survey;
    if (unreadable.count > 0) {
        json.Key("unreadable");
        json.BeginObject(JsonWriter::Layout::Flat);
        json.Key("nodes");
        json.Whole(unreadable.count);
        json.Key("lower");
        write_index(json, unreadable.lower);
        json.Key("upper");
        write_index(json, unreadable.upper);
        json.EndObject();
        return;
    }
    json.Key("masked");
    json.Whole(statistics.NMasked());
    json.Key("minimum");
    json.Number(statistics.Minimum());
    json.Key("maximum");
    json.Number(statistics.Maximum());
    json.Key("mean");
    json.Number(statistics.Mean());
}

void write_json(const GridInfoRequest& request, const Lattice& nodes,
                const std::optional<Survey>& survey, Output& output) {
    JsonWriter json(output);
    json.BeginObject();
    json.Key("name");
    json.Text(request.file);
    json.Key("nodes");
    write_index(json, {nodes.width, nodes.height});
    json.Key("extent");
    write_extent(json, nodes);
    json.Key("spacing");
    write_pair(json, nodes.dx, nodes.dy);
    if (survey) write_values(*survey, json);
    json.EndObject();
}

}  // namespace

int run_grid_info(const GridInfoRequest& request, Output& output) {
    const auto grid = open_grid(request.file);
    if (!request.as_json) {
        write_place(request, grid->Nodes(), output);
        // Ahead of the walk, which may take its time.
        output.Flush();
    }
    std::optional<Survey> survey;
    if (!request.only_places) survey = survey_of(*grid);
    if (request.as_json) {
        write_json(request, grid->Nodes(), survey, output);
    } else if (survey) {
        write_values(*survey, output);
    }
    return ended(request, survey);
}

}  // namespace zol::tool
