// Objects, points and metadata.
#include "tests/doubles/scripted_design.h"

#include <utility>

#include "tests/doubles/scripted_design_answers.h"

namespace zol::design {

using doubles::note;
using doubles::real;
using doubles::text;
using doubles::truth;
using doubles::whole;

Point::Point(double x, double y, double z) : x_(x), y_(y), z_(z) {}

Point::Point(double x, double y, double z, double w, std::int32_t t, std::string name)
    : x_(x), y_(y), z_(z), w_(w), t_(t), name_(std::move(name)) {}

Point::Point(const Point& other) = default;

Point& Point::operator=(const Point& other) = default;

Point::~Point() = default;

void Point::GetXyz(double* x, double* y, double* z) const {
    note("Point::GetXyz");
    *x = x_;
    *y = y_;
    *z = z_;
}

void Point::GetXyzwtn(double* x, double* y, double* z, double* w, std::int32_t* t,
                      std::string* name) const {
    note("Point::GetXyzwtn");
    *x = x_;
    *y = y_;
    *z = z_;
    *w = w_;
    *t = t_;
    *name = name_;
}

struct Metadata::State {};

Metadata::Metadata(std::shared_ptr<const State> state) : state_(std::move(state)) {}

Metadata::Metadata(const Metadata& other) = default;

Metadata::~Metadata() = default;

bool Metadata::HasMetadata() const {
    return truth("Metadata::HasMetadata");
}

int Metadata::NFields() const {
    return whole("Metadata::NFields");
}

bool Metadata::HasField(const std::string& name) const {
    return truth("Metadata::HasField", name);
}

int Metadata::GetFieldIndex(const std::string& name) const {
    return whole("Metadata::GetFieldIndex", name);
}

std::string Metadata::GetField(int position) const {
    return text("Metadata::GetField", position);
}

std::string Metadata::GetValue(int position) const {
    return text("Metadata::GetValue", position);
}

std::string Metadata::GetValue(const std::string& name) const {
    return text("Metadata::GetValue", name);
}

struct Object::State {
    ObjectPolyline polyline{nullptr};
    ObjectText text{nullptr};
    ObjectDimensionLine line{nullptr};
    ObjectDimensionRadius radius{nullptr};
    ObjectDimensionArc arc{nullptr};
    ObjectDimensionAngle angle{nullptr};
    Object3DText text_3d{nullptr};
    ObjectArrow arrow{nullptr};
};

Object::Object() : state_(std::make_unique<State>()) {
    note("Object::Object");
}

Object::~Object() {
    doubles::design_journal.emplace_back("Object::~Object");
}

std::string Object::GetName() const {
    return text("Object::GetName");
}

std::string Object::GetFeature() const {
    return text("Object::GetFeature");
}

std::string Object::GetGroup() const {
    return text("Object::GetGroup");
}

std::string Object::GetPrimitive() const {
    return text("Object::GetPrimitive");
}

double Object::GetValue() const {
    return real("Object::GetValue");
}

ColourIndex Object::GetColour() const {
    return {whole("Object::GetColour")};
}

std::string Object::GetDescription() const {
    return text("Object::GetDescription");
}

Metadata Object::GetMetadata() const {
    note("Object::GetMetadata");
    return Metadata(nullptr);
}

bool Object::HasError() const {
    return truth("Object::HasError");
}

std::string Object::GetError() const {
    return text("Object::GetError");
}

ObjectType Object::GetType() const {
    return static_cast<ObjectType>(whole("Object::GetType"));
}

bool Object::IsPolyline() const {
    return truth("Object::IsPolyline");
}

ObjectPolyline& Object::AsPolyline() {
    note("Object::AsPolyline");
    return state_->polyline;
}

bool Object::IsText() const {
    return truth("Object::IsText");
}

ObjectText& Object::AsText() {
    note("Object::AsText");
    return state_->text;
}

bool Object::IsDimensionLine() const {
    return truth("Object::IsDimensionLine");
}

ObjectDimensionLine& Object::AsDimensionLine() {
    note("Object::AsDimensionLine");
    return state_->line;
}

bool Object::IsDimensionRadius() const {
    return truth("Object::IsDimensionRadius");
}

ObjectDimensionRadius& Object::AsDimensionRadius() {
    note("Object::AsDimensionRadius");
    return state_->radius;
}

bool Object::IsDimensionArc() const {
    return truth("Object::IsDimensionArc");
}

ObjectDimensionArc& Object::AsDimensionArc() {
    note("Object::AsDimensionArc");
    return state_->arc;
}

bool Object::IsDimensionAngle() const {
    return truth("Object::IsDimensionAngle");
}

ObjectDimensionAngle& Object::AsDimensionAngle() {
    note("Object::AsDimensionAngle");
    return state_->angle;
}

bool Object::Is3DText() const {
    return truth("Object::Is3DText");
}

Object3DText& Object::As3DText() {
    note("Object::As3DText");
    return state_->text_3d;
}

bool Object::IsArrow() const {
    return truth("Object::IsArrow");
}

ObjectArrow& Object::AsArrow() {
    note("Object::AsArrow");
    return state_->arrow;
}

}  // namespace zol::design
