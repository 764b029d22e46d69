// Asks a mesh hard questions through the flat library, and Embree those that it has an
// answer to. Each question is the first one after the mesh was opened, so that what it
// needs built is in its time. In one line of JSON.
//
//   mesh_ask zol inside|crossing|consistent|volume FILE.obj
//   mesh_ask embree inside FILE.obj
#include <embree3/rtcore.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "api/zolExportedApi_ReadOnly.h"
#include "bench/mesh_points.h"

namespace {

/// A mesh open in the flat library.
class Flat {
public:
    explicit Flat(const char* name) : handle_(ZOL_Triangulation_Open(name)) {
        if (handle_ == nullptr) bench::fail(std::string("mesh_ask: can't open ") + name);
    }
    Flat(const Flat&) = delete;
    Flat& operator=(const Flat&) = delete;
    ~Flat() { ZOL_Triangulation_Close(handle_); }

    TriangulationHandle* Handle() const { return handle_; }
    bool IsInside(const bench::Point& point) const {
        return ZOL_Triangulation_IsPointInside(handle_, &point[0], &point[1], &point[2]) == 1;
    }

private:
    TriangulationHandle* handle_;
};

/// Rays in single precision against the middle of the mesh: the first triangle over a
/// point shows it the back of its face when the point is inside.
class Rays {
public:
    explicit Rays(const bench::Mesh& mesh)
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

    bool IsInside(const bench::Point& point) const {
        RTCIntersectContext context;
        rtcInitIntersectContext(&context);
        RTCRayHit ray{};
        ray.ray.org_x = Shifted(point, 0);
        ray.ray.org_y = Shifted(point, 1);
        ray.ray.org_z = Shifted(point, 2);
        ray.ray.dir_z = 1.0F;
        ray.ray.tfar = std::numeric_limits<float>::infinity();
        ray.ray.mask = ~0U;
        ray.hit.geomID = RTC_INVALID_GEOMETRY_ID;
        rtcIntersect1(scene_, &context, &ray);
        return ray.hit.geomID != RTC_INVALID_GEOMETRY_ID && ray.hit.Ng_z > 0.0F;
    }

private:
    float Shifted(const bench::Point& point, std::size_t axis) const {
        return static_cast<float>(point[axis] - origin_[axis]);
    }

    RTCDevice device_;
    RTCScene scene_;
    bench::Point origin_{};
};

/// `make` gives what answers: what it builds counts as part of the first question.
template <class Make>
void inside(const bench::Mesh& mesh, Make make) {
    const auto anywhere = bench::points_in_box(mesh, bench::kQuestions);
    const auto near = bench::points_near_surface(mesh, bench::kQuestions);
    const double start = bench::seconds();
    const auto& answers = make();
    const auto is_inside = [&](const bench::Point& point) { return answers.IsInside(point); };
    is_inside(anywhere[0]);
    const double first = bench::seconds() - start;
    bench::print_inside(first, bench::ask(anywhere, is_inside), bench::ask(near, is_inside));
}

void ask_flat(std::string_view what, const char* name) {
    const Flat flat(name);
    TriangulationHandle* const handle = flat.Handle();
    if (what == "inside") {
        inside(bench::read_plain_obj(name), [&]() -> const Flat& { return flat; });
    } else if (what == "crossing") {
        int crosses = 0;
        const double seconds =
            bench::timed([&] { crosses = ZOL_Triangulation_IsCrossing(handle); });
        bench::print_fact(seconds, crosses);
    } else if (what == "consistent") {
        // Whether it is closed comes from the same pass over its edges.
        int consistent = 0;
        const double seconds =
            bench::timed([&] { consistent = ZOL_Triangulation_IsConsistent(handle); });
        bench::print_fact(seconds, consistent);
    } else if (what == "volume") {
        double volume = 0.0;
        // Its edges are looked at before, which is timed by itself.
        ZOL_Triangulation_IsConsistent(handle);
        const double seconds = bench::timed([&] { ZOL_Triangulation_GetVolume(handle, &volume); });
        bench::print_volume(seconds, volume, bench::read_plain_obj(name));
    } else {
        bench::fail("mesh_ask: no such question");
    }
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view who = argc == 4 ? argv[1] : "";
    if (who == "zol") {
        ZOL_API_Init();
        ask_flat(argv[2], argv[3]);
    } else if (who == "embree") {
        const bench::Mesh mesh = bench::read_plain_obj(argv[3]);
        std::optional<Rays> rays;
        inside(mesh, [&]() -> const Rays& { return rays.emplace(mesh); });
    } else {
        bench::fail("usage: mesh_ask zol|embree inside|crossing|consistent|volume FILE.obj");
    }
    return 0;
}
