// Holds every node that the flat library gives of rasters against what GDAL itself reads:
// whole bands by GDALRasterIO and whole masks, with every format of GDAL known, none of the
// library's settings, and its geotransform.
//
//   compare_with_gdal FOLDER
//
// Rasters that do not open are named below; every other file of the folder has to agree.
#include <cpl_conv.h>
#include <cpl_error.h>
#include <gdal.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <set>
#include <string>
#include <vector>

#include "api/zolExportedApi_ReadOnly.h"

namespace {

constexpr int kMostDifferencesShown = 5;

const std::set<std::string> kRefused = {"geomatrix.tif", "rotated.tif"};
const std::set<std::string> kNoRasters = {"pixel_per_line.prj"};
// GDAL does not find its axes, the library does.
const std::set<std::string> kPlacedByUsAlone = {"sombrero_gmt.grd"};

struct Raster {
    int columns = 0;
    int rows = 0;
    std::array<double, 6> place{};
    std::vector<double> values;
    std::vector<unsigned char> mask;
};

bool read_with_gdal(const std::string& path, Raster& raster) {
    // Otherwise GDAL reads the numbers of a text as floats.
    const std::array<const char*, 2> as_doubles = {"DATATYPE=Float64", nullptr};
    const bool is_text = path.ends_with(".asc") || path.ends_with(".txt");
    GDALDatasetH dataset = GDALOpenEx(path.c_str(), GDAL_OF_RASTER, nullptr,
                                      is_text ? as_doubles.data() : nullptr, nullptr);
    if (dataset == nullptr) {
        return false;
    }
    GDALRasterBandH band = GDALGetRasterBand(dataset, 1);
    raster.columns = GDALGetRasterXSize(dataset);
    raster.rows = GDALGetRasterYSize(dataset);
    const auto cells =
        static_cast<std::size_t>(raster.columns) * static_cast<std::size_t>(raster.rows);
    raster.values.resize(cells);
    raster.mask.resize(cells);
    bool good = GDALRasterIO(band, GF_Read, 0, 0, raster.columns, raster.rows, raster.values.data(),
                             raster.columns, raster.rows, GDT_Float64, 0, 0) == CE_None;
    good = good &&
           GDALRasterIO(GDALGetMaskBand(band), GF_Read, 0, 0, raster.columns, raster.rows,
                        raster.mask.data(), raster.columns, raster.rows, GDT_Byte, 0, 0) == CE_None;
    const double scale = GDALGetRasterScale(band, nullptr);
    const double offset = GDALGetRasterOffset(band, nullptr);
    for (std::size_t i = 0; i < cells; ++i) {
        if (!std::isfinite(raster.values[i])) {
            raster.mask[i] = 0;
        }
        if (raster.mask[i] != 0) {
            raster.values[i] = raster.values[i] * scale + offset;
        }
    }
    if (GDALGetGeoTransform(dataset, raster.place.data()) != CE_None &&
        GDALGCPsToGeoTransform(GDALGetGCPCount(dataset), GDALGetGCPs(dataset), raster.place.data(),
                               TRUE) == FALSE) {
        // The nodes are then to lie at whole numbers, the last row at 0.
        raster.place = {-0.5, 1.0, 0.0, raster.rows - 0.5, 0.0, -1.0};
    }
    GDALClose(dataset);
    return good;
}

/// Bit by bit, so that NaN and the sign of zero count too.
bool is_same(double a, double b) {
    return a == b ? std::signbit(a) == std::signbit(b) : std::isnan(a) && std::isnan(b);
}

class Comparison {
public:
    explicit Comparison(std::string file) : file_(std::move(file)) {}

    template <typename... Parts>
    void Differs(const Parts&... parts) {
        if (differences_++ < kMostDifferencesShown) {
            std::cerr << std::setprecision(17) << file_ << ": ";
            (std::cerr << ... << parts) << '\n';
        }
    }

    void Near(const char* what, double ours, double theirs, double extent) {
        if (!(std::fabs(ours - theirs) <= 1e-9 * extent)) {
            Differs(what, " is ", ours, ", GDAL says ", theirs);
        }
    }

