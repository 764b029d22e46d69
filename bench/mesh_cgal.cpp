// What CGAL makes of a mesh: reading it, and the questions that mesh_ask asks of the flat
// library. In one line of JSON. Parts of CGAL are under the GPL: this program is built only
// when it is asked for, and nothing else is linked with it.
//
//   mesh_cgal read FILE.obj|FILE.stl
//   mesh_cgal inside|crossing|edges|volume FILE.obj
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/IO/OBJ.h>
#include <CGAL/IO/STL.h>
#include <CGAL/Polygon_mesh_processing/measure.h>
#include <CGAL/Polygon_mesh_processing/polygon_soup_to_polygon_mesh.h>
#include <CGAL/Polygon_mesh_processing/repair_polygon_soup.h>
#include <CGAL/Polygon_mesh_processing/self_intersections.h>
#include <CGAL/Side_of_triangle_mesh.h>
#include <CGAL/Surface_mesh.h>

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/mesh_points.h"

namespace {

namespace processing = CGAL::Polygon_mesh_processing;
using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
using Point3 = Kernel::Point_3;
using SurfaceMesh = CGAL::Surface_mesh<Point3>;
using Inside = CGAL::Side_of_triangle_mesh<SurfaceMesh, Kernel>;

struct Soup {
    std::vector<Point3> points;
    std::vector<std::vector<std::size_t>> triangles;
};

Soup soup_of(const bench::Mesh& mesh) {
    Soup soup;
    for (const bench::Point& point : mesh.points) {
        soup.points.emplace_back(point[0], point[1], point[2]);
    }
    for (const bench::Triangle& t : mesh.triangles) {
        soup.triangles.push_back({static_cast<std::size_t>(t[0]), static_cast<std::size_t>(t[1]),
                                  static_cast<std::size_t>(t[2])});
    }
    return soup;
}

void read(const std::string& name) {
    const double before = bench::peak_megabytes();
    Soup soup;
    bool was_read = false;
    const double seconds = bench::timed([&] {
        if (name.ends_with(".stl")) {
            was_read = CGAL::IO::read_STL(name, soup.points, soup.triangles);
            processing::merge_duplicate_points_in_polygon_soup(soup.points, soup.triangles);
        } else {
            was_read = CGAL::IO::read_OBJ(name, soup.points, soup.triangles);
        }
    });
    if (!was_read) bench::fail("mesh_cgal: can't read " + name);
    std::printf("{\"read_s\": %.4f, \"peak_mb\": %.1f, \"points\": %zu, \"triangles\": %zu}\n",
                seconds, bench::peak_megabytes() - before, soup.points.size(),
                soup.triangles.size());
}

void inside(const bench::Mesh& plain, const SurfaceMesh& mesh) {
    const auto anywhere = bench::points_in_box(plain, bench::kQuestions);
    const auto near = bench::points_near_surface(plain, bench::kQuestions);
    std::optional<Inside> side;
    const auto is_inside = [&](const bench::Point& point) {
        return (*side)(Point3(point[0], point[1], point[2])) == CGAL::ON_BOUNDED_SIDE;
    };
    const double first = bench::timed([&] {
        side.emplace(mesh);
        is_inside(anywhere[0]);
    });
    bench::print_inside(first, bench::ask(anywhere, is_inside), bench::ask(near, is_inside));
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view what = argc == 3 ? argv[1] : "";
    if (what.empty()) bench::fail("usage: mesh_cgal read|inside|crossing|edges|volume FILE");
    if (what == "read") {
        read(argv[2]);
        return 0;
    }
    const bench::Mesh plain = bench::read_plain_obj(argv[2]);
    Soup soup = soup_of(plain);
    if (what == "edges") {
        bool is_mesh = false;
        const double seconds = bench::timed(
            [&] { is_mesh = processing::is_polygon_soup_a_polygon_mesh(soup.triangles); });
        bench::print_fact(seconds, is_mesh ? 1 : 0);
        return 0;
    }
    SurfaceMesh mesh;
    processing::polygon_soup_to_polygon_mesh(soup.points, soup.triangles, mesh);
    if (what == "inside") inside(plain, mesh);
    if (what == "crossing") {
        bool crosses = false;
        const double seconds = bench::timed(
            [&] { crosses = processing::does_self_intersect<CGAL::Sequential_tag>(mesh); });
        bench::print_fact(seconds, crosses ? 1 : 0);
    }
    if (what == "volume") {
        double volume = 0.0;
        const double seconds = bench::timed([&] { volume = processing::volume(mesh); });
        bench::print_volume(seconds, volume, plain);
    }
    return 0;
}
