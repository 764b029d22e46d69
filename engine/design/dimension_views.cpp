#include <utility>

#include "engine/design/view_states.h"

namespace zol::design {

using engine::DimensionTextPlace;

ObjectDimension::ObjectDimension(std::shared_ptr<const State> state) : state_(std::move(state)) {}

ObjectDimension::~ObjectDimension() = default;

std::string ObjectDimension::GetDimensionTextA() const {
    return state_->text;
}

double ObjectDimension::GetDimensionTextNumber() const {
    return state_->text_height;
}

std::string ObjectDimension::GetDimensionTextB() const {
    return state_->text_style;
}

std::string ObjectDimension::GetDimensionString() const {
    return state_->style;
}

double ObjectDimension::GetDimensionNumberB() const {
    return state_->arrow_length;
}

double ObjectDimension::GetDimensionNumberA() const {
    return state_->measure;
}

double ObjectDimension::GetDimensionNumberC() const {
    return state_->extension;
}

double ObjectDimension::GetDimensionNumberD() const {
    return state_->offset;
}

double ObjectDimension::GetDimensionNumberE() const {
    return state_->gap;
}

ObjectDimensionLocation ObjectDimension::GetTextLocation() const {
    switch (state_->place) {
        case DimensionTextPlace::InLine:
            return ObjectDimensionLocation::kInLine;
        case DimensionTextPlace::Above:
            return ObjectDimensionLocation::kAbove;
        case DimensionTextPlace::Outside:
            return ObjectDimensionLocation::kOutside;
        case DimensionTextPlace::Standard:
            return ObjectDimensionLocation::kJapaneseStandard;
        case DimensionTextPlace::Below:
            return ObjectDimensionLocation::kBelow;
        case DimensionTextPlace::Placed:
            return ObjectDimensionLocation::kPlaced;
    }
    return ObjectDimensionLocation::kUnknown;
}

ObjectDimensionLine::ObjectDimensionLine(std::shared_ptr<const State> state)
    : ObjectDimension(std::move(state)) {}

Point ObjectDimensionLine::GetStart() const {
    return point_of(Shared().first);
}

Point ObjectDimensionLine::GetEnd() const {
    return point_of(Shared().second);
}

Point ObjectDimensionLine::GetNormal() const {
    return point_of(Shared().third);
}

ObjectDimensionRadius::ObjectDimensionRadius(std::shared_ptr<const State> state)
    : ObjectDimension(std::move(state)) {}

Point ObjectDimensionRadius::GetStart() const {
    return point_of(Shared().first);
}

Point ObjectDimensionRadius::GetEnd() const {
    return point_of(Shared().second);
}

Point ObjectDimensionRadius::GetNormal() const {
    return point_of(Shared().third);
}

ObjectDimensionArc::ObjectDimensionArc(std::shared_ptr<const State> state)
    : ObjectDimension(std::move(state)) {}

Point ObjectDimensionArc::GetOrigin() const {
    return point_of(Shared().first);
}

Point ObjectDimensionArc::GetRadius() const {
    return point_of(Shared().second);
}

Point ObjectDimensionArc::GetSweep() const {
    return point_of(Shared().third);
}

ObjectDimensionAngle::ObjectDimensionAngle(std::shared_ptr<const State> state)
    : ObjectDimension(std::move(state)) {}

Point ObjectDimensionAngle::GetOrigin() const {
    return point_of(Shared().first);
}

Point ObjectDimensionAngle::GetRadius() const {
    return point_of(Shared().second);
}

Point ObjectDimensionAngle::GetSweep() const {
    return point_of(Shared().third);
}

}  // namespace zol::design
