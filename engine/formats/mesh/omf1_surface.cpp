#include "engine/formats/mesh/omf1_surface.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

#include "engine/formats/json.h"
#include "engine/formats/mesh/mesh_attributes.h"
#include "engine/formats/mesh/omf1_grid_surface.h"
#include "engine/formats/omf1_elements.h"
#include "engine/formats/omf1_file.h"
#include "engine/formats/omf1_geometry.h"
#include "engine/formats/omf1_values.h"

namespace zol::engine {

namespace {

MeshData read_surface(const File& file, const Omf1Document& document, const JsonValue& geometry) {
    MeshData mesh;
    read_indices(file, document, geometry.Get("triangles"), "Int3Array", "triangle",
                 mesh.triangles);
    read_vertices(file, document, geometry, mesh.points);
    check_indices(mesh.triangles, "triangle", mesh.points.Size());
    add_source({.format = "OMF 1",
                .points = static_cast<std::int64_t>(mesh.points.Size()),
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
    look.colour = element_colour(element);
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
