#include <algorithm>
#include <cstddef>
#include <utility>

#include "engine/design/view_states.h"

namespace zol::design {

using engine::DrawingPoint;
using engine::PointMark;

namespace {

const DrawingPoint& point_at(const ObjectPolyline::State& state, int index) {
    return state.line.points[static_cast<std::size_t>(index)];
}

bool is_flattened(const DrawingPoint& point) {
    return point.mark == PointMark::Flattened;
}

}  // namespace

Point::Point(double x, double y, double z) : x_(x), y_(y), z_(z) {}

Point::Point(double x, double y, double z, double w, std::int32_t t, std::string name)
    : x_(x), y_(y), z_(z), w_(w), t_(t), name_(std::move(name)) {}

Point::Point(const Point& other) = default;

Point& Point::operator=(const Point& other) = default;

Point::~Point() = default;

void Point::GetXyz(double* x, double* y, double* z) const {
    *x = x_;
    *y = y_;
    *z = z_;
}

void Point::GetXyzwtn(double* x, double* y, double* z, double* w, std::int32_t* t,
                      std::string* name) const {
    GetXyz(x, y, z);
    *w = w_;
    *t = t_;
    *name = name_;
}

ObjectPolyline::ObjectPolyline(std::shared_ptr<const State> state) : state_(std::move(state)) {}

ObjectPolyline::~ObjectPolyline() = default;

LineType ObjectPolyline::GetLineType() const {
    return {state_->line_type};
}

LineCode ObjectPolyline::GetLineCode() const {
    return {state_->line_weight};
}

int ObjectPolyline::NPoints() const {
    return static_cast<int>(state_->line.points.size());
}

Point ObjectPolyline::GetPoint(int index) const {
    const DrawingPoint& point = point_at(*state_, index);
    const auto& [x, y, z] = point.place;
    const auto& names = state_->point_names;
    return {x,
            y,
            z,
            point.bulge,
            index > 0 ? 1 : 0,
            names.empty() ? std::string() : names[static_cast<std::size_t>(index)]};
}

bool ObjectPolyline::GetPolylineFlagA() const {
    return state_->line.is_closed;
}

bool ObjectPolyline::GetPolylineFlagB(int part) const {
    const auto& points = state_->line.points;
    if (part == 0) return std::any_of(points.begin(), points.end(), is_flattened);
    // Parts are segments, the first of which leads from the first point to the second.
    const auto count = static_cast<int>(points.size());
    if (part < 0 || part > count) return false;
    return is_flattened(point_at(*state_, part - 1)) ||
           is_flattened(point_at(*state_, part % count));
}

bool ObjectPolyline::IsPointKindTwo(int index) const {
    return is_flattened(point_at(*state_, index));
}

bool ObjectPolyline::IsPointKindOne(int index) const {
    return point_at(*state_, index).mark == PointMark::Control;
}

}  // namespace zol::design
