// DIMENSION of all types, ARC_DIMENSION and LARGE_RADIAL_DIMENSION.
#include <algorithm>
#include <cmath>
#include <numbers>

#include "engine/formats/dxf/entities.h"
#include "engine/formats/dxf/text_codes.h"

namespace zol::engine {

namespace {

// The low bits of code 70, which the entities of a name of their own use for something else.
enum Type { kLinear, kAligned, kAngleOfLines, kDiameter, kRadius, kAngleOfPoints, kOrdinate };
constexpr int kTypeBits = 15;
constexpr int kOrdinateInX = 64;
constexpr int kTextIsPlaced = 128;

constexpr double kRadians = std::numbers::pi / 180;

// From `begin` to `end` in degrees, from 0 to below 360, counter-clockwise.
double turn_between(double begin, double end) {
    const double turned = std::fmod(end - begin, 360);
    return turned < 0 ? turned + 360 : turned;
}

// The line with the text runs in `direction` through the point of code 10.
void set_line(const Entity& entity, const Vector3& direction, DrawingDimension& dimension) {
    const Vector3 on_line = entity.Point(10);
    const Vector3 from = entity.Point(13);
    const Vector3 to = entity.Point(14);
    dimension.first = plus(on_line, times(direction, dot(minus(from, on_line), direction)));
    dimension.second = plus(on_line, times(direction, dot(minus(to, on_line), direction)));
    dimension.measure = std::fabs(dot(minus(to, from), direction));
}

void set_ordinate(const Entity& entity, const Placing& plane, DrawingDimension& dimension) {
    // The axes may be turned against those of the plane, clockwise by code 51.
    const Placing axes = plane.After(turn(-entity.Real(51)));
    const Vector3 apart = minus(entity.Point(13), entity.Point(10));
    const bool is_in_x = (entity.Whole(70) & kOrdinateInX) != 0;
    dimension.first = entity.Point(13);
    dimension.second = entity.Point(14);
    dimension.measure = dot(apart, is_in_x ? axes.x : axes.y);
}

// An angle seen in the plane of the dimension.
class PlaneAngle {
public:
    PlaneAngle(const Placing& plane, const Vector3& origin) : plane_(plane), origin_(origin) {}

    double Degrees(const Vector3& direction) const {
        return std::atan2(dot(direction, plane_.y), dot(direction, plane_.x)) / kRadians;
    }
    double DegreesTo(const Vector3& point) const { return Degrees(minus(point, origin_)); }

    // The arc through `on_arc` between two directions in degrees; the angle is the measure.
    void Set(double begin, double end, const Vector3& on_arc, DrawingDimension& dimension) const {
        if (turn_between(begin, DegreesTo(on_arc)) > turn_between(begin, end)) {
            std::swap(begin, end);
        }
        const double radius = length(minus(on_arc, origin_));
        dimension.measure = turn_between(begin, end);
        dimension.first = origin_;
        dimension.second = At(begin, radius);
        dimension.third = At(end, radius);
        if (!plane_.KeepsTurns()) std::swap(dimension.second, dimension.third);
    }

private:
    Vector3 At(double degrees, double radius) const {
        return plus(origin_, plane_.Direction(times(turn(degrees).x, radius)));
    }

