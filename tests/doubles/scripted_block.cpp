#include "tests/doubles/scripted_block.h"

#include "tests/doubles/journal.h"

namespace zol::doubles {

Script script;
std::vector<std::string> journal;
std::function<void()> during_call;

namespace {

template <class... Arguments>
void note(const char* operation, const Arguments&... arguments) {
    journal.push_back(journal_entry(operation, arguments...));
    if (during_call) {
        during_call();
    }
    if (script.throwing == operation) {
        throw EngineFailure(operation);
    }
}

}  // namespace
}  // namespace zol::doubles

namespace zol::model::block {

using doubles::note;
using doubles::script;
using geometry::Coord3D;
using geometry::Extent;
using geometry::Point3I;

struct Schema::State {
    doubles::ScriptedSchema answers;
};

struct Match::State {};

struct Model::State {
    Match match{std::make_unique<Match::State>()};
};

BlockExtent::BlockExtent(const Extent& extent) : extent_(extent) {}
BlockExtent::~BlockExtent() = default;
Extent BlockExtent::GetExtent() const {
    return extent_;
}

Schema::Schema() = default;
Schema::Schema(std::shared_ptr<const State> state) : state_(std::move(state)) {}
Schema::Schema(const Schema&) = default;
Schema& Schema::operator=(const Schema&) = default;
Schema::~Schema() = default;
bool Schema::IsOriginal() const {
    return state_->answers.original;
}
Extent Schema::GetExtent() const {
    return state_->answers.extent;
}
Point3I Schema::GetDimensions() const {
    return state_->answers.dimensions;
}
Coord3D Schema::GetMinimumSize() const {
    return state_->answers.least;
}
Coord3D Schema::GetMaximumSize() const {
    return state_->answers.greatest;
}

IModel::~IModel() = default;

Match::Match(std::unique_ptr<State> state) : state_(std::move(state)) {}
Match::~Match() = default;

bool Match::IsOpen() const {
    note("Match::IsOpen");
    return true;
}

int Match::FindFirst() {
    note("Match::FindFirst");
    return script.move_result;
}

int Match::Next() {
    note("Match::Next");
    return script.move_result;
}

bool Match::IsEof() const {
    note("Match::IsEof");
    return script.match.eof;
}

double Match::Get(const std::string& name) const {
    note("Match::Get", name);
    return script.match.number;
}

std::string Match::GetString(const std::string& name) const {
    note("Match::GetString", name);
    return script.match.text;
}

BlockExtent Match::GetBlockExtent() const {
    note("Match::GetBlockExtent");
    return BlockExtent(script.match.extent);
}

Position Match::GetPosition() const {
    note("Match::GetPosition");
    return Position{script.match.position};
}

void Match::Close() {
    note("Match::Close");
}

void Match::AddTriangulation(const std::string& file) {
    note("Match::AddTriangulation", file);
}

void Match::SetExtent(const Extent& extent) {
    note("Match::SetExtent", extent.x0, extent.y0, extent.z0, extent.x1, extent.y1, extent.z1);
}

void Match::SetUseExactVolume(bool exact) {
    note("Match::SetUseExactVolume", exact);
}

BlockExtent Match::GetMatchExtent() const {
    note("Match::GetMatchExtent");
    return BlockExtent(script.match_extent);
}

double Match::GetMatchVolume() const {
    note("Match::GetMatchVolume");
    return script.match_volume;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the contract's own signature
Model::Model(const std::string& file, std::string mode) : state_(std::make_unique<State>()) {
    note("Model::Model", file, mode);
}

Model::~Model() {
    doubles::journal.emplace_back("Model::~Model");
}

bool Model::IsOpen() const {
    note("Model::IsOpen");
    return script.opens;
}

int Model::FindFirst() {
    note("Model::FindFirst");
    return script.move_result;
}

int Model::Next() {
    note("Model::Next");
    return script.move_result;
}

bool Model::IsEof() const {
    note("Model::IsEof");
    return script.model.eof;
}

double Model::Get(const std::string& name) const {
    note("Model::Get", name);
    return script.model.number;
}

std::string Model::GetString(const std::string& name) const {
    note("Model::GetString", name);
    return script.model.text;
}

BlockExtent Model::GetBlockExtent() const {
    note("Model::GetBlockExtent");
    return BlockExtent(script.model.extent);
}

Position Model::GetPosition() const {
    note("Model::GetPosition");
    return Position{script.model.position};
}

int Model::Close() {
    note("Model::Close");
    return script.close_result;
}

std::string Model::GetName() const {
    note("Model::GetName");
    return script.name;
}

Match& Model::GetMatch() {
    note("Model::GetMatch");
    return state_->match;
}

Extent Model::GetModelExtent() const {
    note("Model::GetModelExtent");
    return script.extent;
}

Coord3D Model::GetModelOrigin() const {
    note("Model::GetModelOrigin");
    return script.origin;
}

Coord3D Model::GetModelOrientation() const {
    note("Model::GetModelOrientation");
    return script.orientation;
}

Coord3D Model::ToWorld(double x, double y, double z) const {
    note("Model::ToWorld", x, y, z);
    const double shift = script.to_world_shift;
    return {x + shift, y + shift, z + shift};
}

Coord3D Model::ToModel(double x, double y, double z) const {
    note("Model::ToModel", x, y, z);
    const double shift = script.to_model_shift;
    return {x + shift, y + shift, z + shift};
}

bool Model::IsStrat() const {
    note("Model::IsStrat");
    return script.strat;
}

std::int64_t Model::NBlocks() const {
    note("Model::NBlocks");
    return script.blocks;
}

int Model::NSchemas() const {
    note("Model::NSchemas");
    return static_cast<int>(script.schemas.size());
}

Schema Model::GetSchema(int index) const {
    note("Model::GetSchema", index);
    const auto& answers = script.schemas.at(static_cast<std::size_t>(index));
    return Schema(std::make_shared<const Schema::State>(Schema::State{answers}));
}

std::vector<std::string> Model::GetFieldVector(int selector) const {
    note("Model::GetFieldVector", selector);
    return script.fields[selector];
}

bool Model::IsNumber(const std::string& name) const {
    note("Model::IsNumber", name);
    return script.is_number;
}

bool Model::IsString(const std::string& name) const {
    note("Model::IsString", name);
    return script.is_string;
}

bool Model::IsPredefined(const std::string& name) const {
    note("Model::IsPredefined", name);
    return script.is_predefined;
}

double Model::GetFieldDefault(const std::string& name) const {
    note("Model::GetFieldDefault", name);
    return script.default_number;
}

std::string Model::GetFieldDefaultString(const std::string& name) const {
    note("Model::GetFieldDefaultString", name);
    return script.default_text;
}

std::string Model::GetFieldDescription(const std::string& name) const {
    note("Model::GetFieldDescription", name);
    return script.description;
}

std::string Model::GetFieldType(const std::string& name) const {
    note("Model::GetFieldType", name);
    return script.type;
}

std::vector<std::string> Model::GetFieldTranslations(const std::string& name) const {
    note("Model::GetFieldTranslations", name);
    return script.translations;
}

int Model::FindXyz(double x, double y, double z) {
    note("Model::FindXyz", x, y, z);
    return script.find_result;
}

int Model::FindWorldXyz(double x, double y, double z) {
    note("Model::FindWorldXyz", x, y, z);
    return script.find_result;
}

int Model::SetPosition(const Position& position) {
    note("Model::SetPosition", position.value);
    return script.move_result;
}

}  // namespace zol::model::block
