// What readers of designs make of objects: fields, and the shapes of eight kinds.
//
// Coordinates are in the unit of the source, angles in degrees counter-clockwise.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "engine/formats/vector3.h"

namespace zol::engine {

enum class DrawingKind : std::uint8_t {
    Polyline,
    /// A single line of text that lies in the plan.
    Text,
    /// A text of many lines, and any text that doesn't lie in the plan.
    Text3D,
    Arrow,
    DimensionLine,
    DimensionRadius,
    DimensionArc,
    DimensionAngle,
};

/// What a source says of an object beyond what all objects have.
struct DrawingField {
    std::string name;
    std::string value;
};

enum class PointMark : std::uint8_t {
    None,
    /// Marked by the drawing: a control vertex, or one that a curve was fitted to.
    Control,
    /// Made by flattening a curve, here or by who wrote the file.
    Flattened,
};

struct DrawingPoint {
    Vector3 place;
    /// Of the segment of the drawing that begins here: the tangent of a quarter of its angle,
    /// positive to the left as seen from above. The flattened points behind it lie on its arc.
    double bulge = 0;
    PointMark mark = PointMark::None;
};

struct DrawingPolyline {
    /// The first is not told again at the end of a closed one, unless the source does so.
    std::vector<DrawingPoint> points;
    bool is_closed = false;
    bool is_curved = false;
};

enum class TextAcross : std::uint8_t { Unknown, Left, Centre, Right };
enum class TextUp : std::uint8_t { Unknown, Baseline, Bottom, Middle, Top };

struct DrawingText {
    std::vector<std::string> lines;
    Vector3 origin;
    /// Along the text, and out of its plane; of length 1.
    Vector3 direction = kXAxis;
    Vector3 normal = kZAxis;
    /// The angle of the direction in degrees, 0 to 360 counter-clockwise from the x axis.
    double rotation = 0;
    double height = 0;
    /// Width of a letter in relation to the usual one.
    double width = 1;
    /// Mirrored at a line across it, so that it is read against its direction.
    bool is_mirrored = false;
    TextAcross across = TextAcross::Left;
    TextUp up = TextUp::Baseline;
    std::string style;
    std::string font;
};

struct DrawingArrow {
    /// From the head to the end.
    std::vector<Vector3> points;
    Vector3 normal = kZAxis;
    bool has_head = true;
    bool is_curved = false;
    /// What stands at the end: 0 a text, 1 a tolerance, 2 a block, 3 nothing.
    int annotation = 3;
    /// The short line to the text: 0 none, 1 along the text, 2 against it.
    int hook = 0;
    /// The length of the head before the scale of its style, and that scale. A head is a third
    /// as wide as long.
    double head_length = 0;
    double scale = 1;
};

enum class DimensionTextPlace : std::uint8_t { InLine, Above, Outside, Standard, Below, Placed };

struct DrawingDimension {
    /// Line: both ends of the line with the text, and the normal. Radius: the centre, or the
    /// circle for a diameter, then the point on the circle, and the normal. Arc and angle: the
    /// origin, and where the arc with the text begins and ends, counter-clockwise from above.
    Vector3 first = {0, 0, 0};
    Vector3 second = {0, 0, 0};
    Vector3 third = kZAxis;
    Vector3 text_middle = {0, 0, 0};
    /// A length, or an angle in degrees.
    double measure = 0;
    /// As shown, with the measure written out in it.
    std::string text;
    std::string text_style;
    std::string style;
    double text_height = 0;
    double arrow_length = 0;
    /// Lines at the ends: how far they reach beyond, how far they stay away from the measured.
    double extension = 0;
    double offset = 0;
    double gap = 0;
    DimensionTextPlace place = DimensionTextPlace::InLine;
};

}  // namespace zol::engine
