// Asks a mesh hard questions through the flat library, and Embree those that it has an
// answer to. Each question is the first one after the mesh was opened, so that what it
// needs built is in its time. In one line of JSON.
//
//   mesh_ask zol inside|crossing|consistent|volume FILE.obj
//   mesh_ask embree inside FILE.obj
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "api/zolExportedApi_ReadOnly.h"
#include "bench/embree_rays.h"
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
        std::optional<bench::Rays> rays;
        inside(mesh, [&]() -> const bench::Rays& { return rays.emplace(mesh); });
    } else {
        bench::fail("usage: mesh_ask zol|embree inside|crossing|consistent|volume FILE.obj");
    }
    return 0;
}