    const Placing& plane_;
    const Vector3& origin_;
};

// Where two lines of a plane meet; false for parallel ones.
bool meeting_point(const Placing& plane, const Vector3& p, const Vector3& along_p, const Vector3& q,
                   const Vector3& along_q, Vector3& meeting) {
    constexpr double kParallel = 1e-12;
    const Vector3 u = unit(along_p, kXAxis);
    const Vector3 v = unit(along_q, kXAxis);
    const double across = dot(cross(u, v), plane.z);
    if (std::fabs(across) < kParallel) return false;
    const double part = dot(cross(minus(q, p), v), plane.z) / across;
    meeting = plus(p, times(u, part));
    return true;
}

bool set_angle_of_lines(const Entity& entity, const Placing& plane, DrawingDimension& dimension) {
    const Vector3 first = minus(entity.Point(14), entity.Point(13));
    const Vector3 second = minus(entity.Point(10), entity.Point(15));
    Vector3 origin;
    if (!meeting_point(plane, entity.Point(13), first, entity.Point(15), second, origin)) {
        return false;
    }
    const Vector3 on_arc = plane.Point(entity.Point(16));
    const PlaneAngle angle(plane, origin);
    // Of the four angles at the point, the one that holds the arc.
    const double at_arc = angle.DegreesTo(on_arc);
    double begin = angle.Degrees(first);
    double end = angle.Degrees(second);
    if (turn_between(begin, end) > 180) std::swap(begin, end);
    // `end` is now less than half a turn to the left of `begin`.
    const double turned = turn_between(begin, at_arc);
    const double inner = turn_between(begin, end);
    if (turned <= inner) {
        angle.Set(begin, end, on_arc, dimension);
    } else if (turned <= 180) {
        angle.Set(end, begin + 180, on_arc, dimension);
    } else if (turned <= 180 + inner) {
        angle.Set(begin + 180, end + 180, on_arc, dimension);
    } else {
        angle.Set(end + 180, begin + 360, on_arc, dimension);
    }
    return true;
}

// Code 1: nothing or <> is the measure, a blank is no text at all.
std::string text_of(const Entity& entity, const std::string& measure, DrawingBuilder& builder) {
    std::string text = builder.Decode(entity.Text(1));
    if (text.empty()) return measure;
    if (text == " ") return {};
    // No longer than it is, whatever it repeats.
    constexpr std::size_t kMostMeasures = 16;
    std::size_t at = 0;
    for (std::size_t i = 0; i < kMostMeasures; ++i) {
        at = text.find("<>", at);
        if (at == text.npos) break;
        text.replace(at, 2, measure);
        at += measure.size();
    }
    std::string shown = shown_text(text).lines;
    std::replace(shown.begin(), shown.end(), '\n', ' ');
    return shown;
}

bool add(const Entity& entity, DrawingKind kind, MeasureKind measure, const Placing& plane,
         DrawingDimension& dimension, DrawingRecord& record, DrawingBuilder& builder) {
    const DimensionStyle style = builder.StyleOf(entity);
    dimension.text_middle = plane.Point(entity.Point(11));
    dimension.text = text_of(entity, measure_text(dimension.measure, measure, style), builder);
    dimension.style = style.name;
    dimension.text_style = style.text_style;
    dimension.text_height = style.text_height * style.scale;
    dimension.arrow_length = style.arrow_length * style.scale;
    dimension.extension = style.extension * style.scale;
    dimension.offset = style.offset * style.scale;
    dimension.gap = style.gap * style.scale;
    const int place = (entity.Whole(70) & kTextIsPlaced) != 0
                          ? static_cast<int>(DimensionTextPlace::Placed)
                          : std::clamp(style.text_place, 0, 4);
    dimension.place = static_cast<DimensionTextPlace>(place);
    record.kind = kind;
    record.detail = static_cast<std::uint32_t>(builder.Data().dimensions.size());
    builder.Data().dimensions.push_back(std::move(dimension));
    return true;
}

bool set_radius(const Entity& entity, DrawingDimension& dimension) {
    dimension.first = entity.Point(10);
    dimension.second = entity.Point(15);
    dimension.measure = length(minus(dimension.second, dimension.first));
    return entity.Has(10) && entity.Has(15);
}

}  // namespace

bool make_dimension(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder) {
    const Placing plane = plane_of(entity.Normal());
    DrawingDimension dimension;
    dimension.third = plane.z;
    const auto finish = [&](DrawingKind kind, MeasureKind measure) {
        return add(entity, kind, measure, plane, dimension, record, builder);
    };
    switch (entity.Whole(70) & kTypeBits) {
        case kLinear:
            if (!entity.Has(13) || !entity.Has(14)) return false;
            set_line(entity, plane.Direction(turn(entity.Real(50)).x), dimension);
            return finish(DrawingKind::DimensionLine, MeasureKind::Length);
        case kAligned:
            if (!entity.Has(13) || !entity.Has(14)) return false;
            set_line(entity, unit(minus(entity.Point(14), entity.Point(13)), plane.x), dimension);
            return finish(DrawingKind::DimensionLine, MeasureKind::Length);
        case kAngleOfLines:
            if (!entity.Has(13) || !entity.Has(15) || !entity.Has(16)) return false;
            if (!set_angle_of_lines(entity, plane, dimension)) return false;
            return finish(DrawingKind::DimensionAngle, MeasureKind::Angle);
        case kDiameter:
            if (!set_radius(entity, dimension)) return false;
            std::swap(dimension.first, dimension.second);
            return finish(DrawingKind::DimensionRadius, MeasureKind::Diameter);
        case kRadius:
            if (!set_radius(entity, dimension)) return false;
            return finish(DrawingKind::DimensionRadius, MeasureKind::Radius);
        case kAngleOfPoints: {
            if (!entity.Has(13) || !entity.Has(14) || !entity.Has(15)) return false;
            const Vector3 origin = entity.Point(15);
            const PlaneAngle angle(plane, origin);
            angle.Set(angle.DegreesTo(entity.Point(13)), angle.DegreesTo(entity.Point(14)),
                      entity.Point(10), dimension);
            return finish(DrawingKind::DimensionAngle, MeasureKind::Angle);
        }
        case kOrdinate:
            if (!entity.Has(13)) return false;
            set_ordinate(entity, plane, dimension);
            return finish(DrawingKind::DimensionLine, MeasureKind::Length);
        default:
            return false;
    }
}

bool make_arc_dimension(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder) {
    if (!entity.Has(13) || !entity.Has(14) || !entity.Has(15)) return false;
    const Placing plane = plane_of(entity.Normal());
    DrawingDimension dimension;
    const Vector3 origin = entity.Point(15);
    const PlaneAngle angle(plane, origin);
    angle.Set(angle.DegreesTo(entity.Point(13)), angle.DegreesTo(entity.Point(14)),
              entity.Point(10), dimension);
    dimension.measure *= kRadians * length(minus(entity.Point(13), origin));
    return add(entity, DrawingKind::DimensionArc, MeasureKind::Arc, plane, dimension, record,
               builder);
}

bool make_large_radial_dimension(const Entity& entity, DrawingRecord& record,
                                 DrawingBuilder& builder) {
    const Placing plane = plane_of(entity.Normal());
    DrawingDimension dimension;
    dimension.third = plane.z;
    if (!set_radius(entity, dimension)) return false;
    return add(entity, DrawingKind::DimensionRadius, MeasureKind::Radius, plane, dimension, record,
               builder);
}

}  // namespace zol::engine
