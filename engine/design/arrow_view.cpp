#include <utility>

#include "engine/design/view_states.h"

namespace zol::design {

using engine::Vector3;

namespace {

ArrowHead head_of(double length) {
    // As drawings show them.
    return {length, length / 3};
}

}  // namespace

ObjectArrow::State::State(engine::DrawingArrow whole)
    : arrow(std::move(whole)),
      scaled(head_of(arrow.head_length * arrow.scale)),
      plain(head_of(arrow.head_length)) {
    const Vector3 way = engine::minus(arrow.points.back(), arrow.points.front());
    const double distance = engine::length(way);
    if (distance > 0) relative = {scaled.length / distance, scaled.width / distance};
}

ObjectArrow::ObjectArrow(std::shared_ptr<const State> state) : state_(std::move(state)) {}

ObjectArrow::~ObjectArrow() = default;

Point ObjectArrow::GetStart() const {
    return point_of(state_->arrow.points.front());
}

Point ObjectArrow::GetEnd() const {
    return point_of(state_->arrow.points.back());
}

Point ObjectArrow::GetNormal() const {
    return point_of(state_->arrow.normal);
}

bool ObjectArrow::GetArrowFlagA() const {
    return state_->arrow.has_head;
}

bool ObjectArrow::GetArrowFlagB() const {
    return state_->arrow.is_curved;
}

std::int32_t ObjectArrow::GetArrowCodeA() const {
    return state_->arrow.annotation;
}

double ObjectArrow::GetScaledHeadFirst() const {
    return state_->scaled.length;
}

double ObjectArrow::GetHeadFirst() const {
    return state_->plain.length;
}

double ObjectArrow::GetScaledHeadSecond() const {
    return state_->scaled.width;
}

double ObjectArrow::GetHeadSecond() const {
    return state_->plain.width;
}

double ObjectArrow::GetRelativeHeadFirst() const {
    return state_->relative.length;
}

double ObjectArrow::GetRelativeHeadSecond() const {
    return state_->relative.width;
}

std::int32_t ObjectArrow::GetArrowCodeB() const {
    return state_->arrow.hook;
}

}  // namespace zol::design
