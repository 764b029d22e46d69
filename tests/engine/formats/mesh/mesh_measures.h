// What tests ask of a mesh that a reader made.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <string>
#include <variant>

#include "engine/formats/file.h"
#include "engine/formats/mesh/mesh_data.h"
#include "engine/formats/read_error.h"
#include "tests/engine/temporary_file.h"

namespace zol::testing_support {

/// The path of one of the meshes of samples/.
inline std::string sample(const std::string& name) {
    return std::string(ZOL_SAMPLES) + "/tri/" + name;
}

using MeshReader = engine::MeshData (*)(const engine::File&);

inline engine::MeshData read_text(MeshReader read, std::string_view content) {
    const TemporaryFile file(content);
    return read(engine::File(file.Path()));
}

/// Why the text is refused, or "none".
inline std::string refusal_of(MeshReader read, std::string_view content) {
    try {
        read_text(read, content);
        return "none";
    } catch (const engine::ReadError& error) {
        return error.what();
    }
}

/// Of each triangle the cross product of two sides.
inline engine::MeshPoint cross_of(const engine::MeshData& mesh, std::size_t triangle) {
    std::array<engine::MeshPoint, 2> sides{};
    const engine::MeshTriangle& corners = mesh.triangles[triangle];
    const auto point = [&](std::size_t i) { return mesh.points[std::size_t(corners[i])]; };
    for (std::size_t i = 0; i < 2; ++i) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            sides[i][axis] = point(i + 1)[axis] - point(0)[axis];
        }
    }
    const auto& [a, b] = sides;
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

inline double area_of(const engine::MeshData& mesh) {
    double area = 0;
    for (std::size_t i = 0; i < mesh.triangles.Size(); ++i) {
        const engine::MeshPoint cross = cross_of(mesh, i);
        area += std::hypot(cross[0], cross[1], cross[2]) / 2;
    }
    return area;
}

/// Signed, about the first point; meaningful for closed meshes.
inline double volume_of(const engine::MeshData& mesh) {
    double volume = 0;
    for (std::size_t i = 0; i < mesh.triangles.Size(); ++i) {
        const engine::MeshPoint cross = cross_of(mesh, i);
        const engine::MeshPoint& corner = mesh.points[std::size_t(mesh.triangles[i][0])];
        for (std::size_t axis = 0; axis < 3; ++axis) {
            volume += cross[axis] * (corner[axis] - mesh.points[0][axis]) / 6;
        }
    }
    return volume;
}

/// The values of the attributes of a name as texts, parted by "|".
inline std::string attributes_of(const engine::MeshData& mesh, std::string_view name) {
    std::string all;
    for (const engine::MeshAttribute& attribute : mesh.attributes) {
        if (attribute.name != name) continue;
        all += all.empty() ? "" : "|";
        if (const auto* text = std::get_if<std::string>(&attribute.value)) all += *text;
        if (const auto* whole = std::get_if<std::int64_t>(&attribute.value)) {
            all += std::to_string(*whole);
        }
        if (const auto* real = std::get_if<double>(&attribute.value)) all += std::to_string(*real);
        if (const auto* flag = std::get_if<bool>(&attribute.value)) all += *flag ? "true" : "false";
    }
    return all;
}

/// "r g b opacity texture", with - for what is not said; a texture without its folder.
inline std::string look_of(const engine::MeshData& mesh) {
    std::string text = "-";
    if (mesh.look.colour) {
        text.clear();
        for (const auto part : *mesh.look.colour) {
            text += (text.empty() ? "" : " ") + std::to_string(part);
        }
    }
    if (!mesh.look.opacity) {
        text += " -";
    } else {
        text += " " + std::to_string(*mesh.look.opacity).substr(0, 4);
    }
    return text + " " +
           (mesh.look.texture ? mesh.look.texture->substr(mesh.look.texture->rfind('/') + 1) : "-");
}

/// Reads each beginning of a file that is shorter than the whole, and counts those that are
/// not refused; sanitizers see to the rest.
inline int meshes_of_beginnings(MeshReader read, std::string_view content) {
    const TemporaryFile file(content);
    int meshes = 0;
    // Cut from behind: file systems wait for the disk when a file is written anew.
    for (std::size_t size = content.size(); size-- > 0;) {
        std::filesystem::resize_file(file.Path(), size);
        try {
            read(engine::File(file.Path()));
            ++meshes;
        } catch (const engine::ReadError&) {
            continue;
        }
    }
    return meshes;
}

inline std::string content_of(const std::string& path) {
    const engine::File file(path);
    std::string content(file.Size(), '\0');
    content.resize(file.ReadAt(0, content.data(), content.size()));
    return content;
}

}  // namespace zol::testing_support
