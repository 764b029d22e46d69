#include "engine/block/match_region.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <utility>

#include "engine/formats/diagnostics.h"
#include "engine/formats/mesh/mesh_file.h"
#include "engine/formats/mesh/mesh_limits.h"
#include "engine/formats/read_error.h"

namespace zol::engine::block {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::vector<geometry::Point> points_in_model(const GrowingArray<MeshPoint>& points,
                                             const Placement& placement) {
    std::vector<geometry::Point> moved;
    moved.reserve(points.Size());
    for (const MeshPoint& point : points.View()) {
        const zol::geometry::Coord3D at = placement.ToModel(point[0], point[1], point[2]);
        moved.push_back({at.x, at.y, at.z});
        for (const double coordinate : moved.back()) {
            if (!(std::fabs(coordinate) <= kMostCoordinate)) {
                throw ReadError("it lies too far out to be matched with");
            }
        }
    }
    return moved;
}

}  // namespace

MatchRegion::MatchRegion(const MatchRequest& request, const Source& source)
    : exact_(request.exact),
      has_meshes_(!request.triangulations.empty()),
      limits_{{-kInfinity, -kInfinity, -kInfinity}, {kInfinity, kInfinity, kInfinity}} {
    if (request.extent) SetLimits(*request.extent, source.name);
    for (const std::string& name : request.triangulations) AddMesh(name, source);
}

void MatchRegion::SetLimits(const zol::geometry::Extent& extent, const std::string& model) {
    limits_ = box_of(extent);
    for (std::size_t axis = 0; axis < 3; ++axis) {
        // Not a number fails, too.
        has_limits_ = has_limits_ && limits_.lower[axis] < limits_.upper[axis];
    }
    if (!has_limits_) report(model, "the extent of a match has no room in it; no block matches");
}

void MatchRegion::AddMesh(const std::string& name, const Source& source) {
    try {
        MeshData mesh = read_mesh(name);
        std::vector<geometry::Point> points = points_in_model(mesh.points, source.placement);
        const auto triangles = mesh.triangles.View();
        auto solid = std::make_unique<const geometry::Solid>(
            std::move(points), std::vector<geometry::Triangle>(triangles.begin(), triangles.end()),
            source.extent.z0);
        for (const std::string& remark : solid->Remarks()) report(name, "in a match: " + remark);
        selection_.Add(std::move(solid));
    } catch (const ReadError& error) {
        report(name, error.what());
    }
}

geometry::Box MatchRegion::Counted(const geometry::Box& block) const {
    if (!exact_) return block;
    geometry::Box counted = block;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        counted.lower[axis] = std::max(block.lower[axis], limits_.lower[axis]);
        counted.upper[axis] = std::min(block.upper[axis], limits_.upper[axis]);
    }
    return counted;
}

bool MatchRegion::IsWithinLimits(const geometry::Point& point) const {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (!(point[axis] >= limits_.lower[axis] && point[axis] < limits_.upper[axis])) {
            return false;
        }
    }
    return true;
}

}  // namespace zol::engine::block
