// Meshes written as files of each format, and what tests ask of a triangulation.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "engine/formats/number_text.h"
#include "platform/zolTriangulationExport.h"
#include "tests/engine/geometry/solids.h"
#include "tests/engine/omf1_writer.h"

namespace zol::testing {

inline std::string number(double value) {
    return engine::number_text(value);
}

inline std::string coordinates(const Point& point) {
    return number(point[0]) + " " + number(point[1]) + " " + number(point[2]);
}

inline std::string obj_text(const Mesh& mesh) {
    std::string text;
    for (const Point& point : mesh.points) text += "v " + coordinates(point) + "\n";
    for (const Triangle& t : mesh.triangles) {
        text += "f";
        for (const std::int32_t corner : t) text += " " + std::to_string(corner + 1);
        text += "\n";
    }
    return text;
}

inline std::string off_text(const Mesh& mesh) {
    std::string text = "OFF\n" + std::to_string(mesh.points.size()) + " " +
                       std::to_string(mesh.triangles.size()) + " 0\n";
    for (const Point& point : mesh.points) text += coordinates(point) + "\n";
    for (const Triangle& t : mesh.triangles) {
        text += "3";
        for (const std::int32_t corner : t) text += " " + std::to_string(corner);
        text += "\n";
    }
    return text;
}

inline std::string tsurf_text(const Mesh& mesh) {
    std::string text = "GOCAD TSurf 1\nHEADER {\nname:made\n}\nTFACE\n";
    for (std::size_t i = 0; i < mesh.points.size(); ++i) {
        text += "VRTX " + std::to_string(i + 1) + " " + coordinates(mesh.points[i]) + "\n";
    }
    for (const Triangle& t : mesh.triangles) {
        text += "TRGL";
        for (const std::int32_t corner : t) text += " " + std::to_string(corner + 1);
        text += "\n";
    }
    return text + "END\n";
}

inline std::string stl_text(const Mesh& mesh) {
    std::string text = "solid made\n";
    for (const Triangle& t : mesh.triangles) {
        text += "facet normal 0 0 0\nouter loop\n";
        for (const std::int32_t corner : t) {
            text += "vertex " + coordinates(mesh.points[static_cast<std::size_t>(corner)]) + "\n";
        }
        text += "endloop\nendfacet\n";
    }
    return text + "endsolid made\n";
}

template <class T>
void append(std::string& bytes, const T& value) {
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

inline std::string stl_bytes(const Mesh& mesh) {
    std::string bytes(80, ' ');
    append(bytes, static_cast<std::uint32_t>(mesh.triangles.size()));
    for (const Triangle& t : mesh.triangles) {
        bytes.append(12, '\0');
        for (const std::int32_t corner : t) {
            for (const double x : mesh.points[static_cast<std::size_t>(corner)]) {
                append(bytes, static_cast<float>(x));
            }
        }
        bytes.append(2, '\0');
    }
    return bytes;
}

inline std::string ply_header(const Mesh& mesh, const char* form) {
    return std::string("ply\nformat ") + form + " 1.0\nelement vertex " +
           std::to_string(mesh.points.size()) +
           "\nproperty double x\nproperty double y\nproperty double z\nelement face " +
           std::to_string(mesh.triangles.size()) +
           "\nproperty list uchar int vertex_indices\nend_header\n";
}

inline std::string ply_text(const Mesh& mesh) {
    const std::string off = off_text(mesh);
    // Behind the counts the two are the same.
    return ply_header(mesh, "ascii") + off.substr(off.find('\n', 4) + 1);
}

inline std::string ply_bytes(const Mesh& mesh) {
    std::string bytes = ply_header(mesh, "binary_little_endian");
    for (const Point& point : mesh.points) append(bytes, point);
    for (const Triangle& t : mesh.triangles) {
        bytes += '\3';
        append(bytes, t);
    }
    return bytes;
}

inline std::string omf_bytes(const Mesh& mesh) {
    std::vector<double> points;
    std::vector<std::int64_t> triangles;
    for (const Point& point : mesh.points) points.insert(points.end(), point.begin(), point.end());
    for (const Triangle& t : mesh.triangles) triangles.insert(triangles.end(), t.begin(), t.end());
    testing_support::Omf1Writer writer;
    writer.Object("p", "Project", R"("elements":["e"])");
    writer.Object("e", "SurfaceElement", R"("name":"made","geometry":"g")");
    writer.Object("v", "Vector3Array", "\"array\":" + writer.Blob(points));
    writer.Object("i", "Int3Array", "\"array\":" + writer.Blob(triangles));
    writer.Object("g", "SurfaceGeometry", R"("vertices":"v","triangles":"i")");
    return writer.Bytes();
}

/// "name:TYPE=text" of each attribute whose name is `name`, or of all, parted by "|".
inline std::string attributes_of(const model::tri::Triangulation& mesh,
                                 const std::string& name = "") {
    std::string all;
    const ubx::object::PropertyLibrary& library = mesh.GetAttributes();
    for (auto entry = library.Begin(); entry != library.End(); ++entry) {
        if (!name.empty() && entry->first != name) continue;
        std::string text;
        all += (all.empty() ? "" : "|") + entry->first + ":" + entry->second->TypeName() + "=" +
               entry->second->AsString(text, 6);
    }
    return all;
}

/// "0xBBGGRR translucency texture", a texture without its folder.
inline std::string look_of(const model::tri::Triangulation& mesh) {
    const model::tri::TriProperties look(mesh.GetProperties());
    const std::uint32_t colour = look.GetColour().value;
    const std::string texture = look.GetTexture();
    return std::to_string(colour & 255U) + " " + std::to_string(colour >> 8U & 255U) + " " +
           std::to_string(colour >> 16U) + " " +
           number(static_cast<double>(look.GetTranslucency())) +
           (look.IsTranslucent() ? " translucent" : " opaque") +
           (look.IsTextured() ? " " + texture.substr(texture.rfind('/') + 1) : "");
}

}  // namespace zol::testing
