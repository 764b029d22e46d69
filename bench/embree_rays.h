// A mesh as Embree has it.
#pragma once

#include <embree3/rtcore.h>

#include <cmath>
#include <limits>
#include <vector>

#include "bench/mesh_points.h"

namespace bench {

/// Rays in single precision against the middle of the mesh: the first triangle over a
/// point shows it the back of its face when the point is inside.
class Rays {
public:
    explicit Rays(const Mesh& mesh)
        : device_(rtcNewDevice("threads=1")), scene_(rtcNewScene(device_)) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            origin_[axis] = std::round((mesh.points.front()[axis] + mesh.points.back()[axis]) / 2);
        }
        RTCGeometry geometry = rtcNewGeometry(device_, RTC_GEOMETRY_TYPE_TRIANGLE);
        auto* const points = static_cast<float*>(
            rtcSetNewGeometryBuffer(geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3,
                                    3 * sizeof(float), mesh.points.size()));
        for (std::size_t i = 0; i < mesh.points.size(); ++i) {
            for (std::size_t axis = 0; axis < 3; ++axis) {
                points[3 * i + axis] = Shifted(mesh.points[i], axis);
            }
        }
        auto* const corners = static_cast<unsigned*>(
            rtcSetNewGeometryBuffer(geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3,
                                    3 * sizeof(unsigned), mesh.triangles.size()));
        for (std::size_t t = 0; t < mesh.triangles.size(); ++t) {
            for (std::size_t i = 0; i < 3; ++i) {
                corners[3 * t + i] = static_cast<unsigned>(mesh.triangles[t][i]);
            }
        }
        rtcCommitGeometry(geometry);
        rtcAttachGeometry(scene_, geometry);
        rtcReleaseGeometry(geometry);
        rtcCommitScene(scene_);
    }
    Rays(const Rays&) = delete;
    Rays& operator=(const Rays&) = delete;
    ~Rays() {
        rtcReleaseScene(scene_);
        rtcReleaseDevice(device_);
    }

    bool IsInside(const Point& point) const {
        const RTCRayHit ray = Shoot(point, 0.0F);
        return ray.hit.geomID != RTC_INVALID_GEOMETRY_ID && ray.hit.Ng_z > 0.0F;
    }

    /// Heights at which the line upwards from a point goes through the surface.
    void FindCrossings(const Point& from, std::vector<double>& heights) const {
        heights.clear();
        for (float near = 0.0F;;) {
            const RTCRayHit ray = Shoot(from, near);
            if (ray.hit.geomID == RTC_INVALID_GEOMETRY_ID) return;
            heights.push_back(from[2] + static_cast<double>(ray.ray.tfar));
            near = std::nextafter(ray.ray.tfar, std::numeric_limits<float>::infinity());
        }
    }

private:
    RTCRayHit Shoot(const Point& from, float near) const {
        RTCIntersectContext context;
        rtcInitIntersectContext(&context);
        RTCRayHit ray{};
        ray.ray.org_x = Shifted(from, 0);
        ray.ray.org_y = Shifted(from, 1);
        ray.ray.org_z = Shifted(from, 2);
        ray.ray.dir_z = 1.0F;
        ray.ray.tnear = near;
        ray.ray.tfar = std::numeric_limits<float>::infinity();
        ray.ray.mask = ~0U;
        ray.hit.geomID = RTC_INVALID_GEOMETRY_ID;
        rtcIntersect1(scene_, &context, &ray);
        return ray;
    }

    float Shifted(const Point& point, std::size_t axis) const {
        return static_cast<float>(point[axis] - origin_[axis]);
    }

    RTCDevice device_;
    RTCScene scene_;
    Point origin_{};
};

}  // namespace bench
