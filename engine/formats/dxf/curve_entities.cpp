// Arcs, ellipses and splines: kept as they are told, and flattened when asked for.
#include <cmath>
#include <numbers>

#include "engine/formats/dxf/entities.h"
#include "engine/formats/dxf/flattening.h"

namespace zol::engine {

namespace {

constexpr double kTurn = 2 * std::numbers::pi;

void set_ellipse(const Vector3& centre, const Vector3& across, const Vector3& up, double begin,
                 double end, DrawingRecord& record, DrawingBuilder& builder) {
    const Vector3 parts[] = {centre, across, up};
    builder.SetPoints(parts, record);
    DrawingCurve curve;
    curve.first_real = builder.Data().reals.Size();
    builder.Data().reals.Add(begin);
    builder.Data().reals.Add(end);
    record.shape = Shape::Ellipse;
    record.detail = builder.AddCurve(curve);
}

void set_circle(const Entity& entity, double begin, double end, DrawingRecord& record,
                DrawingBuilder& builder) {
    const double radius = entity.Real(40);
    set_ellipse(entity.Point(10), {radius, 0, 0}, {0, radius, 0}, begin, end, record, builder);
    record.placing = builder.PlaneOf(entity.Normal());
}

bool is_circle(const Entity& entity) {
    return entity.Has(10) && entity.Has(20) && entity.Real(40) > 0;
}

// From `begin` on, more than 0 and at most a turn.
double sweep_of(double begin, double end, double turn) {
    const double sweep = std::fmod(end - begin, turn);
    return sweep > 0 ? sweep : sweep + turn;
}

}  // namespace

bool make_circle(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder) {
    if (!is_circle(entity)) return false;
    record.is_closed = true;
    set_circle(entity, 0, kTurn, record, builder);
    return true;
}

bool make_arc(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder) {
    if (!is_circle(entity)) return false;
    const double begin = std::fmod(entity.Real(50), 360);
    const double sweep = sweep_of(begin, std::fmod(entity.Real(51), 360), 360);
    set_circle(entity, begin * std::numbers::pi / 180, (begin + sweep) * std::numbers::pi / 180,
               record, builder);
    return true;
}

bool make_ellipse(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder) {
    // Parameters are written with as many digits as a writer likes.
    constexpr double kClose = 1e-9;
    const Vector3 across = entity.Point(11);
    if (!entity.Has(10) || !(length(across) > 0)) return false;
    const Vector3 normal = unit(entity.Normal(), kZAxis);
    const Vector3 up = times(cross(normal, across), entity.Real(40, 1));
    const double begin = std::fmod(entity.Real(41), kTurn);
    const double raw_end = entity.Real(42, kTurn);
    double sweep = std::fabs(raw_end - entity.Real(41) - kTurn) < kClose
                       ? kTurn
                       : sweep_of(begin, std::fmod(raw_end, kTurn), kTurn);
    if (sweep > kTurn - kClose || sweep < kClose) sweep = kTurn;
    record.is_closed = sweep == kTurn;
    set_ellipse(entity.Point(10), across, up, begin, begin + sweep, record, builder);
    return true;
}

bool make_spline(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder) {
    std::vector<Vector3> controls;
    std::vector<Vector3> fits;
    std::vector<double> knots;
    std::vector<double> weights;
    for (const ListedReal& listed : entity.Listed()) {
        std::vector<Vector3>& points = listed.code % 10 == 0 ? controls : fits;
        if (listed.code == 40) {
            knots.push_back(listed.value);
        } else if (listed.code == 41) {
            weights.push_back(listed.value);
        } else if (listed.code == 10 || listed.code == 11) {
            points.push_back({listed.value, 0, 0});
        } else if (listed.code < 32 && listed.code % 10 < 2 && !points.empty()) {
            points.back()[static_cast<std::size_t>(listed.code / 10 - 1)] = listed.value;
        }
    }
    record.is_closed = (entity.Whole(70) & 1) != 0;
    if (is_whole({entity.Whole(71, 3), controls, knots, weights})) {
        builder.SetPoints(controls, record);
        DrawingCurve curve;
        curve.first_real = builder.Data().reals.Size();
        curve.knot_count = static_cast<std::uint32_t>(knots.size());
        curve.degree = static_cast<std::uint16_t>(entity.Whole(71, 3));
        curve.has_weights = !weights.empty();
        for (const double knot : knots) builder.Data().reals.Add(knot);
        for (const double weight : weights) builder.Data().reals.Add(weight);
        record.shape = Shape::Spline;
        record.detail = builder.AddCurve(curve);
        return true;
    }
    // Without control points, through the points that it was fitted to.
    if (!controls.empty() || fits.size() < 2) return false;
    VertexList vertices(builder);
    for (const Vector3& fit : fits) {
        vertices.Add(fit);
        vertices.SetMark(PointMark::Control);
    }
    return vertices.Finish(record);
}

}  // namespace zol::engine
