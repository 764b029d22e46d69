// `zol at`: the block at a point, with all its values.

#include <algorithm>
#include <cstdio>

#include "tools/zol/block_commands.h"
#include "tools/zol/columns.h"
#include "tools/zol/exit_codes.h"
#include "tools/zol/json_writer.h"
#include "tools/zol/layout.h"
#include "tools/zol/open_model.h"

namespace zol::tool {

namespace {

std::vector<Column> all_columns(const BlockModel& model) {
    std::vector<Column> columns;
    for (const std::string& name : model.PredefinedNames()) {
        columns.emplace_back(model.Describe(name, true));
    }
    for (const std::string& name : model.VariableNames()) {
        columns.emplace_back(model.Describe(name, false));
    }
    return columns;
}

void write_text(const BlockModel& model, Output& output) {
    const std::vector<Column> columns = all_columns(model);
    std::size_t width = display_width("position");
    for (const Column& column : columns) width = std::max(width, display_width(column.Name()));

    write_line(output, padded("position", width) + "  " + std::to_string(model.Position()));
    write_line(output, padded("extent", width) + "  " + box_text(model.BlockExtent()));
    Cell cell;
    for (const Column& column : columns) {
        column.Read(model, cell);
        const bool is_missing = cell.kind == Cell::Kind::Missing;
        write_line(output, padded(column.Name(), width) + "  " + (is_missing ? "-" : cell.text));
    }
}

void write_json(const BlockModel& model, Output& output) {
    JsonWriter json(output);
    json.BeginObject();
    json.Key("position");
    json.Whole(model.Position());
    json.Key("extent");
    write_box(json, model.BlockExtent());
    json.Key("values");
    json.BeginObject();
    Cell cell;
    for (const Column& column : all_columns(model)) {
        json.Key(column.Name());
        column.Read(model, cell);
        write_cell(json, cell);
    }
    json.EndObject();
    json.EndObject();
}

void tell_not_found(const AtRequest& request, const BlockModel& model) {
    const std::string which = request.is_world ? "world" : "model";
    std::string text = "zol: no block at " + point_text(request.point) + " (" + which +
                       " coordinates). The model's extent is " + box_text(model.Extent()) +
                       " in model coordinates.";
    if (!request.is_world) text += " For a point in world coordinates, add --world.";
    std::fprintf(stderr, "%s\n", text.c_str());
}

}  // namespace

int run_at(const AtRequest& request, Output& output) {
    const auto model = open_model(request.file);
    const bool is_found =
        request.is_world ? model->FindWorld(request.point) : model->Find(request.point);
    if (!is_found) {
        tell_not_found(request, *model);
        return kNotFound;
    }
    if (request.as_json) {
        write_json(*model, output);
    } else {
        write_text(*model, output);
    }
    return kGood;
}

}  // namespace zol::tool
