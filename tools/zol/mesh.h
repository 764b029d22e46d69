// A triangulation behind the flat interface, as a C++ value: it closes itself, and its
// texts are strings.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>

#include "api/zolExportedApi_ReadOnly.h"
#include "tools/zol/block_model.h"
#include "tools/zol/progress_bar.h"

namespace zol::tool {

/// Point numbers from 0, counter-clockwise seen from outside.
using MeshTriangle = std::array<int, 3>;

struct Appearance {
    /// Red, green, blue, each 0 to 255.
    std::array<int, 3> colour{};
    bool is_translucent = false;
    /// From 0, opaque, to 1, clear.
    double translucency = 0;
    bool is_textured = false;
    std::string texture;
};

/// An open triangulation. Each operation throws ReadFailure when the call below fails.
class Mesh {
public:
    /// Throws ReadFailure when the file does not open.
    explicit Mesh(const std::string& file);

    int NPoints() const { return n_points_; }
    int NTriangles() const { return n_triangles_; }
    Point PointAt(int index) const;
    MeshTriangle TriangleAt(int index) const;

    /// 0 for a mesh that is not closed.
    double Volume() const;
    bool IsSolid() const;
    bool IsSurface() const;
    bool IsCrossing() const;
    bool IsConsistent() const;
    bool IsInside(const Point& point) const;
    bool IsOn(const Point& point, double tolerance) const;

    Appearance Look() const;

    /// For what is asked besides; stays this object's.
    TriangulationHandle* Handle() const { return handle_.get(); }

private:
    struct Close {
        void operator()(TriangulationHandle* handle) const { ZOL_Triangulation_Close(handle); }
    };

    std::unique_ptr<TriangulationHandle, Close> handle_;
    int n_points_ = 0;
    int n_triangles_ = 0;
};

/// All points, and all triangles, in the order of the file.
void walk_points(const Mesh& mesh, ProgressBar& progress,
                 const std::function<void(const Point&)>& take);
void walk_triangles(const Mesh& mesh, ProgressBar& progress,
                    const std::function<void(const MeshTriangle&)>& take);

/// The corners of all triangles.
void walk_corners(const Mesh& mesh, ProgressBar& progress,
                  const std::function<void(const std::array<Point, 3>&)>& take);

}  // namespace zol::tool
