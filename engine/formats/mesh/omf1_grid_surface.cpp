#include "engine/formats/mesh/omf1_grid_surface.h"

#include <cmath>
#include <memory>
#include <string>
#include <string_view>

#include "engine/formats/mesh/mesh_limits.h"
#include "engine/formats/omf1_elements.h"
#include "engine/formats/read_error.h"

namespace zol::engine {

namespace {

using Vector = Omf1GridSurface::Vector;

// Of the length of an axis, and of the angle of two.
constexpr double kRounding = 1e-6;

// Of a flat surface, which takes no room in the file.
constexpr std::uint64_t kMostFlatNodes = std::uint64_t{1} << 22;

double dot(const Vector& a, const Vector& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Vector cross(const Vector& a, const Vector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

std::vector<double> nodes_along(const JsonValue& geometry, std::string_view key) {
    std::vector<double> nodes{0.0};
    for (const double width : read_widths(geometry.Get(key), kMostMeshElements - 1)) {
        nodes.push_back(nodes.back() + width);
    }
    return nodes;
}

Vector axis_of(const JsonValue& geometry, std::string_view key, const Vector& otherwise) {
    const Vector axis = read_vector(geometry, key, otherwise);
    if (!(std::fabs(dot(axis, axis) - 1.0) <= 2 * kRounding)) {
        geometry.Refuse("has an " + std::string(key) + " that is not of length 1");
    }
    return axis;
}

}  // namespace

Omf1GridSurface lay_out_grid_surface(const Omf1Document& document, const JsonValue& geometry) {
    Omf1GridSurface surface;
    surface.u = axis_of(geometry, "axis_u", {1, 0, 0});
    surface.v = axis_of(geometry, "axis_v", {0, 1, 0});
    if (!(std::fabs(dot(surface.u, surface.v)) <= kRounding)) {
        geometry.Refuse("has axes that are not at right angles");
    }
    surface.along_u = nodes_along(geometry, "tensor_u");
    surface.along_v = nodes_along(geometry, "tensor_v");
    // Two counts fit 62 bits. There are two triangles to a cell.
    if (surface.Nodes() > kMostMeshElements || surface.Cells() > kMostMeshElements / 2) {
        geometry.Refuse("has more nodes than are counted in 32 bits");
    }
    if (const auto reference = geometry.Find("offset_w")) {
        surface.heights = document.Blob(*reference, {"ScalarArray"});
        if (surface.heights->type != Omf1Blob::Type::Float64) {
            reference->Refuse("refers to whole numbers, not to heights");
        }
        check_can_hold(*surface.heights, surface.Nodes() * sizeof(double));
    } else if (surface.Nodes() > kMostFlatNodes) {
        geometry.Refuse("is flat and has more than " + std::to_string(kMostFlatNodes) + " nodes");
    }
    return surface;
}

MeshData Omf1GridSurface::Build(const File& file, const Vector& origin) const {
    std::unique_ptr<double[]> raised;
    if (heights) {
        raised = std::make_unique_for_overwrite<double[]>(Nodes());
        inflate_exactly(file, *heights, raised.get(), Nodes() * sizeof(double));
    }
    const Vector w = cross(u, v);
    MeshData mesh;
    mesh.points.Reserve(Nodes());
    mesh.triangles.Reserve(2 * Cells());
    // Point numbers of the row of nodes before, and of this one; -1 where there is none.
    std::vector<std::int32_t> below(along_u.size(), -1);
    std::vector<std::int32_t> row(along_u.size(), -1);
    const auto add = [&](std::int32_t a, std::int32_t b, std::int32_t c) {
        if (a >= 0 && b >= 0 && c >= 0) mesh.triangles.Add({a, b, c});
    };
    for (std::size_t j = 0; j < along_v.size(); ++j) {
        for (std::size_t i = 0; i < along_u.size(); ++i) {
            const double height = raised ? raised[j * along_u.size() + i] : 0.0;
            if (std::isnan(height)) {
                row[i] = -1;
                continue;
            }
            MeshPoint point;
            for (std::size_t axis = 0; axis < 3; ++axis) {
                point[axis] =
                    origin[axis] + along_u[i] * u[axis] + along_v[j] * v[axis] + height * w[axis];
            }
            if (!are_coordinates(point)) {
                throw ReadError("node (" + std::to_string(i) + ", " + std::to_string(j) +
                                "): " + kNoCoordinates);
            }
            row[i] = static_cast<std::int32_t>(mesh.points.Size());
            mesh.points.Add(point);
        }
        for (std::size_t i = 0; j > 0 && i + 1 < along_u.size(); ++i) {
            add(below[i], below[i + 1], row[i + 1]);
            add(below[i], row[i + 1], row[i]);
        }
        below.swap(row);
    }
    mesh.points.Trim();
    mesh.triangles.Trim();
    return mesh;
}

}  // namespace zol::engine
