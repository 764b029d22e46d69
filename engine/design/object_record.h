// An object of a layer as its reader hands it over, whole.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "engine/formats/drawing_shapes.h"

namespace zol::engine::design {

/// Of a kind that only its reader knows.
struct PolylineShape {
    DrawingPolyline line;
    /// Names of the points, as many as there are, or none.
    std::vector<std::string> point_names;
    /// See zol::design::LineType and LineCode.
    int line_type = 0;
    int line_weight = -3;
};

/// Nothing for what is no object here.
using ObjectShape =
    std::variant<std::monostate, PolylineShape, DrawingText, DrawingArrow, DrawingDimension>;

struct ObjectRecord {
    /// Which of the kinds the shape is of; meaningless without a shape.
    DrawingKind kind = DrawingKind::Polyline;
    ObjectShape shape;
    std::string name;
    std::string group;
    std::string feature;
    std::string description;
    /// What the source calls this kind of object.
    std::string primitive;
    double value = 0;
    /// A position in the colour table of the source.
    int colour = 0;
    std::vector<DrawingField> fields;
    /// Why the object could not be read whole; empty when it was.
    std::string error;
};

}  // namespace zol::engine::design
