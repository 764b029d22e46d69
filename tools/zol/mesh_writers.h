// Triangulations as files, written as they are read. Texts have the shortest decimals that
// read back as the same numbers.
#pragma once

#include "tools/zol/mesh.h"
#include "tools/zol/output.h"

namespace zol::tool {

/// Points and faces.
void write_obj(const Mesh& mesh, ProgressBar& progress, Output& output);

/// The binary form, least byte first, with doubles. Each point has the colour of the mesh,
/// and its opacity where that is not full; a comment names the texture.
void write_ply(const Mesh& mesh, ProgressBar& progress, Output& output);

/// The binary form, with the colour and the opacity behind COLOR= in the header. Only for
/// coordinates that floats hold.
void write_stl(const Mesh& mesh, ProgressBar& progress, Output& output);

void write_stl_text(const Mesh& mesh, ProgressBar& progress, Output& output);

/// A row of nine coordinates for each triangle.
void write_triangles_csv(const Mesh& mesh, ProgressBar& progress, Output& output);

/// What the floats of a binary STL do to a mesh.
struct FloatRounding {
    /// The farthest that a coordinate is moved; infinite where a float does not hold it.
    double farthest = 0;
    /// The longest side of the mesh's extent.
    double size = 0;

    /// More than floats do to a mesh that lies at the origin.
    bool IsCoarse() const { return farthest > 1e-6 * size; }
};

FloatRounding float_rounding(const Mesh& mesh, ProgressBar& progress);

}  // namespace zol::tool
