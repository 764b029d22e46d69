// Reads a drawing through the flat library, object by object, and through GDAL, feature by
// feature. Says in one line of JSON what it cost: processor seconds, and megabytes above those
// of the process before; and for ours, how many megabytes the points of its polylines are.
//
//   design_read zol|gdal FILE.dxf
#include <gdal.h>
#include <ogr_api.h>

#include <cstdio>
#include <string>
#include <string_view>

#include "api/zolExportedApi_ReadOnly.h"
#include "bench/clock.h"

namespace {

struct Counts {
    long long objects = 0;
    /// Of polylines.
    long long points = 0;
    double open_seconds = 0;
};

int type_of(ObjectHandle* object) {
    int type = 0;
    ZOL_Object_GetType(object, &type);
    return type;
}

void read_layer(LayerHandle* layer, Counts& counts) {
    constexpr int kPolyline = 1;
    const int n_objects = ZOL_Layer_NObjects(layer);
    for (int i = 0; i < n_objects; ++i) {
        ObjectHandle* const object = ZOL_Layer_GetObject(layer, &i);
        if (object == nullptr) bench::fail("design_read: an object can't be read");
        ++counts.objects;
        if (type_of(object) == kPolyline) counts.points += ZOL_Object_Polyline_NPoints(object);
        ZOL_Object_Close(object);
    }
}

Counts read_with_us(const std::string& name) {
    Counts counts;
    DatabaseHandle* database = nullptr;
    counts.open_seconds = bench::timed([&] { database = ZOL_Database_Open(name.c_str()); });
    if (database == nullptr) return counts;
    const int n_layers = ZOL_Database_NLayers(database);
    for (int i = 0; i < n_layers; ++i) {
        LayerHandle* const layer = ZOL_Database_GetLayerByIndex(database, &i);
        read_layer(layer, counts);
        ZOL_Layer_Close(layer);
    }
    // Left open, so that its memory is in the peak.
    return counts;
}

Counts read_with_gdal(const std::string& name) {
    GDALAllRegister();
    const char* const drivers[] = {"DXF", nullptr};
    Counts counts;
    GDALDatasetH file =
        GDALOpenEx(name.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY, drivers, nullptr, nullptr);
    if (file == nullptr) return counts;
    for (int i = 0; i < GDALDatasetGetLayerCount(file); ++i) {
        OGRLayerH layer = GDALDatasetGetLayer(file, i);
        while (OGRFeatureH feature = OGR_L_GetNextFeature(layer)) {
            OGRGeometryH geometry = OGR_F_GetGeometryRef(feature);
            ++counts.objects;
            if (geometry != nullptr) counts.points += OGR_G_GetPointCount(geometry);
            OGR_F_Destroy(feature);
        }
    }
    return counts;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view who = argc == 3 ? argv[1] : "";
    if (who != "zol" && who != "gdal") bench::fail("usage: design_read zol|gdal FILE.dxf");
    const std::string name = argv[2];
    ZOL_API_Init();
    const double before = bench::peak_megabytes();
    Counts counts;
    const double seconds =
        bench::timed([&] { counts = who == "zol" ? read_with_us(name) : read_with_gdal(name); });
    if (counts.objects == 0) bench::fail("design_read: can't read " + name);
    std::printf(
        "{\"open_s\": %.4f, \"read_s\": %.4f, \"peak_mb\": %.1f, \"objects\": %lld, "
        "\"points\": %lld}\n",
        counts.open_seconds, seconds, bench::peak_megabytes() - before, counts.objects,
        counts.points);
    return 0;
}
