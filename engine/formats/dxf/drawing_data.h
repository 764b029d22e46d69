// How a drawing is kept in memory, and the lists that its reader fills.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/formats/dxf/drawing.h"
#include "engine/formats/dxf/placing.h"
#include "engine/formats/growing_array.h"

namespace zol::engine {

/// How the points of a polyline are kept.
enum class Shape : std::uint8_t {
    /// As they are.
    Points,
    /// With a bulge and a mark for each, of which either may be missing.
    Bulges,
    /// Centre and both half axes; two angles in radians, counted from the first axis.
    Ellipse,
    /// Control points with their knots and weights.
    Spline,
};

inline constexpr std::uint32_t kNone = 0xFFFFFFFF;

/// An object, without what is kept in lists. A million of them are common.
struct DrawingRecord {
    std::uint64_t handle = 0;
    /// In `points`, for polylines and arrows.
    std::uint64_t first_point = 0;
    std::uint32_t point_count = 0;
    std::uint32_t layer = 0;
    /// In `curves`, `texts`, `arrows` or `dimensions`, or kNone.
    std::uint32_t detail = kNone;
    /// In `placings`, or kNone.
    std::uint32_t placing = kNone;
    std::uint32_t first_field = 0;
    std::uint32_t field_count = 0;
    /// 0x00RRGGBB, or kNone.
    std::uint32_t true_colour = kNone;
    /// In `names`, or kNone.
    std::uint32_t block = kNone;
    /// Of a prototype in a block, also kColourByBlock and kColourByLayer.
    std::int16_t colour = 0;
    std::int16_t line_weight = -3;
    /// 0 unbroken; of a prototype also kLineByBlock and kLineByLayer.
    std::uint16_t line_type = 0;
    std::uint8_t primitive = 0;
    DrawingKind kind = DrawingKind::Polyline;
    Shape shape = Shape::Points;
    bool is_closed = false;
    bool is_visible = true;
};

/// Behind the points of a curve.
struct DrawingCurve {
    /// In `reals`: bulges, angles, or knots and then weights.
    std::uint64_t first_real = 0;
    /// In `marks`, for as many as there are points.
    std::uint64_t first_mark = 0;
    std::uint32_t knot_count = 0;
    std::uint16_t degree = 0;
    bool has_bulges = false;
    bool has_marks = false;
    bool has_weights = false;
};

/// A run of bytes in `letters`.
struct DrawingLetters {
    std::uint64_t first = 0;
    std::uint32_t count = 0;
};

struct StoredText {
    Vector3 origin = {0, 0, 0};
    Vector3 direction = kXAxis;
    Vector3 normal = kZAxis;
    double rotation = 0;
    double height = 0;
    double width = 1;
    DrawingLetters lines;
    std::uint32_t style = kNone;
    std::uint32_t font = kNone;
    TextAcross across = TextAcross::Left;
    TextUp up = TextUp::Baseline;
    bool is_mirrored = false;
};

struct StoredArrow {
    Vector3 normal = kZAxis;
    double head_length = 0;
    double scale = 1;
    std::uint8_t annotation = 3;
    std::uint8_t hook = 0;
    bool has_head = true;
    bool is_curved = false;
};

struct StoredField {
    /// In `names`. The first few names are those of kOwnFields.
    std::uint32_t name = 0;
    DrawingLetters value;
};

/// Fields that are traits of their object and no metadata.
enum OwnField : std::uint32_t {
    kFieldName,
    kFieldGroup,
    kFieldFeature,
    kFieldDescription,
    kFieldValue
};
inline constexpr std::string_view kOwnFields[] = {"NAME", "GROUP", "FEATURE", "DESC", "VALUE"};

inline constexpr std::string_view kPrimitives[] = {
    "LINE",
    "POINT",
    "LWPOLYLINE",
    "POLYLINE",
    "ARC",
    "CIRCLE",
    "ELLIPSE",
    "SPLINE",
    "3DFACE",
    "SOLID",
    "TRACE",
    "TEXT",
    "ATTRIB",
    "MTEXT",
    "LEADER",
    "MULTILEADER",
    "DIMENSION",
    "ARC_DIMENSION",
    "LARGE_RADIAL_DIMENSION",
};

struct DrawingData {
    std::vector<DrawingLayer> layers;
    std::unordered_map<std::string, std::uint32_t> layer_of_folded_name;
    GrowingArray<DrawingRecord> objects;
    GrowingArray<Vector3> points;
    GrowingArray<double> reals;
    GrowingArray<std::uint8_t> marks;
    GrowingArray<DrawingCurve> curves;
    GrowingArray<Placing> placings;
    GrowingArray<StoredText> texts;
    GrowingArray<StoredArrow> arrows;
    std::vector<DrawingDimension> dimensions;
    GrowingArray<StoredField> fields;
    GrowingArray<char> letters;
    std::vector<std::string> names;
    std::vector<std::uint32_t> true_colours;
    std::vector<DrawingSkip> skipped;
    /// The objects sorted by layer; those of a layer begin at `first_of_layer`.
    std::vector<std::uint32_t> objects_by_layer;
    std::vector<std::uint32_t> first_of_layer;

    std::string_view Letters(const DrawingLetters& run) const {
        return {letters.View().data() + run.first, run.count};
    }
};

/// A to Z as small letters.
std::string folded(std::string_view text);

}  // namespace zol::engine
