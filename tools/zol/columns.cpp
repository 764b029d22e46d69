#include "tools/zol/columns.h"

#include <algorithm>
#include <cmath>

#include "tools/zol/exit_codes.h"
#include "tools/zol/near_names.h"
#include "tools/zol/number_text.h"

namespace zol::tool {

namespace {

constexpr const char* kPlaceAndSize[] = {"centroid_x", "centroid_y", "centroid_z",
                                         "size_x",     "size_y",     "size_z"};

bool contains(const std::vector<std::string>& list, const std::string& name) {
    return std::find(list.begin(), list.end(), name) != list.end();
}

std::vector<std::string> split_at_commas(const std::string& text) {
    std::vector<std::string> parts(1);
    for (const char character : text) {
        if (character == ',') {
            parts.emplace_back();
        } else {
            parts.back() += character;
        }
    }
    return parts;
}

/// `as_float`: the value came from a float, so that nothing is lost on the way back.
void set_number(Cell& cell, double value, bool as_float) {
    if (std::isnan(value)) return;
    cell.kind = Cell::Kind::Number;
    cell.text = as_float ? number_text(static_cast<float>(value)) : number_text(value);
}

}  // namespace

void write_cell(JsonWriter& json, const Cell& cell) {
    const bool is_finite = cell.text.find("inf") == std::string::npos;
    if (cell.kind == Cell::Kind::Text) {
        json.Text(cell.text);
    } else if (cell.kind == Cell::Kind::Number && is_finite) {
        json.NumberAsWritten(cell.text);
    } else {
        json.Null();
    }
}

Column::Column(const Variable& variable) : name_(variable.name), reading_(Reading::Number) {
    if (variable.IsClassification()) {
        reading_ = Reading::CodeName;
    } else if (variable.is_text) {
        reading_ = Reading::Text;
    } else if (variable.type == VariableType::Int64) {
        reading_ = Reading::WholeNumber;
    } else if (variable.type == VariableType::Float || variable.type == VariableType::SFloat) {
        reading_ = Reading::Float;
    }
}

void Column::Read(const BlockModel& model, Cell& cell) const {
    cell.kind = Cell::Kind::Missing;
    cell.text.clear();
    if (reading_ == Reading::Number || reading_ == Reading::Float) {
        set_number(cell, model.Number(name_), reading_ == Reading::Float);
        return;
    }
    model.Text(name_, cell.text);
    if (!cell.text.empty()) {
        const bool is_number = reading_ == Reading::WholeNumber;
        cell.kind = is_number ? Cell::Kind::Number : Cell::Kind::Text;
    } else if (reading_ == Reading::CodeName) {
        set_number(cell, model.Number(name_), false);
    }
}

std::vector<Column> default_columns(const BlockModel& model) {
    std::vector<Column> columns;
    const std::vector<std::string> predefined = model.PredefinedNames();
    for (const char* name : kPlaceAndSize) {
        if (contains(predefined, name)) columns.emplace_back(model.Describe(name, true));
    }
    for (const std::string& name : model.VariableNames()) {
        columns.emplace_back(model.Describe(name, false));
    }
    return columns;
}

std::vector<Column> chosen_columns(const BlockModel& model, const std::vector<std::string>& texts) {
    const std::vector<std::string> predefined = model.PredefinedNames();
    std::vector<std::string> known = model.VariableNames();
    known.insert(known.end(), predefined.begin(), predefined.end());

    std::vector<Column> columns;
    for (const std::string& text : texts) {
        // A name may hold commas itself.
        const bool is_one_name = contains(known, text);
        for (const std::string& name :
             is_one_name ? std::vector<std::string>{text} : split_at_commas(text)) {
            if (!contains(known, name)) {
                throw UsageError("no variable '" + name + "' in this model. " +
                                 near_names(name, known));
            }
            columns.emplace_back(model.Describe(name, contains(predefined, name)));
        }
    }
    return columns;
}

}  // namespace zol::tool
