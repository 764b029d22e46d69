#include "engine/formats/dxf/flattening.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace zol::engine {

namespace {

int pieces_of(double radians) {
    constexpr double kStep = kMostDegreesOfChord * std::numbers::pi / 180;
    // A whole number of steps is not to become one more by rounding.
    const double pieces = std::ceil(std::fabs(radians) / kStep - 1e-9);
    return static_cast<int>(std::clamp(pieces, 1.0, 360 / kMostDegreesOfChord));
}

// The points between two vertices. From the first vertex to a point at the angle a of an arc of
// the angle b is the chord, sin(a/2) / sin(b/2) as long and turned by (a-b)/2: no centre is
// needed, which is far away for a flat arc.
void add_arc(const Vector3& from, const Vector3& to, double bulge,
             std::vector<DrawingPoint>& points) {
    const double angle = 4 * std::atan(bulge);
    const int pieces = pieces_of(angle);
    const double whole = std::sin(angle / 2);
    if (whole == 0) return;
    const double x = to[0] - from[0];
    const double y = to[1] - from[1];
    for (int i = 1; i < pieces; ++i) {
        const double part = static_cast<double>(i) / pieces;
        const double size = std::sin(angle * part / 2) / whole;
        const double c = size * std::cos(angle * (part - 1) / 2);
        const double s = size * std::sin(angle * (part - 1) / 2);
        const double z = from[2] + (to[2] - from[2]) * part;
        points.push_back(
            {{from[0] + x * c - y * s, from[1] + x * s + y * c, z}, 0, PointMark::Flattened});
    }
}

// One curve of one spline, by de Boor's scheme on homogeneous coordinates.
class SplineWalk {
public:
    explicit SplineWalk(const SplineCurve& curve)
        : curve_(curve), degree_(static_cast<std::size_t>(curve.degree)) {
        Vector3 least = curve.controls.front();
        Vector3 most = least;
        for (const Vector3& control : curve.controls) {
            for (std::size_t k = 0; k < 3; ++k) {
                least[k] = std::min(least[k], control[k]);
                most[k] = std::max(most[k], control[k]);
            }
        }
        const Vector3 box = minus(most, least);
        tolerance_ = kTolerance * std::max({box[0], box[1], box[2]});
    }

    std::vector<DrawingPoint> Walk() {
        const std::span<const double> knots = curve_.knots;
        const std::size_t last = curve_.controls.size();
        Add(At(knots[degree_], degree_));
        for (std::size_t span = degree_; span < last; ++span) {
            if (!(knots[span + 1] > knots[span])) continue;
            span_ = span;
            const Vector3 begin = points_.back().place;
            const Vector3 end = At(knots[span + 1], span);
            if (degree_ > 1) Part(knots[span], begin, knots[span + 1], end, 0);
            Add(end);
        }
        return std::move(points_);
    }

private:
    static constexpr double kTolerance = 1e-4;
    static constexpr int kLeastDepth = 3;
    static constexpr int kMostDepth = 8;

    void Add(const Vector3& place) { points_.push_back({place, 0, PointMark::Flattened}); }

    // Halves as long as the middle is off the chord. A curve with a turn in it may meet its
    // chord there, so it is parted a few times whatever that says.
    void Part(double t0, const Vector3& begin, double t1, const Vector3& end, int depth) {
        if (depth == kMostDepth) return;
        const double t = t0 + (t1 - t0) / 2;
        const Vector3 middle = At(t, span_);
        const Vector3 of_chord = times(plus(begin, end), 0.5);
        if (depth >= kLeastDepth && length(minus(middle, of_chord)) <= tolerance_) return;
        Part(t0, begin, t, middle, depth + 1);
        Add(middle);
        Part(t, middle, t1, end, depth + 1);
    }

