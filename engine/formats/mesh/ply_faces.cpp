#include "engine/formats/mesh/ply_faces.h"

#include <string_view>

#include "engine/formats/diagnostics.h"
#include "engine/formats/mesh/mesh_limits.h"
#include "engine/formats/read_error.h"

namespace zol::engine {

namespace {

constexpr const char* kTooMany = "it makes more than 2147483647 triangles";

}  // namespace

std::size_t PlyFaces::IndexList(const PlyElement& element) {
    for (const std::string_view name : {"vertex_indices", "vertex_index"}) {
        const std::size_t place = element.Find(name);
        if (place < element.properties.size() && element.properties[place].count_type) {
            return place;
        }
    }
    throw ReadError("its element \"" + element.name + "\" has no list \"vertex_indices\"");
}

PlyFaces::Fault PlyFaces::AddTriangle(const MeshTriangle& corners) {
    if (mesh_.triangles.Size() >= kMostMeshElements) return kTooMany;
    mesh_.triangles.Add(corners);
    return nullptr;
}

PlyFaces::Fault PlyFaces::AddFace() {
    if (corners_.size() == 3) return AddTriangle({corners_[0], corners_[1], corners_[2]});
    if (corners_.size() < 3) return "it has less than three corners";
    if (corners_.size() > kMostMeshElements - mesh_.triangles.Size()) return kTooMany;
    switch (parter_.Part(corners_, mesh_.points, mesh_.triangles)) {
        case PolygonParter::Outcome::Parted:
            break;
        case PolygonParter::Outcome::Crossing:
            ++crossing_;
            break;
        case PolygonParter::Outcome::TooInvolved:
            return "it is too involved to be parted into triangles";
    }
    return nullptr;
}

void PlyFaces::Tell(const std::string& path) const {
    if (crossing_ > 0) report(path, std::to_string(crossing_) + " faces cross themselves");
}

}  // namespace zol::engine
