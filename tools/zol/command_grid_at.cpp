// `zol grid at`: the node nearest to a point, and the value between the nodes around it.

#include <cmath>
#include <cstdio>
#include <optional>
#include <vector>

#include "tools/zol/exit_codes.h"
#include "tools/zol/grid_commands.h"
#include "tools/zol/grid_sample.h"
#include "tools/zol/grid_text.h"
#include "tools/zol/layout.h"
#include "tools/zol/number_text.h"
#include "tools/zol/open_model.h"

namespace zol::tool {

namespace {

struct Answer {
    NodeIndex nearest;
    /// NaN when masked.
    double value = 0;
    /// Nothing when a node that counts is masked.
    std::optional<double> between;
    std::vector<NodeIndex> masked;
};

std::vector<NodeIndex> masked_corners(const GridSquare& square, const Grid& grid) {
    std::vector<NodeIndex> masked;
    for (int j = square.south_west.j; j <= square.north_east.j; ++j) {
        for (int i = square.south_west.i; i <= square.north_east.i; ++i) {
            if (std::isnan(grid.Value(i, j))) masked.push_back({i, j});
        }
    }
    return masked;
}

Answer answer_at(const GridPlace& place, const Grid& grid) {
    Answer answer;
    answer.nearest = nearest_node(place);
    answer.value = grid.Value(answer.nearest.i, answer.nearest.j);
    const GridSquare square = square_around(place);
    answer.masked = masked_corners(square, grid);
    if (answer.masked.empty()) {
        const auto& [west, south] = square.south_west;
        const auto& [east, north] = square.north_east;
        answer.between = bilinear(square, {grid.Value(west, south), grid.Value(east, south),
                                           grid.Value(west, north), grid.Value(east, north)});
    }
    return answer;
}

std::string between_text(const Answer& answer) {
    if (answer.between) {
        // On a node it is the node's value to the last digit.
        const bool is_value = *answer.between == answer.value;
        return std::string(is_value ? number_text(answer.value) : computed_text(*answer.between));
    }
    const auto& masked = answer.masked;
    std::string text = masked.size() == 1 ? "none: masked is node " : "none: masked are nodes ";
    for (std::size_t i = 0; i < masked.size(); ++i) {
        if (i > 0) text += i + 1 == masked.size() ? " and " : ", ";
        text += index_text(masked[i]);
    }
    return text;
}

void write_text(const Answer& answer, const Lattice& nodes, Output& output) {
    constexpr std::size_t kLabelWidth = 14;
    const auto& [i, j] = answer.nearest;
    write_fact(output, kLabelWidth, "nearest node",
               index_text(answer.nearest) + " at " + pair_text(nodes.X(i), nodes.Y(j)));
    const bool is_masked = std::isnan(answer.value);
    write_fact(output, kLabelWidth, "its value",
               is_masked ? "masked" : std::string(number_text(answer.value)));
    write_fact(output, kLabelWidth, "bilinear", between_text(answer));
}

void write_json(const Answer& answer, const Lattice& nodes, Output& output) {
    JsonWriter json(output);
    json.BeginObject();
    json.Key("node");
    write_index(json, answer.nearest);
    json.Key("position");
    write_pair(json, nodes.X(answer.nearest.i), nodes.Y(answer.nearest.j));
    json.Key("masked");
    json.Bool(std::isnan(answer.value));
    json.Key("value");
    json.Number(answer.value);
    json.Key("bilinear");
    if (answer.between) {
        json.Number(*answer.between);
    } else {
        json.Null();
    }
    json.Key("masked_corners");
    json.BeginList(JsonWriter::Layout::Flat);
    for (const NodeIndex& node : answer.masked) write_index(json, node);
    json.EndList();
    json.EndObject();
}

}  // namespace

int run_grid_at(const GridAtRequest& request, Output& output) {
    const auto grid = open_grid(request.file);
    const auto place = place_of(grid->Nodes(), request.x, request.y);
    if (!place) {
        std::fprintf(stderr, "zol: %s is outside the grid. Its extent is %s.\n",
                     pair_text(request.x, request.y).c_str(), extent_text(grid->Nodes()).c_str());
        return kNotFound;
    }
    const Answer answer = answer_at(*place, *grid);
    if (request.as_json) {
        write_json(answer, grid->Nodes(), output);
    } else {
        write_text(answer, grid->Nodes(), output);
    }
    return kGood;
}

}  // namespace zol::tool
