// The triangulation as its callers know it.
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "engine/formats/diagnostics.h"
#include "engine/formats/file.h"
#include "engine/formats/file_name.h"
#include "engine/formats/mesh/mesh_file.h"
#include "engine/formats/read_error.h"
#include "engine/tri/mesh_sidecar.h"
#include "engine/tri/property_library.h"
#include "engine/tri/shape.h"
#include "engine/tri/tri_properties.h"
#include "platform/zolTriangulationExport.h"
#include "support/floating_point.h"

namespace zol::model::tri {

using engine::MeshData;
using engine::tri::TypedAttribute;
using support::UsualFloatingPoint;

struct Triangulation::State {
    State(MeshData data, std::vector<TypedAttribute> typed)
        : mesh(std::move(data)),
          shape({mesh.points.View(), mesh.triangles.View()}),
          properties(engine::tri::make_properties(mesh.look)),
          attributes(std::move(typed), &shape) {}

    MeshData mesh;
    /// Of the mesh, which does not move.
    engine::tri::Shape shape;
    TriProperties properties;
    engine::tri::AttributeLibrary attributes;
};

namespace {

/// Those of the file, with what is known of every mesh behind what its reader says of each:
/// whether it is closed, which is only looked at when somebody asks, and its texture.
std::vector<TypedAttribute> typed_attributes(const MeshData& mesh) {
    std::vector<TypedAttribute> attributes;
    for (const engine::MeshAttribute& attribute : mesh.attributes) {
        attributes.push_back(engine::tri::typed(attribute));
    }
    const auto last = std::find_if(
        attributes.begin(), attributes.end(),
        [](const TypedAttribute& each) { return each.name == "degenerate_triangles"; });
    auto place = last == attributes.end() ? attributes.begin() : last + 1;
    place = attributes.insert(place, {"closed", false, engine::tri::type_of_name("BOOLEAN"),
                                      &engine::tri::Shape::IsClosed});
    if (mesh.look.texture) {
        attributes.insert(place + 1,
                          {"texture", *mesh.look.texture, engine::tri::type_of_name("STRING")});
    }
    return attributes;
}

/// Leaves out what is beyond the most, with a word on the diagnostics.
void limit(std::vector<TypedAttribute>& attributes, const std::string& file) {
    using engine::tri::kMostAttributes;
    if (attributes.size() <= kMostAttributes) return;
    engine::report(file, "of its " + std::to_string(attributes.size()) +
                             " attributes only the first " + std::to_string(kMostAttributes) +
                             " are given");
    attributes.resize(kMostAttributes);
}

}  // namespace

Triangulation::Triangulation(const std::string& file) {
    const UsualFloatingPoint usual;
    MeshData mesh;
    std::vector<TypedAttribute> attributes;
    try {
        const engine::FileName name = engine::split_file_name(file, engine::File::Exists);
        mesh = engine::read_mesh(name);
        const engine::tri::MeshSidecar sidecar(name.path);
        sidecar.Apply(mesh.look);
        attributes = typed_attributes(mesh);
        mesh.attributes.clear();
        sidecar.Apply(attributes);
        limit(attributes, file);
    } catch (const engine::ReadError& error) {
        engine::report(file, error.what());
        mesh = {};
        attributes.clear();
    }
    state_ = std::make_unique<State>(std::move(mesh), std::move(attributes));
}

Triangulation::~Triangulation() = default;

double Triangulation::GetVolume() const {
    const UsualFloatingPoint usual;
    return state_->shape.Volume();
}

bool Triangulation::IsSolid() const {
    const UsualFloatingPoint usual;
    return state_->shape.IsSolid();
}

std::int32_t Triangulation::NumPoints() const {
    return static_cast<std::int32_t>(state_->mesh.points.Size());
}

std::int32_t Triangulation::NumTriangles() const {
    return static_cast<std::int32_t>(state_->mesh.triangles.Size());
}

void Triangulation::GetPoint(int index, double& x, double& y, double& z) const {
    const engine::MeshPoint& point = state_->mesh.points[static_cast<std::size_t>(index)];
    x = point[0];
    y = point[1];
    z = point[2];
}

void Triangulation::GetTriangle(int index, TriIndex& triangle) const {
    const engine::MeshTriangle& corners = state_->mesh.triangles[static_cast<std::size_t>(index)];
    triangle = {corners[0], corners[1], corners[2]};
}

bool Triangulation::IsSurface() const {
    const UsualFloatingPoint usual;
    return state_->shape.IsSurface();
}

bool Triangulation::IsCrossing() const {
    const UsualFloatingPoint usual;
    return state_->shape.IsCrossing();
}

bool Triangulation::IsConsistent() const {
    const UsualFloatingPoint usual;
    return state_->shape.IsConsistent();
}

bool Triangulation::IsPointInside(const geometry::Point3D& point) const {
    const UsualFloatingPoint usual;
    return state_->shape.IsPointInside({point.x, point.y, point.z});
}

bool Triangulation::IsPointOn(const geometry::Point3D& point, double tolerance) const {
    const UsualFloatingPoint usual;
    return state_->shape.IsPointOn({point.x, point.y, point.z}, tolerance);
}

const TriProperties& Triangulation::GetProperties() const {
    return state_->properties;
}

const ubx::object::PropertyLibrary& Triangulation::GetAttributes() const {
    return state_->attributes;
}

}  // namespace zol::model::tri
