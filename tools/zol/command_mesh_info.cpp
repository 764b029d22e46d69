// `zol mesh info`: what a triangulation is like, and where it is not as one would have it.

#include "tools/zol/exit_codes.h"
#include "tools/zol/mesh_commands.h"
#include "tools/zol/mesh_report.h"
#include "tools/zol/open_model.h"

namespace zol::tool {

namespace {

MeshReport report_of(const std::string& file, const Mesh& mesh, const MeshShape& shape) {
    MeshReport report;
    report.name = file;
    report.n_points = mesh.NPoints();
    report.n_triangles = mesh.NTriangles();
    report.n_degenerate = shape.NDegenerate();
    report.extent = shape.Extent();
    report.area = shape.Area();
    report.edges = shape.Edges();
    if (report.edges.is_closed) report.volume = mesh.Volume();
    report.is_consistent = mesh.IsConsistent();
    report.is_solid = mesh.IsSolid();
    return report;
}

MeshMeetings meetings_of(const Mesh& mesh, const MeshShape& shape) {
    MeshMeetings meetings;
    meetings.is_surface = mesh.IsSurface();
    if (!meetings.is_surface && !mesh.IsSolid()) meetings.second_height = shape.FindSecondHeight();
    if (mesh.IsCrossing()) meetings.crossings = shape.Crossings();
    return meetings;
}

}  // namespace

int run_mesh_info(const MeshInfoRequest& request, Output& output) {
    const auto mesh = open_mesh(request.file);
    const MeshShape shape(*mesh);
    const MeshReport report = report_of(request.file, *mesh, shape);
    if (request.as_json) {
        JsonWriter json(output);
        json.BeginObject();
        write_report(report, json);
        if (!request.quick) write_meetings(meetings_of(*mesh, shape), json);
        write_look(*mesh, json);
        json.EndObject();
        return kGood;
    }
    write_report(report, output);
    if (!request.quick) {
        // What comes next may take its time.
        output.Flush();
        write_meetings(meetings_of(*mesh, shape), output);
    }
    write_look(*mesh, output);
    return kGood;
}

}  // namespace zol::tool
