// Rasters that tests make, in GDAL's memory.
#pragma once

#include <cpl_conv.h>
#include <gdal.h>

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

namespace zol::testing_support {

/// A GeoTIFF whose cell in column c and row r holds c + 10 r, or nothing when it is wide;
/// gone with its object.
class Raster {
public:
    using Place = std::array<double, 6>;

    Raster(int columns, int rows, GDALDataType type = GDT_Float64,
           std::vector<const char*> options = {}, int bands = 1) {
        GDALAllRegister();
        static int made = 0;
        path_ = "/vsimem/zol_test_" + std::to_string(made++) + ".tif";
        options.push_back(nullptr);
        dataset_ = GDALCreate(GDALGetDriverByName("GTiff"), path_.c_str(), columns, rows, bands,
                              type, const_cast<char**>(options.data()));
        if (columns > kMostFilled) return;
        std::vector<double> values;
        for (int row = 0; row < rows; ++row) {
            for (int column = 0; column < columns; ++column) {
                values.push_back(column + 10 * row);
            }
        }
        Fill(values);
    }
    Raster(const Raster&) = delete;
    Raster& operator=(const Raster&) = delete;
    ~Raster() {
        GDALClose(dataset_);
        GDALDeleteDataset(GDALGetDriverByName("GTiff"), path_.c_str());
    }

    GDALRasterBandH Band(int band = 1) { return GDALGetRasterBand(dataset_, band); }
    void PutAt(Place place) { Check(GDALSetGeoTransform(dataset_, place.data())); }
    /// Puts it where four ground control points say: cells of 10 from (100, 230) to the
    /// south-east, the last point `off` units beside its place.
    void PutAtPoints(double off) {
        std::array<GDAL_GCP, 4> points{};
        GDALInitGCPs(static_cast<int>(points.size()), points.data());
        for (std::size_t i = 0; i < points.size(); ++i) {
            points[i].dfGCPPixel = i % 2 == 0 ? 0 : 4;
            points[i].dfGCPLine = i < 2 ? 0 : 3;
            points[i].dfGCPX = 100 + 10 * points[i].dfGCPPixel + (i == 3 ? off : 0);
            points[i].dfGCPY = 230 - 10 * points[i].dfGCPLine;
        }
        Check(GDALSetGCPs(dataset_, static_cast<int>(points.size()), points.data(), ""));
        GDALDeinitGCPs(static_cast<int>(points.size()), points.data());
    }
    void Fill(std::vector<double> values, int band = 1) {
        const int columns = GDALGetRasterXSize(dataset_);
        const int rows = GDALGetRasterYSize(dataset_);
        Check(GDALRasterIO(Band(band), GF_Write, 0, 0, columns, rows, values.data(), columns, rows,
                           GDT_Float64, 0, 0));
    }

    /// Makes another raster a further page of the file.
    void Append(const Raster& page) {
        GDALClose(dataset_);
        std::array<const char*, 2> options = {"APPEND_SUBDATASET=YES", nullptr};
        GDALClose(GDALCreateCopy(GDALGetDriverByName("GTiff"), path_.c_str(), page.dataset_, FALSE,
                                 const_cast<char**>(options.data()), nullptr, nullptr));
        dataset_ = GDALOpen(path_.c_str(), GA_Update);
    }

    /// Gives the file a mask of its own: 0 for cells that do not count.
    void Mask(std::vector<double> cells) {
        // In the file itself, not in another beside it.
        CPLSetThreadLocalConfigOption("GDAL_TIFF_INTERNAL_MASK", "YES");
        Check(GDALCreateDatasetMaskBand(dataset_, GMF_PER_DATASET));
        CPLSetThreadLocalConfigOption("GDAL_TIFF_INTERNAL_MASK", nullptr);
        const auto columns = static_cast<int>(cells.size());
        Check(GDALRasterIO(GDALGetMaskBand(Band()), GF_Write, 0, 0, columns, 1, cells.data(),
                           columns, 1, GDT_Float64, 0, 0));
        // Only closing writes it.
        GDALClose(dataset_);
        dataset_ = GDALOpen(path_.c_str(), GA_Update);
    }

    /// The name of the file, everything in it.
    const std::string& Path() {
        GDALFlushCache(dataset_);
        return path_;
    }

    static void Check(CPLErr done) {
        if (done != CE_None) throw std::runtime_error("GDAL can't make the raster");
    }

private:
    static constexpr int kMostFilled = 1000;

    std::string path_;
    GDALDatasetH dataset_ = nullptr;
};

}  // namespace zol::testing_support
