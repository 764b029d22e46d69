// What the two forms of OFF have in common: vertices, faces and their colours.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "engine/formats/file.h"
#include "engine/formats/mesh/colour_tally.h"
#include "engine/formats/mesh/mesh_data.h"
#include "engine/formats/mesh/polygon.h"

namespace zol::engine {

class OffMesh {
public:
    /// `place` says where in the file the reading is, as in "line 7", for a text about a fault.
    explicit OffMesh(std::function<std::string()> place) : place_(std::move(place)) {}

    [[noreturn]] void Refuse(const std::string& reason) const;

    /// Adds a vertex of x, y, z, divided by `weight`.
    void AddPoint(MeshPoint point, double weight);

    void BeginFace() { corners_.clear(); }
    void AddCorner(std::int64_t corner);
    /// Adds the face with the colour that stands behind its corners: none, an entry of some
    /// map of colours (1 number), or red, green, blue and perhaps opacity.
    void EndFace(const std::vector<double>& colour, bool is_in_bytes);

    std::uint64_t Points() const { return mesh_.points.Size(); }
    std::int64_t Faces() const { return faces_; }

    /// Gives the mesh away; says on the diagnostics channel how many faces crossed themselves.
    MeshData Finish(const File& file, const char* format);

private:
    std::function<std::string()> place_;
    MeshData mesh_;
    std::vector<std::int32_t> corners_;
    PolygonParter parter_;
    ColourTally colours_;
    bool has_opacity_ = false;
    std::int64_t faces_ = 0;
    std::int64_t crossing_ = 0;
    std::int64_t first_crossing_ = 0;
};

}  // namespace zol::engine
