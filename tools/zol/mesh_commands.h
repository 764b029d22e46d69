// The commands of `zol mesh`. Each writes its answer to `output`, which the caller
// flushes, or to the file asked for, and gives the exit code; what keeps it from an answer
// is thrown as one of the errors of exit_codes.h.
#pragma once

#include <optional>
#include <string>

#include "tools/zol/block_model.h"
#include "tools/zol/output.h"

namespace zol::tool {

struct MeshInfoRequest {
    std::string file;
    /// Without the questions that hold triangles against each other.
    bool quick = false;
    bool as_json = false;
};

struct MeshContainsRequest {
    std::string file;
    /// The one point asked for, or a file of points.
    std::optional<Point> point;
    std::string points;
    /// How far from the surface a point is still on it.
    double tolerance = 0;
    /// Standard output when there is none.
    std::optional<std::string> to;
    bool as_json = false;
};

enum class MeshForm { kObj, kStl, kStlText, kPly, kCsv };

struct MeshExportRequest {
    std::string file;
    MeshForm form = MeshForm::kObj;
    /// Standard output when there is none.
    std::optional<std::string> to;
};

int run_mesh_info(const MeshInfoRequest& request, Output& output);
int run_mesh_contains(const MeshContainsRequest& request, Output& output);
int run_mesh_export(const MeshExportRequest& request, Output& output);

}  // namespace zol::tool