    bool Agrees() const { return differences_ == 0; }

private:
    std::string file_;
    int differences_ = 0;
};

void compare_places(GridHandle* grid, const Raster& raster, Comparison& comparison) {
    double x0 = 0.0;
    double y0 = 0.0;
    double x1 = 0.0;
    double y1 = 0.0;
    double along_x = 0.0;
    double along_y = 0.0;
    ZOL_Grid_GetExtent(grid, &x0, &y0, &x1, &y1);
    ZOL_Grid_GetSpacing(grid, &along_x, &along_y);
    const auto& g = raster.place;
    const double left = g[0] + std::fmin(0.0, raster.columns * g[1]) + std::fabs(g[1]) / 2;
    const double low = g[3] + std::fmin(0.0, raster.rows * g[5]) + std::fabs(g[5]) / 2;
    const double wide = (raster.columns - 1) * std::fabs(g[1]);
    const double high = (raster.rows - 1) * std::fabs(g[5]);
    comparison.Near("west", x0, left, std::fabs(left) + wide);
    comparison.Near("south", y0, low, std::fabs(low) + high);
    comparison.Near("east", x1, left + wide, std::fabs(left) + wide);
    comparison.Near("north", y1, low + high, std::fabs(low) + high);
    comparison.Near("spacing along x", along_x, std::fabs(g[1]), std::fabs(g[1]));
    comparison.Near("spacing along y", along_y, std::fabs(g[5]), std::fabs(g[5]));
}

void compare_nodes(GridHandle* grid, const Raster& raster, Comparison& comparison) {
    const bool columns_turned = raster.place[1] < 0;
    const bool rows_turned = raster.place[5] < 0;
    for (int row = 0; row < raster.rows; ++row) {
        for (int column = 0; column < raster.columns; ++column) {
            const int i = columns_turned ? raster.columns - 1 - column : column;
            const int j = rows_turned ? raster.rows - 1 - row : row;
            const auto at =
                static_cast<std::size_t>(row) * static_cast<std::size_t>(raster.columns) +
                static_cast<std::size_t>(column);
            double value = 0.0;
            int masked = -1;
            if (ZOL_Grid_GetNodeValue(grid, &i, &j, &value, &masked) != 0) {
                comparison.Differs("node ", i, ", ", j, " can't be read");
            } else if ((masked != 0) != (raster.mask[at] == 0)) {
                comparison.Differs("node ", i, ", ", j, ": masked is ", masked, ", GDAL's mask is ",
                                   int{raster.mask[at]});
            } else if (!is_same(value, raster.values[at])) {
                comparison.Differs("node ", i, ", ", j, " is ", value, ", GDAL says ",
                                   raster.values[at]);
            }
        }
    }
}

bool agrees(const std::filesystem::path& path) {
    const std::string name = path.filename().string();
    Comparison comparison(name);
    Raster raster;
    if (!read_with_gdal(path.string(), raster)) {
        comparison.Differs("GDAL does not read it");
    }
    GridHandle* const grid = ZOL_Grid_Open(path.c_str());
    if ((grid == nullptr) != kRefused.contains(name)) {
        comparison.Differs(grid == nullptr ? "it does not open" : "it opens");
    }
    if (grid != nullptr) {
        int columns = 0;
        int rows = 0;
        ZOL_Grid_NumNodes(grid, &columns, &rows);
        if (columns != raster.columns || rows != raster.rows) {
            comparison.Differs(columns, " x ", rows, " nodes, GDAL says ", raster.columns, " x ",
                               raster.rows);
        } else {
            if (!kPlacedByUsAlone.contains(name)) {
                compare_places(grid, raster, comparison);
            }
            compare_nodes(grid, raster, comparison);
        }
        ZOL_Grid_Close(grid);
    }
    return comparison.Agrees();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: compare_with_gdal FOLDER\n");
        return 2;
    }
    ZOL_API_Init();
    GDALAllRegister();
    CPLSetErrorHandler(CPLQuietErrorHandler);
    // What the library has of its own stays its own.
    CPLSetConfigOption("GDAL_PAM_ENABLED", "NO");
    int compared = 0;
    int failed = 0;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        if (!kNoRasters.contains(entry.path().filename().string())) {
            ++compared;
            failed += agrees(entry.path()) ? 0 : 1;
        }
    }
    std::printf("%d rasters compared, %d differ\n", compared, failed);
    return compared > 0 && failed == 0 ? 0 : 1;
}
