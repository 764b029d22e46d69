#include "engine/grid/raster_source.h"

#include <cpl_vsi.h>
#include <gdal.h>

#include <charconv>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/formats/diagnostics.h"
#include "engine/formats/read_error.h"
#include "engine/grid/raster_file.h"
#include "engine/grid/raster_nodes.h"
#include "engine/grid/raster_place.h"
#include "platform/visibility.h"

namespace zol::engine::grid {

namespace {

std::string band_name(GDALDatasetH dataset, int band) {
    return GDALGetDescription(GDALGetRasterBand(dataset, band));
}

/// The number of the band that a text picks; 0 when there is none.
int band_number(GDALDatasetH dataset, const std::string& wanted) {
    const int count = GDALGetRasterCount(dataset);
    if (wanted.empty()) {
        return 1;
    }
    for (int band = 1; band <= count; ++band) {
        if (band_name(dataset, band) == wanted) {
            return band;
        }
    }
    int number = 0;
    const char* const end = wanted.data() + wanted.size();
    const auto [stop, fault] = std::from_chars(wanted.data(), end, number);
    const bool is_band = fault == std::errc() && stop == end && 1 <= number && number <= count;
    return is_band ? number : 0;
}

std::string_view element_of(std::string_view subdataset) {
    return subdataset.substr(subdataset.rfind(':') + 1);
}

/// In place of a file that only holds other rasters, the one of them that is asked for.
std::unique_ptr<RasterFile> choose_raster(std::unique_ptr<RasterFile> file, std::string& element) {
    const std::vector<std::string> names = file->Subdatasets();
    if (GDALGetRasterCount(file->Dataset()) > 0) {
        return file;
    }
    if (names.empty()) {
        throw ReadError("it holds no raster");
    }
    for (const std::string& name : names) {
        if (!element.empty() && element_of(name) == element) {
            element.clear();
            return std::make_unique<RasterFile>(name, file->Underlying(), file->Network());
        }
    }
    throw ReadError("it holds " + std::to_string(names.size()) + " rasters" +
                    (element.empty() ? "" : ", none of them \"" + element + "\"") +
                    "; name one after '#', as the first one, \"#" +
                    std::string(element_of(names.front())) + "\"");
}

Source open_band(std::unique_ptr<RasterFile> file, std::string band, const std::string& reported) {
    const GdalScope scope(file->Network());
    file = choose_raster(std::move(file), band);
    GDALDatasetH dataset = file->Dataset();
    const int number = band_number(dataset, band);
    if (number == 0 || GDALGetRasterCount(dataset) < number) {
        throw ReadError("it has no band \"" + band + "\", but " +
                        std::to_string(GDALGetRasterCount(dataset)) + ", the first \"" +
                        band_name(dataset, 1) + "\"");
    }
    Source source;
    bool is_placed = false;
    source.lattice = raster_lattice(dataset, is_placed);
    source.nodes = std::make_unique<RasterNodes>(std::move(file), number, reported);
    if (!is_placed) {
        report(reported, "the file does not say where it lies; nodes are counted from 0");
    }
    for (const std::string& warning : scope.Warnings()) {
        report(reported, "it opens, but: " + warning);
    }
    return source;
}

std::string with_band(const std::string& path, const std::string& band) {
    return band.empty() ? path : path + '#' + band;
}

Source open_raster(const std::shared_ptr<const File>& file, const std::string& band) {
    return open_band(std::make_unique<RasterFile>(file), band, with_band(file->Path(), band));
}

Source open_virtual_raster(const std::string& path, const std::string& band) {
    return open_band(std::make_unique<RasterFile>(path, nullptr, GdalScope::Network::Open), band,
                     with_band(path, band));
}

bool is_virtual_file(const std::string& path) {
    const GdalScope scope(GdalScope::Network::Open);
    VSIStatBufL facts;
    return VSIStatExL(path.c_str(), &facts, VSI_STAT_EXISTS_FLAG) == 0;
}

constexpr RasterReader kReader{open_raster, open_virtual_raster, is_virtual_file};

}  // namespace

}  // namespace zol::engine::grid

extern "C" ZOL_PLATFORM const zol::engine::grid::RasterReader& zol_raster_reader() {
    return zol::engine::grid::kReader;
}
