// A grid surface of an OMF 1 file as a mesh: a lattice of nodes in a plane, each of them
// raised along its normal.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

#include "engine/formats/file.h"
#include "engine/formats/json.h"
#include "engine/formats/mesh/mesh_data.h"
#include "engine/formats/omf1_file.h"

namespace zol::engine {

struct Omf1GridSurface {
    using Vector = std::array<double, 3>;

    /// Where the nodes stand along the two axes, from 0.
    std::vector<double> along_u;
    std::vector<double> along_v;
    Vector u;
    Vector v;
    /// How far each node is raised along u x v, u running fastest; a flat surface has none.
    std::optional<Omf1Blob> heights;

    std::size_t Nodes() const { return along_u.size() * along_v.size(); }
    std::size_t Cells() const { return (along_u.size() - 1) * (along_v.size() - 1); }

    /// Two triangles for each cell, whose outer sides look along u x v. A node whose height is
    /// NaN is left out, with the triangles at it. Throws ReadError.
    MeshData Build(const File& file, const Vector& origin) const;
};

/// Throws ReadError for axes that are not of length 1 and at right angles, and for more nodes
/// than the file or 32 bits can count.
Omf1GridSurface lay_out_grid_surface(const Omf1Document& document, const JsonValue& geometry);

}  // namespace zol::engine
