// `zol mesh export`: a triangulation in another format, to a file or to standard output.

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "tools/zol/exit_codes.h"
#include "tools/zol/mesh_commands.h"
#include "tools/zol/mesh_writers.h"
#include "tools/zol/number_text.h"
#include "tools/zol/open_model.h"
#include "tools/zol/output_file.h"

namespace zol::tool {

namespace {

struct Writer {
    MeshForm form;
    /// Whether points are written, or only the corners of triangles.
    bool has_points;
    bool is_binary;
    void (*write)(const Mesh&, ProgressBar&, Output&);
};

constexpr Writer kWriters[] = {
    {MeshForm::kObj, true, false, write_obj},
    {MeshForm::kStl, false, true, write_stl},
    {MeshForm::kStlText, false, false, write_stl_text},
    {MeshForm::kPly, true, true, write_ply},
    {MeshForm::kCsv, false, false, write_triangles_csv},
};

const Writer& writer_of(MeshForm form) {
    return *std::find_if(std::begin(kWriters), std::end(kWriters),
                         [form](const Writer& writer) { return writer.form == form; });
}

void check_floats(const Mesh& mesh) {
    ProgressBar progress(mesh.NPoints(), "points", ProgressBar::Meanwhile::Nothing);
    const FloatRounding rounding = float_rounding(mesh, progress);
    if (!std::isfinite(rounding.farthest)) {
        throw UsageError("a coordinate is beyond what a binary STL holds. --ascii can hold it.");
    }
    if (!rounding.IsCoarse()) return;
    constexpr int kDigits = 2;
    std::fprintf(stderr,
                 "zol: a binary STL has floats, which move coordinates of this mesh by up to %s. "
                 "--ascii and the other formats keep them.\n",
                 std::string(rounded_text(rounding.farthest, kDigits)).c_str());
}

void write_mesh(const Mesh& mesh, const MeshExportRequest& request, Output& output) {
    const Writer& writer = writer_of(request.form);
    ProgressBar progress((writer.has_points ? mesh.NPoints() : 0LL) + mesh.NTriangles(),
                         writer.has_points ? "points and triangles" : "triangles",
                         meanwhile_of(request.to));
    writer.write(mesh, progress, output);
}

void check_request(const Mesh& mesh, const MeshExportRequest& request) {
    if (!request.to && writer_of(request.form).is_binary && isatty(STDOUT_FILENO) != 0) {
        throw UsageError("this format is binary, and not for a terminal: -o OUT is needed.");
    }
    const bool is_stl = request.form == MeshForm::kStl || request.form == MeshForm::kStlText;
    if (is_stl && mesh.NTriangles() == 0) {
        throw UsageError("an STL has triangles only, and '" + request.file + "' has none.");
    }
    if (request.form == MeshForm::kStl) check_floats(mesh);
}

}  // namespace

int run_mesh_export(const MeshExportRequest& request, Output& output) {
    const auto mesh = open_mesh(request.file);
    check_request(*mesh, request);
    write_to(request.to, {request.file}, output,
             [&](Output& stream) { write_mesh(*mesh, request, stream); });
    return kGood;
}

}  // namespace zol::tool
