// Objects as their callers know them: what all kinds have, and the way to the view of each.
#include <array>
#include <utility>
#include <variant>

#include "engine/design/metadata_state.h"
#include "engine/design/object_state.h"
#include "engine/design/view_states.h"
#include "platform/zolDesignExport.h"

namespace zol::design {

using engine::DrawingArrow;
using engine::DrawingDimension;
using engine::DrawingKind;
using engine::DrawingText;
using engine::design::ObjectRecord;
using engine::design::ObjectShape;
using engine::design::PolylineShape;

namespace {

struct DimensionLine {
    ObjectDimensionLine line;
    /// The same dimension to those who take it for one of a radius.
    ObjectDimensionRadius radius;
};

using View =
    std::variant<std::monostate, ObjectPolyline, ObjectText, Object3DText, ObjectArrow,
                 DimensionLine, ObjectDimensionRadius, ObjectDimensionArc, ObjectDimensionAngle>;

// In the order of the views.
constexpr std::array kTypes = {
    ObjectType::kUnknown,         ObjectType::kPolyline,     ObjectType::kText,
    ObjectType::k3DText,          ObjectType::kArrow,        ObjectType::kDimensionLine,
    ObjectType::kDimensionRadius, ObjectType::kDimensionArc, ObjectType::kDimensionAngle,
};
static_assert(kTypes.size() == std::variant_size_v<View>);

View view_of(DrawingKind kind, DrawingText text) {
    if (kind == DrawingKind::Text) {
        return ObjectText(std::make_shared<ObjectText::State>(std::move(text)));
    }
    return Object3DText(std::make_shared<Object3DText::State>(std::move(text)));
}

View view_of(DrawingKind kind, DrawingDimension dimension) {
    const auto state = std::make_shared<const ObjectDimension::State>(std::move(dimension));
    switch (kind) {
        case DrawingKind::DimensionLine:
            return DimensionLine{ObjectDimensionLine(state), ObjectDimensionRadius(state)};
        case DrawingKind::DimensionRadius:
            return ObjectDimensionRadius(state);
        case DrawingKind::DimensionArc:
            return ObjectDimensionArc(state);
        default:
            return ObjectDimensionAngle(state);
    }
}

View view_of(DrawingKind kind, ObjectShape shape) {
    if (auto* const line = std::get_if<PolylineShape>(&shape)) {
        return ObjectPolyline(std::make_shared<ObjectPolyline::State>(std::move(*line)));
    }
    if (auto* const text = std::get_if<DrawingText>(&shape)) return view_of(kind, std::move(*text));
    if (auto* const arrow = std::get_if<DrawingArrow>(&shape)) {
        return ObjectArrow(std::make_shared<ObjectArrow::State>(std::move(*arrow)));
    }
    if (auto* const dimension = std::get_if<DrawingDimension>(&shape)) {
        return view_of(kind, std::move(*dimension));
    }
    return {};
}

}  // namespace

struct Object::State {
    State() = default;
    explicit State(ObjectRecord whole)
        : record(std::move(whole)),
          fields(std::make_shared<const Metadata::State>(std::move(record.fields))),
          view(view_of(record.kind, std::move(record.shape))) {}

    /// Without its fields and its shape, which stand below.
    ObjectRecord record;
    std::shared_ptr<const Metadata::State> fields = std::make_shared<const Metadata::State>();
    View view;
};

Object::Object() : state_(std::make_unique<State>()) {}

Object::Object(std::unique_ptr<State> state) : state_(std::move(state)) {}

Object& Object::operator=(Object&& other) noexcept = default;

Object::~Object() = default;

std::string Object::GetName() const {
    return state_->record.name;
}

std::string Object::GetFeature() const {
    return state_->record.feature;
}

std::string Object::GetGroup() const {
    return state_->record.group;
}

std::string Object::GetPrimitive() const {
    return state_->record.primitive;
}

double Object::GetValue() const {
    return state_->record.value;
}

ColourIndex Object::GetColour() const {
    return {state_->record.colour};
}

std::string Object::GetDescription() const {
    return state_->record.description;
}

Metadata Object::GetMetadata() const {
    return Metadata(state_->fields);
}

bool Object::HasError() const {
    return !state_->record.error.empty();
}

std::string Object::GetError() const {
    return state_->record.error;
}

ObjectType Object::GetType() const {
    return kTypes[state_->view.index()];
}

bool Object::IsPolyline() const {
    return std::holds_alternative<ObjectPolyline>(state_->view);
}

ObjectPolyline& Object::AsPolyline() {
    return std::get<ObjectPolyline>(state_->view);
}

bool Object::IsText() const {
    return std::holds_alternative<ObjectText>(state_->view);
}

ObjectText& Object::AsText() {
    return std::get<ObjectText>(state_->view);
}

bool Object::IsDimensionLine() const {
    return std::holds_alternative<DimensionLine>(state_->view);
}

ObjectDimensionLine& Object::AsDimensionLine() {
    return std::get<DimensionLine>(state_->view).line;
}

bool Object::IsDimensionRadius() const {
    return std::holds_alternative<ObjectDimensionRadius>(state_->view);
}

ObjectDimensionRadius& Object::AsDimensionRadius() {
    if (auto* const line = std::get_if<DimensionLine>(&state_->view)) return line->radius;
    return std::get<ObjectDimensionRadius>(state_->view);
}

bool Object::IsDimensionArc() const {
    return std::holds_alternative<ObjectDimensionArc>(state_->view);
}

ObjectDimensionArc& Object::AsDimensionArc() {
    return std::get<ObjectDimensionArc>(state_->view);
}

bool Object::IsDimensionAngle() const {
    return std::holds_alternative<ObjectDimensionAngle>(state_->view);
}

ObjectDimensionAngle& Object::AsDimensionAngle() {
    return std::get<ObjectDimensionAngle>(state_->view);
}

bool Object::Is3DText() const {
    return std::holds_alternative<Object3DText>(state_->view);
}

Object3DText& Object::As3DText() {
    return std::get<Object3DText>(state_->view);
}

bool Object::IsArrow() const {
    return std::holds_alternative<ObjectArrow>(state_->view);
}

ObjectArrow& Object::AsArrow() {
    return std::get<ObjectArrow>(state_->view);
}

}  // namespace zol::design

namespace zol::engine::design {

void fill(zol::design::Object& object, ObjectRecord record) {
    object = zol::design::Object(std::make_unique<zol::design::Object::State>(std::move(record)));
}

}  // namespace zol::engine::design
