#include "engine/formats/mesh/ply_file.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "engine/formats/diagnostics.h"
#include "engine/formats/mesh/mesh_attributes.h"
#include "engine/formats/mesh/mesh_limits.h"
#include "engine/formats/mesh/name_beside.h"
#include "engine/formats/mesh/ply_body.h"
#include "engine/formats/mesh/ply_faces.h"
#include "engine/formats/mesh/ply_header.h"
#include "engine/formats/mesh/ply_properties.h"
#include "engine/formats/read_error.h"

namespace zol::engine {

namespace {

// Callers take all attributes at once.
constexpr std::size_t kMostRanges = 16;
constexpr std::size_t kMostComments = 100;

constexpr std::string_view kTexture = "TextureFile";

/// Throws when so many elements can't be in what is left of the file.
template <class Body>
void check_room(const Body& body, const PlyElement& element) {
    std::uint64_t least = 0;
    for (const PlyProperty& property : element.properties) {
        least += Body::LeastSize(property.count_type.value_or(property.type));
    }
    if (least > 0 && element.count > body.Remaining() / least) {
        body.Refuse("the header states " + std::to_string(element.count) + " of element " +
                    quoted(element.name) + ", more than the file can hold");
    }
}

template <class Body>
void pass_elements(Body& body, const PlyElement& element) {
    // Of these there may be any number.
    if (element.properties.empty()) return;
    check_room(body, element);
    for (std::uint64_t i = 0; i < element.count; ++i) {
        for (const PlyProperty& property : element.properties) pass_property(body, property);
        body.EndElement();
    }
}

void check_vertex(const PlyElement& element, const std::vector<PlyRole>& roles) {
    for (const auto& [role, name] :
         {std::pair(PlyRole::X, "x"), std::pair(PlyRole::Y, "y"), std::pair(PlyRole::Z, "z")}) {
        if (std::find(roles.begin(), roles.end(), role) == roles.end()) {
            throw ReadError("its vertices have no property " + std::string(name));
        }
    }
    if (element.count > kMostMeshElements) {
        throw ReadError("it has more than " + std::to_string(kMostMeshElements) + " vertices");
    }
}

template <class Body>
void read_vertices(Body& body, const PlyElement& element, MeshData& mesh) {
    const std::vector<PlyRole> roles = roles_of(element);
    check_vertex(element, roles);
    check_room(body, element);
    PlyColours colours(roles);
    std::vector<PlyRange> ranges;
    std::vector<PlyRange*> range_of(roles.size(), nullptr);
    ranges.reserve(kMostRanges);
    for (std::size_t p = 0; p < roles.size(); ++p) {
        if (roles[p] != PlyRole::Other || ranges.size() == kMostRanges) continue;
        range_of[p] = &ranges.emplace_back(element.properties[p].name);
    }
    mesh.points.Reserve(static_cast<std::size_t>(element.count));
    for (std::uint64_t i = 0; i < element.count; ++i) {
        MeshPoint point{};
        for (std::size_t p = 0; p < roles.size(); ++p) {
            const PlyProperty& property = element.properties[p];
            if (roles[p] <= PlyRole::Z) {
                point[static_cast<std::size_t>(roles[p])] = body.Number(property.type);
            } else if (roles[p] <= PlyRole::Alpha) {
                colours.Take(roles[p], property.type, body.AnyNumber(property.type));
            } else if (range_of[p] != nullptr) {
                range_of[p]->Take(body.AnyNumber(property.type));
            } else {
                pass_property(body, property);
            }
        }
        if (!are_coordinates(point)) {
            body.Refuse("vertex " + std::to_string(i) + ": " + kNoCoordinates);
        }
        mesh.points.Add(point);
        if (body.EndElement()) colours.EndElement();
    }
    colours.Tell(mesh.look);
    for (const PlyRange& range : ranges) range.Tell(mesh);
}

/// Where the elements of a mesh stand among those of the header; the number of elements
/// for one that is not there.
struct Places {
    explicit Places(const PlyHeader& header)
        : vertex(header.Find("vertex")),
          face(header.Find("face")),
          strips(header.Find("tristrips")) {}

    std::size_t vertex;
    std::size_t face;
    std::size_t strips;
};

template <class Body>
class Reader {
public:
    Reader(const File& file, const PlyHeader& header, MeshData& mesh)
        : file_(file), header_(header), places_(header), mesh_(mesh), faces_(mesh) {}

    void Read() {
        if (places_.vertex < places_.face && places_.vertex < places_.strips) {
            Pass(true, true);
        } else {
            // Faces are checked and parted by their points.
            Pass(true, false);
            Pass(false, true);
        }
        faces_.Tell(file_.Path());
    }

    std::int64_t Faces() const { return faces_.Number(); }

private:
    void Pass(bool with_vertices, bool with_faces) {
        Body body(file_, header_);
        for (std::size_t e = 0; e < header_.elements.size(); ++e) {
            const PlyElement& element = header_.elements[e];
            if (with_vertices && e == places_.vertex) {
                read_vertices(body, element, mesh_);
            } else if (with_faces && e == places_.face && element.count > 0) {
                check_room(body, element);
                faces_.ReadFaces(body, element);
            } else if (with_faces && e == places_.strips && element.count > 0) {
                check_room(body, element);
                faces_.ReadStrips(body, element);
            } else {
                pass_elements(body, element);
            }
        }
        if (with_faces) body.EndFile();
    }

    const File& file_;
    const PlyHeader& header_;
    Places places_;
    MeshData& mesh_;
    PlyFaces faces_;
};

void tell_comments(const File& file, const PlyHeader& header, MeshData& mesh) {
    std::size_t comments = 0;
    for (const std::string& comment : header.comments) {
        std::string_view rest = comment;
        if (take_word(rest) == kTexture) {
            mesh.look.texture = name_beside(file.Path(), without_blanks(rest));
            if (!mesh.look.texture) {
                report(file.Path(), "the texture " + quoted(without_blanks(rest)) +
                                        " is no file of the mesh's folder; it is left out");
            }
        } else if (comments++ < kMostComments) {
            add_text("comment", comment, mesh);
        }
    }
}

const char* name_of(PlyHeader::Format format) {
    switch (format) {
        case PlyHeader::Format::Text:
            return "PLY text";
        case PlyHeader::Format::LittleEndian:
            return "PLY binary little-endian";
        case PlyHeader::Format::BigEndian:
            return "PLY binary big-endian";
    }
    return "PLY";
}

}  // namespace

MeshData read_ply(const File& file) {
    const PlyHeader header = read_ply_header(file);
    if (Places(header).vertex == header.elements.size()) {
        throw ReadError("its header has no element \"vertex\"");
    }
    MeshData mesh;
    tell_comments(file, header, mesh);
    std::int64_t faces = 0;
    if (header.format == PlyHeader::Format::Text) {
        Reader<PlyWords> reader(file, header, mesh);
        reader.Read();
        faces = reader.Faces();
    } else {
        Reader<PlyBytes> reader(file, header, mesh);
        reader.Read();
        faces = reader.Faces();
    }
    mesh.points.Trim();
    mesh.triangles.Trim();
    add_source({.format = name_of(header.format),
                .points = static_cast<std::int64_t>(mesh.points.Size()),
                .faces = faces,
                .has_polygons = true},
               mesh);
    return mesh;
}

}  // namespace zol::engine
