#include <utility>

#include "engine/design/view_states.h"

namespace zol::design {

using engine::Vector3;

namespace {

/// As drawings show them.
constexpr double kWidthOfLength = 1.0 / 3.0;

double relative(double part, const ObjectArrow::State& arrow) {
    const Vector3 way = engine::minus(arrow.points.back(), arrow.points.front());
    const double distance = engine::length(way);
    return distance > 0 ? part / distance : 0;
}

double scaled_length(const ObjectArrow::State& arrow) {
    return arrow.head_length * arrow.scale;
}

}  // namespace

ObjectArrow::ObjectArrow(std::shared_ptr<const State> state) : state_(std::move(state)) {}

ObjectArrow::~ObjectArrow() = default;

Point ObjectArrow::GetStart() const {
    return point_of(state_->points.front());
}

Point ObjectArrow::GetEnd() const {
    return point_of(state_->points.back());
}

Point ObjectArrow::GetNormal() const {
    return point_of(state_->normal);
}

bool ObjectArrow::GetArrowFlagA() const {
    return state_->has_head;
}

bool ObjectArrow::GetArrowFlagB() const {
    return state_->is_curved;
}

std::int32_t ObjectArrow::GetArrowCodeA() const {
    return state_->annotation;
}

double ObjectArrow::GetScaledHeadFirst() const {
    return scaled_length(*state_);
}

double ObjectArrow::GetHeadFirst() const {
    return state_->head_length;
}

double ObjectArrow::GetScaledHeadSecond() const {
    return scaled_length(*state_) * kWidthOfLength;
}

double ObjectArrow::GetHeadSecond() const {
    return state_->head_length * kWidthOfLength;
}

double ObjectArrow::GetRelativeHeadFirst() const {
    return relative(scaled_length(*state_), *state_);
}

double ObjectArrow::GetRelativeHeadSecond() const {
    return relative(scaled_length(*state_) * kWidthOfLength, *state_);
}

std::int32_t ObjectArrow::GetArrowCodeB() const {
    return state_->hook;
}

}  // namespace zol::design
