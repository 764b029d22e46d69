#include "engine/formats/omf1_geometry.h"

#include "engine/formats/mesh/mesh_limits.h"
#include "engine/formats/omf1_elements.h"

namespace zol::engine {

void refuse_vertex(std::string_view kind, std::size_t row, std::int64_t vertex) {
    throw ReadError(std::string(kind) + " " + std::to_string(row) + " names point " +
                    std::to_string(vertex));
}

Vector3 origin_of(const Omf1Document& document, const JsonValue& geometry) {
    const Vector3 origin = plus(read_vector(geometry, "origin", {0, 0, 0}),
                                read_vector(document.Project(), "origin", {0, 0, 0}));
    if (!are_coordinates(origin)) geometry.Refuse("lies too far out for its project");
    return origin;
}

void read_vertices(const File& file, const Omf1Document& document, const JsonValue& geometry,
                   GrowingArray<Vector3>& vertices) {
    const Vector3 origin = origin_of(document, geometry);
    const JsonValue reference = geometry.Get("vertices");
    const Omf1Blob blob = document.Blob(reference, {"Vector3Array"});
    if (blob.type != Omf1Blob::Type::Float64) reference.Refuse("refers to no coordinates");
    vertices.SetSize(inflate_rows(file, blob, sizeof(Vector3), vertices));
    vertices.Trim();
    for (std::size_t i = 0; i < vertices.Size(); ++i) {
        vertices[i] = plus(vertices[i], origin);
        if (!are_coordinates(vertices[i])) {
            throw ReadError("point " + std::to_string(i) + ": " + kNoCoordinates);
        }
    }
}

}  // namespace zol::engine
