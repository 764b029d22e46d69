#include "engine/formats/mesh/mesh_attributes.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "engine/formats/text_encoding.h"
#include "engine/formats/text_lines.h"

namespace zol::engine {

void add_source(const MeshSource& source, MeshData& mesh) {
    const auto triangles = mesh.triangles.View();
    const auto degenerate =
        std::count_if(triangles.begin(), triangles.end(), [](const MeshTriangle& corners) {
            return corners[0] == corners[1] || corners[1] == corners[2] || corners[2] == corners[0];
        });
    std::vector<MeshAttribute> all = {
        {"format", std::string(source.format)},
        {"parts", source.parts},
        {"source_points", source.points},
        {source.has_polygons ? "source_faces" : "source_triangles", source.faces},
        {"degenerate_triangles", std::int64_t{degenerate}},
    };
    std::move(mesh.attributes.begin(), mesh.attributes.end(), std::back_inserter(all));
    mesh.attributes = std::move(all);
}

void add_text(std::string_view name, std::string_view text, MeshData& mesh) {
    if (text.empty()) return;
    mesh.attributes.push_back({to_utf8(name, ""), to_utf8(text, "")});
}

void add_stated(std::string_view name, std::string_view value, MeshData& mesh) {
    const std::string key = to_utf8(name, "");
    std::int64_t whole = 0;
    double real = 0;
    if (is_same_word(value, "true") || is_same_word(value, "false")) {
        mesh.attributes.push_back({key, is_same_word(value, "true")});
    } else if (read_whole(value, whole)) {
        mesh.attributes.push_back({key, whole});
    } else if (read_real(value, real)) {
        mesh.attributes.push_back({key, real});
    } else {
        add_text(key, value, mesh);
    }
}

}  // namespace zol::engine
