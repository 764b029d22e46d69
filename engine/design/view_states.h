// What the views of an object answer from.
#pragma once

#include <utility>

#include "engine/design/object_record.h"
#include "platform/zolDesignViews.h"

namespace zol::design {

struct ObjectPolyline::State : engine::design::PolylineShape {
    explicit State(PolylineShape whole) : PolylineShape(std::move(whole)) {}
};

struct ObjectText::State : engine::DrawingText {
    explicit State(DrawingText whole) : DrawingText(std::move(whole)) {}
};

struct Object3DText::State : engine::DrawingText {
    explicit State(DrawingText whole) : DrawingText(std::move(whole)) {}
};

/// A head is computed once, where the rounding is known to be the usual one.
struct ArrowHead {
    double length = 0;
    double width = 0;
};

struct ObjectArrow::State {
    explicit State(engine::DrawingArrow whole);

    engine::DrawingArrow arrow;
    ArrowHead scaled;
    ArrowHead plain;
    ArrowHead relative;
};

struct ObjectDimension::State : engine::DrawingDimension {
    explicit State(DrawingDimension whole) : DrawingDimension(std::move(whole)) {}
};

/// As a point of a design, with nothing but its place.
inline Point point_of(const engine::Vector3& place) {
    return {place[0], place[1], place[2]};
}

}  // namespace zol::design
