#include "tests/doubles/scripted_triangulation.h"

#include <utility>

#include "tests/doubles/journal.h"

namespace zol::doubles {

TriangulationScript triangulation_script;
std::vector<std::string> triangulation_journal;

namespace {

template <class... Arguments>
void note(const char* operation, const Arguments&... arguments) {
    triangulation_journal.push_back(journal_entry(operation, arguments...));
    if (triangulation_script.throwing == operation) {
        throw TriangulationFailure(operation);
    }
}

class ScriptedProperty final : public ubx::object::Property {
public:
    ScriptedProperty(const ubx::object::TypeDescriptor* type, ScriptedValue value)
        : Property(type), value_(std::move(value)) {}

    std::int32_t AsInt32() const override { return value_.int32; }
    std::int64_t AsInt64() const override { return value_.int64; }
    bool AsBoolean() const override { return value_.boolean; }
    double AsDouble() const override { return value_.real; }
    std::string& AsString(std::string& text, int decimals) const override {
        note("Property::AsString", decimals);
        text = value_.text;
        return text;
    }

private:
    ScriptedValue value_;
};

class ScriptedLibrary final : public ubx::object::PropertyLibrary {
public:
    Position Begin() const override {
        note("PropertyLibrary::Begin");
        return triangulation_script.attributes.begin();
    }
    Position End() const override { return triangulation_script.attributes.end(); }
};

}  // namespace

void TriangulationScript::Add(const std::string& name, const ubx::object::TypeDescriptor* type,
                              ScriptedValue value) {
    attributes.emplace_back(name, std::make_shared<ScriptedProperty>(type, std::move(value)));
}

}  // namespace zol::doubles

namespace ubx::object {

Property::~Property() = default;

std::int32_t Property::TypeId() const {
    return type_->id;
}

std::string Property::TypeName() const {
    return type_ == nullptr ? std::string() : type_->name;
}

PropertyLibrary::~PropertyLibrary() = default;

}  // namespace ubx::object

namespace zol::model::tri {

using doubles::note;
using doubles::triangulation_script;

struct TriProperties::State {};

TriProperties::TriProperties(std::shared_ptr<const State> state) : state_(std::move(state)) {}

TriProperties::TriProperties(const TriProperties& other) : state_(other.state_) {
    note("TriProperties::TriProperties");
}

TriProperties::~TriProperties() = default;

graphics::RGB TriProperties::GetColour() const {
    note("TriProperties::GetColour");
    return {triangulation_script.colour};
}

bool TriProperties::IsTextured() const {
    note("TriProperties::IsTextured");
    return triangulation_script.predicate;
}

std::string TriProperties::GetTexture() const {
    note("TriProperties::GetTexture");
    return triangulation_script.texture;
}

bool TriProperties::IsTranslucent() const {
    note("TriProperties::IsTranslucent");
    return triangulation_script.predicate;
}

float TriProperties::GetTranslucency() const {
    note("TriProperties::GetTranslucency");
    return triangulation_script.translucency;
}

struct Triangulation::State {
    TriProperties properties{nullptr};
    doubles::ScriptedLibrary attributes;
};

Triangulation::Triangulation(const std::string& file) : state_(std::make_unique<State>()) {
    note("Triangulation::Triangulation", file);
}

Triangulation::~Triangulation() {
    doubles::triangulation_journal.emplace_back("Triangulation::~Triangulation");
}

std::int32_t Triangulation::NumPoints() const {
    note("Triangulation::NumPoints");
    return triangulation_script.points;
}

std::int32_t Triangulation::NumTriangles() const {
    note("Triangulation::NumTriangles");
    return triangulation_script.triangles;
}

void Triangulation::GetPoint(int index, double& x, double& y, double& z) const {
    note("Triangulation::GetPoint", index, x, y, z);
    x = triangulation_script.point[0];
    y = triangulation_script.point[1];
    z = triangulation_script.point[2];
}

void Triangulation::GetTriangle(int index, TriIndex& triangle) const {
    note("Triangulation::GetTriangle", index, triangle.first, triangle.second, triangle.third);
    triangle = triangulation_script.triangle;
}

double Triangulation::GetVolume() const {
    note("Triangulation::GetVolume");
    return triangulation_script.volume;
}

bool Triangulation::IsSolid() const {
    note("Triangulation::IsSolid");
    return triangulation_script.predicate;
}

bool Triangulation::IsSurface() const {
    note("Triangulation::IsSurface");
    return triangulation_script.predicate;
}

bool Triangulation::IsCrossing() const {
    note("Triangulation::IsCrossing");
    return triangulation_script.predicate;
}

bool Triangulation::IsConsistent() const {
    note("Triangulation::IsConsistent");
    return triangulation_script.predicate;
}

bool Triangulation::IsPointInside(const geometry::Point3D& point) const {
    note("Triangulation::IsPointInside", point.x, point.y, point.z);
    return triangulation_script.predicate;
}

bool Triangulation::IsPointOn(const geometry::Point3D& point, double tolerance) const {
    note("Triangulation::IsPointOn", point.x, point.y, point.z, tolerance);
    return triangulation_script.predicate;
}

const TriProperties& Triangulation::GetProperties() const {
    return state_->properties;
}

const ubx::object::PropertyLibrary& Triangulation::GetAttributes() const {
    note("Triangulation::GetAttributes");
    return state_->attributes;
}

}  // namespace zol::model::tri