    Vector3 At(double t, std::size_t span) const {
        std::array<std::array<double, 4>, kMostSplineDegree + 1> parts;
        for (std::size_t j = 0; j <= degree_; ++j) {
            const std::size_t control = span - degree_ + j;
            const double weight = curve_.weights.empty() ? 1 : curve_.weights[control];
            const Vector3& place = curve_.controls[control];
            parts[j] = {place[0] * weight, place[1] * weight, place[2] * weight, weight};
        }
        for (std::size_t round = 1; round <= degree_; ++round) {
            for (std::size_t j = degree_; j >= round; --j) {
                const double low = curve_.knots[span - degree_ + j];
                const double high = curve_.knots[span + 1 + j - round];
                const double part = high > low ? (t - low) / (high - low) : 0;
                for (std::size_t k = 0; k < 4; ++k) {
                    parts[j][k] = (1 - part) * parts[j - 1][k] + part * parts[j][k];
                }
            }
        }
        const std::array<double, 4>& whole = parts[degree_];
        return {whole[0] / whole[3], whole[1] / whole[3], whole[2] / whole[3]};
    }

    const SplineCurve& curve_;
    std::size_t degree_;
    std::size_t span_ = 0;
    double tolerance_ = 0;
    std::vector<DrawingPoint> points_;
};

}  // namespace

std::vector<DrawingPoint> flatten_bulges(std::span<const Vector3> vertices,
                                         std::span<const double> bulges,
                                         std::span<const std::uint8_t> marks, bool is_closed) {
    std::vector<DrawingPoint> points;
    if (bulges.empty() && marks.empty()) {
        points.resize(vertices.size());
        for (std::size_t i = 0; i < vertices.size(); ++i) points[i].place = vertices[i];
        return points;
    }
    points.reserve(vertices.size());
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        const double bulge = bulges.empty() ? 0 : bulges[i];
        const auto mark = marks.empty() ? PointMark::None : static_cast<PointMark>(marks[i]);
        points.push_back({vertices[i], bulge, mark});
        const bool is_last = i + 1 == vertices.size();
        if (bulge == 0 || (is_last && !is_closed)) continue;
        add_arc(vertices[i], vertices[is_last ? 0 : i + 1], bulge, points);
    }
    return points;
}

std::vector<DrawingPoint> flatten_ellipse(const Vector3& centre, const Vector3& across,
                                          const Vector3& up, double begin, double end,
                                          bool is_closed) {
    const int pieces = pieces_of(end - begin);
    const int last = is_closed ? pieces - 1 : pieces;
    std::vector<DrawingPoint> points;
    points.reserve(static_cast<std::size_t>(pieces) + 1);
    for (int i = 0; i <= last; ++i) {
        const double t = i == pieces ? end : begin + (end - begin) * i / pieces;
        const bool is_end = !is_closed && (i == 0 || i == pieces);
        points.push_back({plus(centre, plus(times(across, std::cos(t)), times(up, std::sin(t)))), 0,
                          is_end ? PointMark::None : PointMark::Flattened});
    }
    return points;
}

bool is_whole(const SplineCurve& curve) {
    if (curve.degree < 1 || curve.degree > kMostSplineDegree) return false;
    const auto degree = static_cast<std::size_t>(curve.degree);
    const std::size_t count = curve.controls.size();
    if (count < degree + 1 || curve.knots.size() != count + degree + 1) return false;
    if (!std::is_sorted(curve.knots.begin(), curve.knots.end())) return false;
    if (!(curve.knots[degree] < curve.knots[count])) return false;
    if (curve.weights.empty()) return true;
    // Of weights that differ too much, sums lose the lesser ones.
    constexpr double kLeastWeight = 1e-12;
    constexpr double kMostWeight = 1e12;
    return curve.weights.size() == count &&
           std::all_of(curve.weights.begin(), curve.weights.end(),
                       [](double w) { return w >= kLeastWeight && w <= kMostWeight; });
}

std::vector<DrawingPoint> flatten_spline(const SplineCurve& curve) {
    std::vector<DrawingPoint> points = SplineWalk(curve).Walk();
    // A curve that is held at its ends goes through its first and last control point.
    if (points.front().place == curve.controls.front()) points.front().mark = PointMark::Control;
    if (points.back().place == curve.controls.back()) points.back().mark = PointMark::Control;
    return points;
}

}  // namespace zol::engine
