// Walks the points of a polyline through the flat library, and looks layers up by their index.
// Says the nanoseconds of a point, or the milliseconds of a thousand look-ups, in one line of
// JSON: processor time, the best of five.
//
//   design_walk points FILE.dxf      of its first object that has points
//   design_walk layers FILE.dxf
#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

#include "api/zolExportedApi_ReadOnly.h"
#include "bench/clock.h"

namespace {

constexpr int kTurns = 5;
constexpr std::size_t kTextBytes = 255;

ObjectHandle* first_of(DatabaseHandle* database) {
    const int first = 0;
    for (int i = 0; i < ZOL_Database_NLayers(database); ++i) {
        LayerHandle* const layer = ZOL_Database_GetLayerByIndex(database, &i);
        ObjectHandle* const object =
            ZOL_Layer_NObjects(layer) > 0 ? ZOL_Layer_GetObject(layer, &first) : nullptr;
        ZOL_Layer_Close(layer);
        if (object != nullptr) return object;
    }
    bench::fail("design_walk: there are no objects");
}

void walk_points(ObjectHandle* line) {
    const int count = ZOL_Object_Polyline_NPoints(line);
    double best = 1e9;
    double sum = 0;
    for (int turn = 0; turn < kTurns; ++turn) {
        const double seconds = bench::timed([&] {
            std::array<char, kTextBytes> name{};
            for (int i = 0; i < count; ++i) {
                double x = 0;
                double y = 0;
                double z = 0;
                double w = 0;
                int t = 0;
                ZOL_Object_Polyline_GetPointInfo(line, &i, &x, &y, &z, &w, &t, name.data());
                sum += x + y + z;
            }
        });
        best = std::min(best, seconds);
    }
    std::printf("{\"points\": %d, \"point_ns\": %.2f, \"sum\": %.3f}\n", count, best * 1e9 / count,
                sum);
}

void look_up_layers(DatabaseHandle* database) {
    constexpr int kLookUps = 1000;
    const int count = ZOL_Database_NLayers(database);
    double best = 1e9;
    for (int turn = 0; turn < kTurns; ++turn) {
        const double seconds = bench::timed([&] {
            std::array<char, kTextBytes> name{};
            for (int i = 0; i < kLookUps; ++i) {
                const int index = static_cast<int>(static_cast<long long>(i) * count / kLookUps);
                ZOL_Database_GetLayerNameByIndex(database, &index, name.data());
            }
        });
        best = std::min(best, seconds);
    }
    std::printf("{\"layers\": %d, \"thousand_ms\": %.2f}\n", count, best * 1000);
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view what = argc == 3 ? argv[1] : "";
    if (what != "points" && what != "layers") {
        bench::fail("usage: design_walk points|layers FILE.dxf");
    }
    ZOL_API_Init();
    DatabaseHandle* const database = ZOL_Database_Open(argv[2]);
    if (database == nullptr) bench::fail("design_walk: can't read the drawing");
    if (what == "layers") {
        look_up_layers(database);
    } else {
        walk_points(first_of(database));
    }
    return 0;
}
