// Walks a block model block by block and reads three numbers of each by name, as a
// planning program does; then the same file through GDAL's C interface, feature by
// feature. Says both rates in one line of JSON.
//
//   walk_vs_gdal FILE.csv VARIABLE VARIABLE VARIABLE
#include <gdal.h>
#include <ogr_api.h>

#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "api/zolExportedApi_ReadOnly.h"

namespace {

constexpr std::size_t kVariables = 3;
constexpr int kRounds = 3;

using Names = std::array<const char*, kVariables>;

struct Walk {
    double seconds = 0.0;
    std::int64_t values = 0;
    double sum = 0.0;
};

double seconds_since(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

[[noreturn]] void fail(const char* what) {
    std::fprintf(stderr, "walk_vs_gdal: %s\n", what);
    std::exit(1);
}

Walk walk_flat(BlockModelHandle* model, const Names& names) {
    Walk walk;
    const auto start = std::chrono::steady_clock::now();
    ZOL_BlockModel_FirstBlock(model);
    while (ZOL_BlockModel_IsEof(model) == 0) {
        for (const char* name : names) {
            double value = 0.0;
            ZOL_BlockModel_GetNumber(model, name, &value);
            walk.sum += value;
        }
        walk.values += std::int64_t{kVariables};
        ZOL_BlockModel_NextBlock(model);
    }
    walk.seconds = seconds_since(start);
    return walk;
}

Walk walk_gdal(OGRLayerH layer, const Names& names) {
    Walk walk;
    const auto start = std::chrono::steady_clock::now();
    OGR_L_ResetReading(layer);
    while (OGRFeatureH feature = OGR_L_GetNextFeature(layer)) {
        for (const char* name : names) {
            walk.sum += OGR_F_GetFieldAsDouble(feature, OGR_F_GetFieldIndex(feature, name));
        }
        walk.values += std::int64_t{kVariables};
        OGR_F_Destroy(feature);
    }
    walk.seconds = seconds_since(start);
    return walk;
}

/// Tells the reader not to fill the fields that nobody asks for.
void ignore_other_fields(OGRLayerH layer, const Names& names) {
    std::vector<std::string> others;
    OGRFeatureDefnH definition = OGR_L_GetLayerDefn(layer);
    for (int i = 0; i < OGR_FD_GetFieldCount(definition); ++i) {
        const std::string field = OGR_Fld_GetNameRef(OGR_FD_GetFieldDefn(definition, i));
        bool asked = false;
        for (const char* name : names) {
            asked = asked || field == name;
        }
        if (!asked) {
            others.push_back(field);
        }
    }
    std::vector<const char*> list;
    for (const std::string& name : others) {
        list.push_back(name.c_str());
    }
    list.push_back(nullptr);
    OGR_L_SetIgnoredFields(layer, list.data());
}

void check_equal(const Walk& ours, const Walk& theirs) {
    if (ours.values != theirs.values ||
        std::abs(ours.sum - theirs.sum) > 1e-9 * std::abs(theirs.sum)) {
        fail("the two readers disagree");
    }
}

double rate(const Walk& walk) {
    return static_cast<double>(walk.values) / walk.seconds / 1e6;
}

const Walk& faster(const Walk& a, const Walk& b) {
    return a.seconds > 0.0 && a.seconds < b.seconds ? a : b;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2 + static_cast<int>(kVariables)) {
        std::fprintf(stderr, "usage: walk_vs_gdal FILE.csv VARIABLE VARIABLE VARIABLE\n");
        return 2;
    }
    const Names names = {argv[2], argv[3], argv[4]};

    ZOL_API_Init();
    const auto opening = std::chrono::steady_clock::now();
    BlockModelHandle* model = ZOL_BlockModel_Open(argv[1]);
    if (model == nullptr) {
        fail("the library can't open the file");
    }
    // What a program that walks once pays: opening and decoding are in it.
    Walk once = walk_flat(model, names);
    once.seconds = seconds_since(opening);

    GDALAllRegister();
    GDALDatasetH dataset = GDALOpenEx(argv[1], GDAL_OF_VECTOR, nullptr, nullptr, nullptr);
    if (dataset == nullptr) {
        fail("GDAL can't open the file");
    }
    OGRLayerH layer = GDALDatasetGetLayer(dataset, 0);

    Walk flat;
    Walk gdal;
    Walk gdal_three;
    for (int round = 0; round < kRounds; ++round) {
        flat = faster(flat, walk_flat(model, names));
        OGR_L_SetIgnoredFields(layer, nullptr);
        gdal = faster(gdal, walk_gdal(layer, names));
        ignore_other_fields(layer, names);
        gdal_three = faster(gdal_three, walk_gdal(layer, names));
        check_equal(flat, gdal);
        check_equal(flat, gdal_three);
    }
    std::printf("{\"once\": %.3f, \"again\": %.3f, \"gdal\": %.3f, \"gdal_three_fields\": %.3f}\n",
                rate(once), rate(flat), rate(gdal), rate(gdal_three));
    GDALClose(dataset);
    ZOL_BlockModel_Close(model);
    return 0;
}
