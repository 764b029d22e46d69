// `zol mesh contains`: whether points are inside a closed triangulation.

#include <cstdio>
#include <filesystem>
#include <optional>
#include <system_error>

#include "tools/zol/exit_codes.h"
#include "tools/zol/layout.h"
#include "tools/zol/mesh_answers.h"
#include "tools/zol/mesh_commands.h"
#include "tools/zol/mesh_shape.h"
#include "tools/zol/open_model.h"
#include "tools/zol/output_file.h"
#include "tools/zol/point_rows.h"

namespace zol::tool {

namespace {

Side side_of(const Mesh& mesh, const Point& point, double tolerance) {
    if (mesh.IsOn(point, tolerance)) return Side::On;
    return mesh.IsInside(point) ? Side::Inside : Side::Outside;
}

/// The interface calls each point of a mesh that is not closed outside.
void require_inside(const std::string& file, const Mesh& mesh) {
    const EdgeReport edges = MeshShape(mesh).Edges();
    if (edges.is_closed) return;
    std::string reason = "it has no triangles.";
    if (const auto& border = edges.border; border.number > 0) {
        const bool is_one = border.number == 1;
        reason = std::to_string(border.number) +
                 (is_one ? " edge has one triangle, from "
                         : " edges have one triangle, the first from ") +
                 point_text(border.first->first) + " to " + point_text(border.first->second) + ".";
    } else if (edges.edges > 0) {
        reason = "there are edges with an odd number of triangles. zol mesh info tells where.";
    }
    throw UsageError("'" + file + "' is not closed, so that it has no inside: " + reason);
}

int tell_one(const Mesh& mesh, const MeshContainsRequest& request, Output& output) {
    const Side side = side_of(mesh, *request.point, request.tolerance);
    if (request.as_json) {
        JsonWriter json(output);
        json.BeginObject();
        json.Key("point");
        write_point(json, *request.point);
        json.Key("tolerance");
        json.Number(request.tolerance);
        json.Key("side");
        json.Text(name_of(side));
        json.EndObject();
    } else {
        write_line(output, side == Side::On ? "on the surface" : name_of(side));
    }
    return side == Side::Outside ? kNotFound : kGood;
}

/// 0 for what has no size, as a pipe.
long long size_of(const std::string& file) {
    std::error_code error;
    const auto size = std::filesystem::file_size(file, error);
    return error ? 0 : static_cast<long long>(size);
}

void tell_all(const Mesh& mesh, const MeshContainsRequest& request, Output& output) {
    PointRows rows(request.points);
    if (!rows.Remark().empty()) {
        std::fprintf(stderr, "zol: %s: %s\n", request.points.c_str(), rows.Remark().c_str());
    }
    const std::string column = free_name("side", rows.Names());
    const auto answers =
        request.as_json ? json_answers(rows, column, output) : csv_answers(rows, column, output);
    ProgressBar progress(size_of(request.points), "bytes", meanwhile_of(request.to));
    answers->Begin();
    for (long long done = 0; rows.Next(); done = rows.BytesRead()) {
        answers->Write(side_of(mesh, rows.Where(), request.tolerance));
        progress.Advance(rows.BytesRead() - done);
    }
    answers->End();
}

}  // namespace

int run_mesh_contains(const MeshContainsRequest& request, Output& output) {
    const auto mesh = open_mesh(request.file);
    require_inside(request.file, *mesh);
    if (request.point) return tell_one(*mesh, request, output);
    write_to(request.to, {request.file, request.points}, output,
             [&](Output& stream) { tell_all(*mesh, request, stream); });
    return kGood;
}

}  // namespace zol::tool
