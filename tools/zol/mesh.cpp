#include "tools/zol/mesh.h"

#include "tools/zol/last_error.h"

namespace zol::tool {

namespace {

void require(int status) {
    if (status != 0) fail_by_last_error();
}

/// The answer of a predicate or a count, both of which fail by a negative number.
int answered(int answer) {
    if (answer < 0) fail_by_last_error();
    return answer;
}

}  // namespace

Mesh::Mesh(const std::string& file) : handle_(ZOL_Triangulation_Open(file.c_str())) {
    if (handle_ == nullptr) fail_by_last_error();
    n_points_ = answered(ZOL_Triangulation_NumPoints(handle_.get()));
    n_triangles_ = answered(ZOL_Triangulation_NumTriangles(handle_.get()));
}

Point Mesh::PointAt(int index) const {
    Point point;
    require(ZOL_Triangulation_GetPoint(handle_.get(), &index, &point.x, &point.y, &point.z));
    return point;
}

MeshTriangle Mesh::TriangleAt(int index) const {
    MeshTriangle triangle{};
    require(ZOL_Triangulation_GetTriangle(handle_.get(), &index, &triangle[0], &triangle[1],
                                          &triangle[2]));
    return triangle;
}

double Mesh::Volume() const {
    double volume = 0;
    require(ZOL_Triangulation_GetVolume(handle_.get(), &volume));
    return volume;
}

bool Mesh::IsSolid() const {
    return answered(ZOL_Triangulation_IsSolid(handle_.get())) == 1;
}

bool Mesh::IsSurface() const {
    return answered(ZOL_Triangulation_IsSurface(handle_.get())) == 1;
}

bool Mesh::IsCrossing() const {
    return answered(ZOL_Triangulation_IsCrossing(handle_.get())) == 1;
}

bool Mesh::IsConsistent() const {
    return answered(ZOL_Triangulation_IsConsistent(handle_.get())) == 1;
}

bool Mesh::IsInside(const Point& point) const {
    return answered(ZOL_Triangulation_IsPointInside(handle_.get(), &point.x, &point.y, &point.z)) ==
           1;
}

bool Mesh::IsOn(const Point& point, double tolerance) const {
    return answered(ZOL_Triangulation_IsPointOn(handle_.get(), &point.x, &point.y, &point.z,
                                                &tolerance)) == 1;
}

Appearance Mesh::Look() const {
    Appearance look;
    auto& [red, green, blue] = look.colour;
    require(ZOL_Triangulation_GetColour(handle_.get(), &red, &green, &blue));
    look.is_translucent = answered(ZOL_Triangulation_IsTranslucent(handle_.get())) == 1;
    look.translucency = ZOL_Triangulation_GetTranslucency(handle_.get());
    if (ZOL_API_HasError() != 0) fail_by_last_error();
    look.is_textured = answered(ZOL_Triangulation_IsTextured(handle_.get())) == 1;
    std::array<char, 256> texture{};
    require(ZOL_Triangulation_GetTexture(handle_.get(), texture.data()));
    look.texture = texture.data();
    return look;
}

void walk_points(const Mesh& mesh, ProgressBar& progress,
                 const std::function<void(const Point&)>& take) {
    for (int i = 0; i < mesh.NPoints(); ++i) {
        take(mesh.PointAt(i));
        progress.Advance();
    }
}

void walk_triangles(const Mesh& mesh, ProgressBar& progress,
                    const std::function<void(const MeshTriangle&)>& take) {
    for (int i = 0; i < mesh.NTriangles(); ++i) {
        take(mesh.TriangleAt(i));
        progress.Advance();
    }
}

void walk_corners(const Mesh& mesh, ProgressBar& progress,
                  const std::function<void(const std::array<Point, 3>&)>& take) {
    walk_triangles(mesh, progress, [&](const MeshTriangle& triangle) {
        take({mesh.PointAt(triangle[0]), mesh.PointAt(triangle[1]), mesh.PointAt(triangle[2])});
    });
}

}  // namespace zol::tool
