#include "tools/zol/mesh_normal.h"
#include "tools/zol/mesh_writers.h"
#include "tools/zol/number_text.h"

namespace zol::tool {

namespace {

/// "1 2.5 3"
void write_coordinates(Output& output, const Point& point, char between) {
    output.Write(number_text(point.x));
    output.Write(between);
    output.Write(number_text(point.y));
    output.Write(between);
    output.Write(number_text(point.z));
}

}  // namespace

void write_obj(const Mesh& mesh, ProgressBar& progress, Output& output) {
    walk_points(mesh, progress, [&](const Point& point) {
        output.Write("v ");
        write_coordinates(output, point, ' ');
        output.Write('\n');
    });
    walk_triangles(mesh, progress, [&](const MeshTriangle& triangle) {
        output.Write('f');
        for (const int corner : triangle) {
            output.Write(' ');
            output.Write(whole_text(corner + 1LL));
        }
        output.Write('\n');
    });
}

void write_stl_text(const Mesh& mesh, ProgressBar& progress, Output& output) {
    output.Write("solid mesh\n");
    walk_corners(mesh, progress, [&](const std::array<Point, 3>& corners) {
        const auto [x, y, z] = unit_normal(corners);
        output.Write("facet normal");
        for (const float part : {x, y, z}) {
            output.Write(' ');
            output.Write(number_text(part));
        }
        output.Write("\nouter loop\n");
        for (const Point& corner : corners) {
            output.Write("vertex ");
            write_coordinates(output, corner, ' ');
            output.Write('\n');
        }
        output.Write("endloop\nendfacet\n");
    });
    output.Write("endsolid mesh\n");
}

void write_triangles_csv(const Mesh& mesh, ProgressBar& progress, Output& output) {
    output.Write("x1,y1,z1,x2,y2,z2,x3,y3,z3\n");
    walk_corners(mesh, progress, [&](const std::array<Point, 3>& corners) {
        write_coordinates(output, corners[0], ',');
        output.Write(',');
        write_coordinates(output, corners[1], ',');
        output.Write(',');
        write_coordinates(output, corners[2], ',');
        output.Write('\n');
    });
}

}  // namespace zol::tool
