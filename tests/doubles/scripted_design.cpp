// The script, databases and layers.
#include "tests/doubles/scripted_design.h"

#include "tests/doubles/scripted_design_answers.h"

namespace zol::doubles {

DesignScript design_script;
std::vector<std::string> design_journal;

double number_of(const std::string& operation) {
    const auto scripted = design_script.numbers.find(operation);
    if (scripted != design_script.numbers.end()) {
        return scripted->second;
    }
    // Far enough from each other that points don't share numbers.
    static std::map<std::string, double> given;
    constexpr double kStep = 10.0;
    return given.try_emplace(operation, kStep * static_cast<double>(given.size() + 1))
        .first->second;
}

std::string text_of(const std::string& operation) {
    const auto scripted = design_script.texts.find(operation);
    return scripted != design_script.texts.end() ? scripted->second : operation;
}

}  // namespace zol::doubles

namespace zol::design {

using doubles::design_script;
using doubles::note;
using doubles::text;
using doubles::truth;
using doubles::whole;

struct Layer::State {};

Layer::Layer() {
    note("Layer::Layer");
}

Layer::~Layer() {
    doubles::design_journal.emplace_back("Layer::~Layer");
}

bool Layer::GetObject(int index, Object* /*object*/) {
    return truth("Layer::GetObject", index);
}

std::string Layer::GetName() const {
    return text("Layer::GetName");
}

int Layer::NObjects() const {
    return whole("Layer::NObjects");
}

std::string Layer::GetDescription() const {
    return text("Layer::GetDescription");
}

bool Layer::IsEdited() const {
    return truth("Layer::IsEdited");
}

struct Database::State {};

Database::Database() {
    note("Database::Database");
}

Database::~Database() {
    doubles::design_journal.emplace_back("Database::~Database");
}

bool Database::Open(const std::string& path, const std::string& mode) {
    return truth("Database::Open", path, mode);
}

void Database::Close(bool save) {
    note("Database::Close", save);
}

int Database::NLayers() const {
    note("Database::NLayers");
    return static_cast<int>(design_script.layers.size());
}

bool Database::Get(const std::string& name, Layer* /*layer*/) {
    return truth("Database::Get", name);
}

bool Database::Get(int position, Layer* /*layer*/) {
    return truth("Database::Get", position);
}

const std::vector<std::string>& Database::GetLayerList() {
    note("Database::GetLayerList");
    return design_script.layers;
}

std::vector<std::string> Database::GetError() const {
    note("Database::GetError");
    return design_script.errors;
}

bool Database::GetColourTable(std::vector<graphics::RGB>& table) const {
    // Appended, so that a table that was not empty shows.
    note("Database::GetColourTable");
    table.insert(table.end(), design_script.colours.begin(), design_script.colours.end());
    return false;
}

bool Database::IsOpen() const {
    return truth("Database::IsOpen");
}

std::string Database::GetName() const {
    return text("Database::GetName");
}

bool Database::Exists(const std::string& name) const {
    return truth("Database::Exists", name);
}

bool Database::HasError() const {
    return truth("Database::HasError");
}

std::string GetValidLayerName(const std::string& name) {
    note("GetValidLayerName", name);
    return "valid " + name;
}

}  // namespace zol::design
