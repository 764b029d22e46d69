// `zol info`: what a model says about itself.

#include <algorithm>
#include <cmath>

#include "tools/zol/block_commands.h"
#include "tools/zol/exit_codes.h"
#include "tools/zol/json_writer.h"
#include "tools/zol/layout.h"
#include "tools/zol/number_text.h"
#include "tools/zol/open_model.h"

namespace zol::tool {

namespace {

constexpr std::size_t kLabelWidth = 16;

// More names than this are counted, not listed: `--format json` has them all.
constexpr std::size_t kMostNamesShown = 20;

// A longer default pushes its own row's description to the right, not all of them.
constexpr std::size_t kWidestColumn = 24;

struct Catalogue {
    std::vector<Variable> variables;
    std::vector<Variable> predefined;
};

Catalogue catalogue_of(const BlockModel& model) {
    Catalogue catalogue;
    for (const std::string& name : model.VariableNames()) {
        catalogue.variables.push_back(model.Describe(name, false));
    }
    for (const std::string& name : model.PredefinedNames()) {
        catalogue.predefined.push_back(model.Describe(name, true));
    }
    return catalogue;
}

/// Whether the default is told by its text: a text itself, or the name of a code.
bool has_default_text(const Variable& variable) {
    return (variable.is_text || variable.IsClassification()) && !variable.default_text.empty();
}

bool has_default(const Variable& variable) {
    return has_default_text(variable) ||
           (!variable.is_text && !std::isnan(variable.default_number));
}

std::string default_as_text(const Variable& variable) {
    if (!has_default(variable)) return "none";
    if (has_default_text(variable)) return '"' + variable.default_text + '"';
    return std::string(number_text(variable.default_number));
}

std::string names_as_text(const std::vector<std::string>& names) {
    std::string text = std::to_string(names.size()) + (names.size() == 1 ? " name: " : " names: ");
    for (std::size_t i = 0; i < std::min(names.size(), kMostNamesShown); ++i) {
        text += (i == 0 ? "" : ", ") + names[i];
    }
    if (names.size() > kMostNamesShown) text += ", ...";
    return text;
}

void write_schemas(const std::vector<Schema>& schemas, Output& output) {
    write_line(output, "");
    write_line(output, "Schemas");
    for (std::size_t i = 0; i < schemas.size(); ++i) {
        const Schema& schema = schemas[i];
        const Point& counts = schema.dimensions;
        const std::string least = point_text(schema.minimum_size);
        const std::string most = point_text(schema.maximum_size);
        write_fact(output, kLabelWidth, "  " + std::to_string(i),
                   std::string(number_text(counts.x)) + " x " + std::string(number_text(counts.y)) +
                       " x " + std::string(number_text(counts.z)) + " blocks of " + least +
                       (most == least ? "" : " to " + most) + ", extent " +
                       box_text(schema.extent));
    }
}

void write_variables(const std::string& title, const std::vector<Variable>& variables,
                     Output& output) {
    write_line(output, "");
    write_line(output, title + " (" + std::to_string(variables.size()) + ")");
    std::size_t name_width = 0;
    std::size_t default_width = 0;
    for (const Variable& variable : variables) {
        name_width = std::max(name_width, display_width(variable.name));
        default_width = std::max(default_width, display_width(default_as_text(variable)));
    }
    default_width = std::min(default_width, kWidestColumn);
    for (const Variable& variable : variables) {
        std::string line =
            "  " + padded(variable.name, name_width) + "  " + padded(type_name(variable.type), 7);
        if (!variable.is_predefined) {
            line += "  default " + padded(default_as_text(variable), default_width);
        }
        write_line(output, line + "  " + variable.description);
        if (variable.IsClassification()) {
            write_line(output,
                       "  " + padded("", name_width) + "  " + names_as_text(variable.translations));
        }
    }
}

void write_text(const InfoRequest& request, const BlockModel& model, Output& output) {
    const Catalogue catalogue = catalogue_of(model);
    write_fact(output, kLabelWidth, "Block model", request.file);
    write_fact(output, kLabelWidth, "Blocks", std::to_string(model.NBlocks()));
    write_fact(output, kLabelWidth, "Extent", box_text(model.Extent()) + " (model coordinates)");
    write_fact(output, kLabelWidth, "Origin", point_text(model.Origin()) + " (world coordinates)");
    write_fact(output, kLabelWidth, "Orientation",
               point_text(model.Orientation()) + " (degrees about z, then new y, then new x)");
    write_fact(output, kLabelWidth, "Stratigraphic", model.IsStratigraphic() ? "yes" : "no");
    write_schemas(model.Schemas(), output);
    write_variables("Variables", catalogue.variables, output);
    write_variables("Predefined variables", catalogue.predefined, output);
}

void write_json_variables(const char* key, const std::vector<Variable>& variables,
                          JsonWriter& json) {
    json.Key(key);
    json.BeginList();
    for (const Variable& variable : variables) {
        json.BeginObject(JsonWriter::Layout::Flat);
        json.Key("name");
        json.Text(variable.name);
        json.Key("type");
        json.Text(type_name(variable.type));
        json.Key("description");
        json.Text(variable.description);
        json.Key("default");
        if (!has_default(variable)) {
            json.Null();
        } else if (has_default_text(variable)) {
            json.Text(variable.default_text);
        } else {
            json.Number(variable.default_number);
        }
        json.Key("translations");
        json.BeginList(JsonWriter::Layout::Flat);
        for (const std::string& name : variable.translations) json.Text(name);
        json.EndList();
        json.EndObject();
    }
    json.EndList();
}

void write_json(const InfoRequest& request, const BlockModel& model, Output& output) {
    const Catalogue catalogue = catalogue_of(model);
    JsonWriter json(output);
    json.BeginObject();
    json.Key("name");
    json.Text(request.file);
    json.Key("blocks");
    json.Whole(model.NBlocks());
    json.Key("extent");
    write_box(json, model.Extent());
    json.Key("origin");
    write_point(json, model.Origin());
    json.Key("orientation");
    write_point(json, model.Orientation());
    json.Key("stratigraphic");
    json.Bool(model.IsStratigraphic());
    json.Key("schemas");
    json.BeginList();
    for (const Schema& schema : model.Schemas()) {
        json.BeginObject(JsonWriter::Layout::Flat);
        json.Key("dimensions");
        write_point(json, schema.dimensions);
        json.Key("extent");
        write_box(json, schema.extent);
        json.Key("minimum_size");
        write_point(json, schema.minimum_size);
        json.Key("maximum_size");
        write_point(json, schema.maximum_size);
        json.EndObject();
    }
    json.EndList();
    write_json_variables("variables", catalogue.variables, json);
    write_json_variables("predefined", catalogue.predefined, json);
    json.EndObject();
}

}  // namespace

int run_info(const InfoRequest& request, Output& output) {
    const auto model = open_model(request.file);
    if (request.as_json) {
        write_json(request, *model, output);
    } else {
        write_text(request, *model, output);
    }
    return kGood;
}

}  // namespace zol::tool
