#include "engine/formats/mesh/omf1_surface.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <optional>
#include <string_view>
#include <vector>

#include "engine/formats/json.h"
#include "engine/formats/mesh/mesh_attributes.h"
#include "engine/formats/mesh/mesh_limits.h"
#include "engine/formats/mesh/omf1_grid_surface.h"
#include "engine/formats/omf1_elements.h"
#include "engine/formats/omf1_file.h"
#include "engine/formats/read_error.h"

namespace zol::engine {

namespace {

using Vector = std::array<double, 3>;

Vector origin_of(const Omf1Document& document, const JsonValue& geometry) {
    Vector origin = read_vector(geometry, "origin", {0, 0, 0});
    const Vector project = read_vector(document.Project(), "origin", {0, 0, 0});
    for (std::size_t i = 0; i < origin.size(); ++i) origin[i] += project[i];
    if (!are_coordinates(origin)) geometry.Refuse("lies too far out for its project");
    return origin;
}

/// Fills the list with rows of `row` bytes, which nothing but the stream itself counts; `T`
/// may be smaller than a row. Gives how many rows they are.
template <class T>
std::size_t inflate_rows(const File& file, const Omf1Blob& blob, std::size_t row,
                         GrowingArray<T>& list) {
    const std::uint64_t most = std::min(most_bytes_in(blob), kMostMeshElements * row);
    // Coordinates compress little. What is not written to takes no memory.
    std::uint64_t room = std::min(most, 4 * blob.length + row);
    for (;;) {
        list.SetSize(static_cast<std::size_t>(room / sizeof(T) + 1));
        const std::optional<std::size_t> bytes =
            inflate_at_most(file, blob, list.View().data(), static_cast<std::size_t>(room));
        if (bytes) {
            if (*bytes % row != 0) {
                throw ReadError(blob.name + " holds " + std::to_string(*bytes) +
                                " bytes, which are no rows of " + std::to_string(row));
            }
            return *bytes / row;
        }
        if (room == most) {
            throw ReadError(blob.name + " holds more than " + std::to_string(kMostMeshElements) +
                            " rows");
        }
        room = std::min(most, 4 * room);
    }
}

/// Indices are stored in 64 bits, and become 32 where they are, so that there is no second
/// list of them.
void read_triangles(const File& file, const Omf1Document& document, const JsonValue& reference,
                    GrowingArray<MeshTriangle>& triangles) {
    using Row = std::array<std::int64_t, 3>;
    const Omf1Blob blob = document.Blob(reference, {"Int3Array"});
    if (blob.type != Omf1Blob::Type::Int64) reference.Refuse("refers to no whole numbers");
    const std::size_t count = inflate_rows(file, blob, sizeof(Row), triangles);
    for (std::size_t i = 0; i < count; ++i) {
        Row row;
        std::memcpy(row.data(),
                    reinterpret_cast<const std::byte*>(triangles.View().data()) + i * sizeof(Row),
                    sizeof row);
        for (std::size_t c = 0; c < 3; ++c) {
            if (row[c] < 0 || row[c] >= static_cast<std::int64_t>(kMostMeshElements)) {
                throw ReadError("triangle " + std::to_string(i) + " names point " +
                                std::to_string(row[c]));
            }
            triangles[i][c] = static_cast<std::int32_t>(row[c]);
        }
    }
    triangles.SetSize(count);
    triangles.Trim();
}

void read_points(const File& file, const Omf1Document& document, const JsonValue& geometry,
                 GrowingArray<MeshPoint>& points) {
    const Vector origin = origin_of(document, geometry);
    const JsonValue reference = geometry.Get("vertices");
    const Omf1Blob blob = document.Blob(reference, {"Vector3Array"});
    if (blob.type != Omf1Blob::Type::Float64) reference.Refuse("refers to no coordinates");
    points.SetSize(inflate_rows(file, blob, sizeof(MeshPoint), points));
    points.Trim();
    for (std::size_t i = 0; i < points.Size(); ++i) {
        for (std::size_t axis = 0; axis < 3; ++axis) points[i][axis] += origin[axis];
        if (!are_coordinates(points[i])) {
            throw ReadError("point " + std::to_string(i) + ": " + kNoCoordinates);
        }
    }
}

MeshData read_surface(const File& file, const Omf1Document& document, const JsonValue& geometry) {
    MeshData mesh;
    read_triangles(file, document, geometry.Get("triangles"), mesh.triangles);
    read_points(file, document, geometry, mesh.points);
    const auto points = static_cast<std::int64_t>(mesh.points.Size());
    for (std::size_t i = 0; i < mesh.triangles.Size(); ++i) {
        const std::int32_t last =
            *std::max_element(mesh.triangles[i].begin(), mesh.triangles[i].end());
        if (last >= points) {
            throw ReadError("triangle " + std::to_string(i) + " names point " +
                            std::to_string(last) + "; there are " + std::to_string(points));
        }
    }
    add_source({.format = "OMF 1",
                .points = points,
                .faces = static_cast<std::int64_t>(mesh.triangles.Size())},
               mesh);
    return mesh;
}

MeshData read_grid(const File& file, const Omf1Document& document, const JsonValue& geometry) {
    const Omf1GridSurface surface = lay_out_grid_surface(document, geometry);
    MeshData mesh = surface.Build(file, origin_of(document, geometry));
    add_source({.format = "OMF 1 grid surface",
                .points = static_cast<std::int64_t>(surface.Nodes()),
                .faces = static_cast<std::int64_t>(surface.Cells()),
                .has_polygons = true},
               mesh);
    return mesh;
}

void read_look(const Omf1Document& document, const JsonValue& element, MeshLook& look) {
    if (const auto colour = element.Find("color")) {
        std::array<std::uint8_t, 3> channels{};
        const std::vector<double> numbers = colour->Numbers(3);
        for (std::size_t i = 0; i < channels.size(); ++i) {
            if (!(numbers[i] >= 0.0 && numbers[i] <= 255.0)) {
                colour->At(i).Refuse("is not from 0 to 255");
            }
            channels[i] = static_cast<std::uint8_t>(std::lround(numbers[i]));
        }
        look.colour = channels;
    }
    if (const auto textures = element.Find("textures"); textures && textures->Size() > 0) {
        const auto name = document.Follow(textures->At(0), {"ImageTexture"}).Find("name");
        look.texture = name && !name->Text().empty() ? name->Text() : "texture 1";
    }
}

void add_member(const JsonValue& object, std::string_view key, std::string_view attribute,
                MeshData& mesh) {
    if (const auto value = object.Find(key)) add_text(attribute, value->Text(), mesh);
}

/// "2017-10-31T21:02:09Z" gives the day as 2017/10/31, the form in which callers read dates,
/// and, as another attribute, all of it.
void add_time(const JsonValue& object, std::string_view key, MeshData& mesh) {
    const auto value = object.Find(key);
    if (!value) return;
    const std::string text = value->Text();
    constexpr std::string_view kPrefix = "date_";
    constexpr std::size_t kDay = 10;
    if (text.size() > kDay && text[kDay] == 'T' && text[4] == '-' && text[7] == '-') {
        std::string day = text.substr(0, kDay);
        std::replace(day.begin(), day.end(), '-', '/');
        add_text(key, day, mesh);
        add_text("time_" + std::string(key.substr(kPrefix.size())), text, mesh);
    } else {
        add_text(key, text, mesh);
    }
}

}  // namespace

MeshData read_omf1_surface(const File& file, const std::string& element_name) {
    const Omf1Document document(file);
    const std::vector<Omf1Element> elements = document.Elements();
    const Omf1Element& element =
        choose_element(elements, element_name, "surface",
                       [](const Omf1Element& each) { return each.class_name == "SurfaceElement"; });
    const JsonValue geometry =
        document.Follow(element.object.Get("geometry"), {"SurfaceGeometry", "SurfaceGridGeometry"});
    MeshData mesh = Omf1Document::ClassOf(geometry) == "SurfaceGeometry"
                        ? read_surface(file, document, geometry)
                        : read_grid(file, document, geometry);
    read_look(document, element.object, mesh.look);
    add_text("name", element.name, mesh);
    add_member(element.object, "description", "description", mesh);
    add_member(element.object, "subtype", "subtype", mesh);
    add_time(element.object, "date_created", mesh);
    add_time(element.object, "date_modified", mesh);
    add_member(document.Project(), "units", "units", mesh);
    add_member(document.Project(), "name", "project", mesh);
    return mesh;
}

}  // namespace zol::engine
