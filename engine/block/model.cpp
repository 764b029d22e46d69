// The model: opening, and the questions that go to catalogue, cursor and geometry.
#include <algorithm>
#include <utility>

#include "engine/block/model_state.h"
#include "engine/formats/diagnostics.h"
#include "engine/formats/number_text.h"
#include "engine/formats/read_error.h"
#include "support/floating_point.h"

namespace zol::model::block {

namespace {

using engine::block::Field;
using engine::block::Source;
using engine::block::Variable;

constexpr int kFound = 0;
constexpr int kNotFound = 1;

}  // namespace

IModel::~IModel() = default;

// The contract takes the mode by value.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
Model::Model(const std::string& file, std::string mode) {
    const support::UsualFloatingPoint usual;
    Source source;
    bool is_open = false;
    try {
        if (mode != "r") {
            throw engine::ReadError("block models are only opened for reading, in mode \"r\"");
        }
        source = engine::block::open_source(file);
        is_open = true;
    } catch (const engine::ReadError& error) {
        engine::report(file, error.what());
    }
    state_ = std::make_unique<State>(std::move(source));
    state_->is_open = is_open;
}

Model::~Model() = default;

bool Model::IsOpen() const {
    return state_->is_open;
}

int Model::Close() {
    // Files are released at once; what is asked from now on is asked of no block. The
    // match stays an object as long as the model is one.
    state_->source = Source{};
    state_->catalogue.Restart();
    state_->cursor.Restart();
    if (state_->match) {
        state_->match->Close();
    }
    state_->is_open = false;
    return 0;
}

std::string Model::GetName() const {
    return state_->source.name;
}

Match& Model::GetMatch() {
    if (!state_->match) {
        state_->match = std::make_unique<Match>(
            std::make_unique<Match::State>(state_->source, state_->catalogue));
    }
    return *state_->match;
}

int Model::FindFirst() {
    state_->cursor.MoveTo(0);
    return state_->cursor.IsEof() ? kNotFound : kFound;
}

int Model::Next() {
    state_->cursor.Next();
    return state_->cursor.IsEof() ? kNotFound : kFound;
}

bool Model::IsEof() const {
    return state_->cursor.IsEof();
}
double Model::Get(const std::string& name) const {
    return state_->cursor.Number(name);
}
std::string Model::GetString(const std::string& name) const {
    return state_->cursor.Text(name);
}
BlockExtent Model::GetBlockExtent() const {
    return BlockExtent(state_->cursor.Extent());
}
Position Model::GetPosition() const {
    return {state_->cursor.Position()};
}

int Model::SetPosition(const Position& position) {
    state_->cursor.MoveTo(position.value);
    return state_->cursor.IsEof() ? kNotFound : kFound;
}

int Model::FindXyz(double x, double y, double z) {
    const support::UsualFloatingPoint usual;
    const std::int64_t block =
        state_->source.geometry ? state_->source.geometry->Find({x, y, z}) : -1;
    if (block < 0) {
        return kNotFound;
    }
    state_->cursor.MoveTo(block);
    return kFound;
}

int Model::FindWorldXyz(double x, double y, double z) {
    const geometry::Coord3D model = ToModel(x, y, z);
    return FindXyz(model.x, model.y, model.z);
}

geometry::Extent Model::GetModelExtent() const {
    return state_->source.extent;
}
geometry::Coord3D Model::GetModelOrigin() const {
    return state_->source.placement.Origin();
}
geometry::Coord3D Model::GetModelOrientation() const {
    return state_->source.placement.Angles();
}

geometry::Coord3D Model::ToWorld(double x, double y, double z) const {
    const support::UsualFloatingPoint usual;
    return state_->source.placement.ToWorld(x, y, z);
}

geometry::Coord3D Model::ToModel(double x, double y, double z) const {
    const support::UsualFloatingPoint usual;
    return state_->source.placement.ToModel(x, y, z);
}

bool Model::IsStrat() const {
    return state_->source.stratigraphic;
}

std::int64_t Model::NBlocks() const {
    return state_->source.geometry ? state_->source.geometry->NBlocks() : 0;
}

int Model::NSchemas() const {
    return static_cast<int>(state_->source.schemas.size());
}

Schema Model::GetSchema(int index) const {
    const auto& schemas = state_->source.schemas;
    const auto place = static_cast<std::size_t>(index);
    return place < schemas.size()
               ? Schema(std::make_shared<Schema::State>(Schema::State{schemas[place]}))
               : Schema();
}

std::vector<std::string> Model::GetFieldVector(int selector) const {
    return state_->catalogue.Names(selector);
}

bool Model::IsNumber(const std::string& name) const {
    const Field& field = state_->catalogue.Find(name);
    return field.kind == Field::Kind::Predefined ||
           (field.kind == Field::Kind::Own && !field.variable->IsText());
}

bool Model::IsString(const std::string& name) const {
    const Variable* variable = state_->catalogue.OwnVariable(name);
    return variable != nullptr && variable->IsText();
}

bool Model::IsPredefined(const std::string& name) const {
    return state_->catalogue.Find(name).kind == Field::Kind::Predefined;
}

double Model::GetFieldDefault(const std::string& name) const {
    const Variable* variable = state_->catalogue.OwnVariable(name);
    return variable != nullptr ? variable->default_number : engine::block::kMissing;
}

std::string Model::GetFieldDefaultString(const std::string& name) const {
    const Variable* variable = state_->catalogue.OwnVariable(name);
    return variable != nullptr ? variable->default_text : std::string();
}

std::string Model::GetFieldDescription(const std::string& name) const {
    const Field& field = state_->catalogue.Find(name);
    switch (field.kind) {
        case Field::Kind::Own:
            return field.variable->description;
        case Field::Kind::Predefined:
            return std::string(engine::block::Catalogue::DescriptionOf(field.predefined));
        case Field::Kind::Unknown:
            break;
    }
    return {};
}

std::string Model::GetFieldType(const std::string& name) const {
    const Field& field = state_->catalogue.Find(name);
    switch (field.kind) {
        case Field::Kind::Own:
            return std::string(engine::block::storage_name(field.variable->storage));
        case Field::Kind::Predefined: {
            const bool counts = field.predefined == engine::block::Predefined::BlockIndex;
            return counts ? "int64" : "double";
        }
        case Field::Kind::Unknown:
            break;
    }
    return {};
}

std::vector<std::string> Model::GetFieldTranslations(const std::string& name) const {
    std::vector<std::string> names;
    if (const Variable* variable = state_->catalogue.OwnVariable(name)) {
        for (const engine::block::Translation& translation : variable->translations) {
            names.push_back(translation.name);
        }
    }
    return names;
}

}  // namespace zol::model::block
