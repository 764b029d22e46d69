// Walks a raster node by node through the flat library and through GDAL itself. Says what
// a node costs in one line of JSON.
//
//   grid_walk make FILE strips|tiles|packed SIDE    a GeoTIFF of SIDE x SIDE floats
//   grid_walk time FILE          nanoseconds of processor time a node, with the opening
//   grid_walk peak FILE SMALL    megabytes that walks in both orders take, above what
//                                reading the raster SMALL does
#include <gdal.h>
#include <sys/resource.h>
#include <time.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "api/zolExportedApi_ReadOnly.h"

namespace {

constexpr int kRounds = 5;

[[noreturn]] void fail(const char* what) {
    std::fprintf(stderr, "grid_walk: %s\n", what);
    std::exit(1);
}

struct Form {
    std::string_view name;
    std::array<const char*, 4> options;
};

// As GDAL writes without being asked, as people write large rasters, and what is worst for
// a walk down columns.
constexpr std::array kForms = {
    Form{"strips", {nullptr}},
    Form{"tiles", {"TILED=YES", "COMPRESS=DEFLATE", "PREDICTOR=3", nullptr}},
    Form{"packed", {"COMPRESS=DEFLATE", "PREDICTOR=3", nullptr}},
};

/// A terrain with some noise, so that compression has its usual work.
float height(int column, int row) {
    const double x = column / 400.0;
    const double y = row / 300.0;
    const auto noise =
        (static_cast<unsigned>(column) * 2654435761U ^ static_cast<unsigned>(row) * 40503U) >> 24;
    return static_cast<float>(500 + 90 * std::sin(x) * std::cos(y) + noise * 0.01);
}

void make(const char* file, std::string_view form, int side) {
    const auto* const found =
        std::find_if(kForms.begin(), kForms.end(), [&](const Form& f) { return f.name == form; });
    if (found == kForms.end()) {
        fail("no such form");
    }
    GDALDatasetH dataset = GDALCreate(GDALGetDriverByName("GTiff"), file, side, side, 1,
                                      GDT_Float32, const_cast<char**>(found->options.data()));
    std::array<double, 6> place = {440000, 5, 0, 3750000, 0, -5};
    if (dataset == nullptr || GDALSetGeoTransform(dataset, place.data()) != CE_None) {
        fail("can't make the raster");
    }
    std::vector<float> line(static_cast<std::size_t>(side));
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
            line[static_cast<std::size_t>(column)] = height(column, row);
        }
        if (GDALRasterIO(GDALGetRasterBand(dataset, 1), GF_Write, 0, row, side, 1, line.data(),
                         side, 1, GDT_Float32, 0, 0) != CE_None) {
            fail("can't write the raster");
        }
    }
    GDALClose(dataset);
}

enum class Order { Rows, Columns };

double walk_flat(const char* file, Order order) {
    GridHandle* const grid = ZOL_Grid_Open(file);
    int width = 0;
    int height_count = 0;
    if (grid == nullptr || ZOL_Grid_NumNodes(grid, &width, &height_count) != 0) {
        fail("the library can't open the raster");
    }
    double sum = 0.0;
    double value = 0.0;
    int masked = 0;
    if (order == Order::Rows) {
        for (int j = 0; j < height_count; ++j) {
            for (int i = 0; i < width; ++i) {
                ZOL_Grid_GetNodeValue(grid, &i, &j, &value, &masked);
                sum += value;
            }
        }
    } else {
        for (int i = 0; i < width; ++i) {
            for (int j = 0; j < height_count; ++j) {
                ZOL_Grid_GetNodeValue(grid, &i, &j, &value, &masked);
                sum += value;
            }
        }
    }
    ZOL_Grid_Close(grid);
    return sum;
}

GDALDatasetH open_gdal(const char* file) {
    GDALDatasetH dataset = GDALOpen(file, GA_ReadOnly);
    if (dataset == nullptr) {
        fail("GDAL can't open the raster");
    }
    return dataset;
}

double walk_gdal_nodes(const char* file) {
    GDALDatasetH dataset = open_gdal(file);
    GDALRasterBandH band = GDALGetRasterBand(dataset, 1);
    double sum = 0.0;
    double value = 0.0;
    for (int row = 0; row < GDALGetRasterYSize(dataset); ++row) {
        for (int column = 0; column < GDALGetRasterXSize(dataset); ++column) {
            if (GDALRasterIO(band, GF_Read, column, row, 1, 1, &value, 1, 1, GDT_Float64, 0, 0) !=
                CE_None) {
                fail("GDAL can't read a node");
            }
            sum += value;
        }
    }
    GDALClose(dataset);
    return sum;
}

