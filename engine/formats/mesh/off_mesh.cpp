#include "engine/formats/mesh/off_mesh.h"

#include <algorithm>

#include "engine/formats/diagnostics.h"
#include "engine/formats/mesh/colour_words.h"
#include "engine/formats/mesh/mesh_attributes.h"
#include "engine/formats/mesh/mesh_limits.h"
#include "engine/formats/read_error.h"

namespace zol::engine {

void OffMesh::Refuse(const std::string& reason) const {
    throw ReadError(place_() + ": " + reason);
}

void OffMesh::AddPoint(MeshPoint point, double weight) {
    if (weight != 1) {
        for (double& coordinate : point) coordinate /= weight;
    }
    if (!are_coordinates(point)) Refuse(kNoCoordinates);
    mesh_.points.Add(point);
}

void OffMesh::AddCorner(std::int64_t corner) {
    if (corner < 0 || static_cast<std::uint64_t>(corner) >= mesh_.points.Size()) {
        Refuse("a face names vertex " + std::to_string(corner) + "; there are " +
               std::to_string(mesh_.points.Size()) + ", counted from 0");
    }
    corners_.push_back(static_cast<std::int32_t>(corner));
}

void OffMesh::EndFace(const std::vector<double>& colour, bool is_in_bytes) {
    if (corners_.size() < 3) {
        Refuse("a face has " + std::to_string(corners_.size()) + " corners; three are the least");
    }
    switch (parter_.Part(corners_, mesh_.points, mesh_.triangles)) {
        case PolygonParter::Outcome::Parted:
            break;
        case PolygonParter::Outcome::Crossing:
            if (crossing_++ == 0) first_crossing_ = faces_;
            break;
        case PolygonParter::Outcome::TooInvolved:
            Refuse("a face is too involved to be parted into triangles");
    }
    ++faces_;
    if (mesh_.triangles.Size() > kMostMeshElements) Refuse("there are too many triangles");
    if (colour.size() < 3) return;
    ColourTally::Colour bytes = {0, 0, 0, 255};
    for (std::size_t i = 0; i < std::min(colour.size(), bytes.size()); ++i) {
        bytes[i] = colour_byte(is_in_bytes ? colour[i] / 255 : colour[i]);
    }
    has_opacity_ = has_opacity_ || colour.size() > 3;
    for (std::size_t i = 2; i < corners_.size(); ++i) colours_.Add(bytes);
}

MeshData OffMesh::Finish(const File& file, const char* format) {
    if (crossing_ > 0) {
        report(file.Path(), "faces that cross themselves: " + std::to_string(crossing_) +
                                ", the first is " + std::to_string(first_crossing_) +
                                ", counted from 0");
    }
    mesh_.points.Trim();
    mesh_.triangles.Trim();
    colours_.Tell(mesh_.look, has_opacity_);
    add_source({.format = format,
                .points = static_cast<std::int64_t>(mesh_.points.Size()),
                .faces = faces_,
                .has_polygons = true},
               mesh_);
    return std::move(mesh_);
}

}  // namespace zol::engine