double walk_gdal_blocks(const char* file) {
    GDALDatasetH dataset = open_gdal(file);
    GDALRasterBandH band = GDALGetRasterBand(dataset, 1);
    int across = 0;
    int down = 0;
    GDALGetBlockSize(band, &across, &down);
    const int width = GDALGetRasterXSize(dataset);
    const int rows = GDALGetRasterYSize(dataset);
    std::vector<double> block(static_cast<std::size_t>(across) * static_cast<std::size_t>(down));
    double sum = 0.0;
    for (int row = 0; row < rows; row += down) {
        for (int column = 0; column < width; column += across) {
            const int columns = std::min(across, width - column);
            const int lines = std::min(down, rows - row);
            if (GDALRasterIO(band, GF_Read, column, row, columns, lines, block.data(), columns,
                             lines, GDT_Float64, 0, 0) != CE_None) {
                fail("GDAL can't read a block");
            }
            const auto cells = static_cast<std::size_t>(columns) * static_cast<std::size_t>(lines);
            for (std::size_t i = 0; i < cells; ++i) {
                sum += block[i];
            }
        }
    }
    GDALClose(dataset);
    return sum;
}

template <typename Walk>
double time_once(double& sum, const Walk& walk) {
    timespec start{};
    timespec end{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &start);
    sum = walk();
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &end);
    return 1e9 * static_cast<double>(end.tv_sec - start.tv_sec) +
           static_cast<double>(end.tv_nsec - start.tv_nsec);
}

void time(const char* file) {
    GDALDatasetH dataset = open_gdal(file);
    const double nodes = double{1} * GDALGetRasterXSize(dataset) * GDALGetRasterYSize(dataset);
    GDALClose(dataset);
    constexpr double kNever = std::numeric_limits<double>::max();
    std::array<double, 4> best = {kNever, kNever, kNever, kNever};
    for (int round = 0; round < kRounds; ++round) {
        std::array<double, 4> sums{};
        const std::array<double, 4> spent = {
            time_once(sums[0], [&] { return walk_flat(file, Order::Rows); }),
            time_once(sums[1], [&] { return walk_flat(file, Order::Columns); }),
            // Slow enough to be measured well once.
            round == 0 ? time_once(sums[2], [&] { return walk_gdal_nodes(file); }) : kNever,
            time_once(sums[3], [&] { return walk_gdal_blocks(file); })};
        for (std::size_t i = 0; i < best.size(); ++i) {
            best[i] = std::min(best[i], spent[i]);
            const bool walked = spent[i] != kNever;
            if (walked && std::fabs(sums[i] - sums[3]) > 1e-9 * std::fabs(sums[3])) {
                fail("the walks disagree");
            }
        }
    }
    std::printf(
        "{\"rows\": %.2f, \"columns\": %.2f, \"gdal_nodes\": %.2f, \"gdal_blocks\": %.2f}\n",
        best[0] / nodes, best[1] / nodes, best[2] / nodes, best[3] / nodes);
}

double peak_megabytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

void peak(const char* file, const char* small) {
    walk_flat(small, Order::Rows);
    const double before = peak_megabytes();
    walk_flat(file, Order::Rows);
    const double after_rows = peak_megabytes();
    walk_flat(file, Order::Columns);
    std::printf("{\"rows_mb\": %.1f, \"both_mb\": %.1f}\n", after_rows - before,
                peak_megabytes() - before);
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view what = argc > 2 ? argv[1] : "";
    ZOL_API_Init();
    if (what == "peak" && argc == 4) {
        peak(argv[2], argv[3]);
        return 0;
    }
    GDALAllRegister();
    if (what == "make" && argc == 5) {
        make(argv[2], argv[3], static_cast<int>(std::strtol(argv[4], nullptr, 10)));
    } else if (what == "time" && argc == 3) {
        time(argv[2]);
    } else {
        std::fprintf(stderr,
                     "usage: grid_walk make FILE FORM SIDE | time FILE | peak FILE SMALL\n");
        return 2;
    }
    return 0;
}
