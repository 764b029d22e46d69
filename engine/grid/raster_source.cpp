#include "engine/grid/raster_source.h"

#include <cpl_vsi.h>
#include <gdal.h>

#include <charconv>
#include <cstdio>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/formats/diagnostics.h"
#include "engine/formats/read_error.h"
#include "engine/grid/netcdf_axes.h"
#include "engine/grid/raster_file.h"
#include "engine/grid/raster_nodes.h"
#include "engine/grid/raster_place.h"
#include "engine/grid/raster_text.h"
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

/// What picks one of the rasters in a file, after the '#'. An image of a TIFF file of
/// several is a page, which has only a number.
std::string element_of(std::string_view subdataset) {
    constexpr std::string_view kPage = "GTIFF_DIR:";
    if (subdataset.starts_with(kPage)) {
        subdataset.remove_prefix(kPage.size());
        return "page " + std::string(subdataset.substr(0, subdataset.find(':')));
    }
    return std::string(subdataset.substr(subdataset.rfind(':') + 1));
}

std::string elements_text(const std::vector<std::string>& names) {
    return std::to_string(names.size()) + " rasters, \"#" + element_of(names.front()) +
           "\" to \"#" + element_of(names.back()) + '"';
}

/// True when a netCDF file of one variable is asked for that one: GDAL lists variables only
/// of files that have several.
bool is_only_variable(const RasterFile& file, const std::string& element) {
    return !element.empty() && element == file.NetcdfVariable(1);
}

/// In place of a file of several rasters, the one of them that is asked for; `element` is
/// empty then.
std::unique_ptr<RasterFile> choose_raster(std::unique_ptr<RasterFile> file, std::string& element) {
    const std::vector<std::string> names = file->Subdatasets();
    const bool has_bands = GDALGetRasterCount(file->Dataset()) > 0;
    if (has_bands && band_number(file->Dataset(), element) > 0) {
        return file;
    }
    for (const std::string& name : names) {
        if (!element.empty() && element_of(name) == element) {
            element.clear();
            return std::make_unique<RasterFile>(*file, name);
        }
    }
    if (has_bands) {
        if (is_only_variable(*file, element)) {
            element.clear();
        }
        return file;
    }
    if (names.empty()) {
        refuse_netcdf_without_records(file->Path(), file->Network());
        throw ReadError("it holds no raster");
    }
    throw ReadError("it holds " + elements_text(names) +
                    (element.empty() ? "" : ", none of them \"#" + element + '"') +
                    "; name one after its own name");
}

[[noreturn]] void refuse_band(const RasterFile& file, const std::string& band) {
    const int count = GDALGetRasterCount(file.Dataset());
    const std::string first = count > 0 ? band_name(file.Dataset(), 1) : "";
    const std::vector<std::string> others = file.Subdatasets();
    throw ReadError("it has no band \"" + band + "\", but " + std::to_string(count) +
                    (first.empty() ? "" : ", the first \"" + first + '"') +
                    (others.empty() ? "" : ", and " + elements_text(others)));
}

Source open_band(std::unique_ptr<RasterFile> file, std::string band, const std::string& reported) {
    const GdalScope scope(file->Network());
    const bool is_first = band.empty();
    file = choose_raster(std::move(file), band);
    GDALDatasetH dataset = file->Dataset();
    const int number = band_number(dataset, band);
    if (number == 0 || GDALGetRasterCount(dataset) < number) {
        refuse_band(*file, band);
    }
    Source source;
    bool is_placed = false;
    source.lattice = raster_lattice(*file, number, is_placed);
    std::vector<std::string> remarks = file->Warnings();
    if (const auto others = file->Subdatasets(); is_first && others.size() > 1) {
        remarks.push_back("it holds " + elements_text(others) + ", and the first is read");
    }
    source.nodes = std::make_unique<RasterNodes>(std::move(file), number, reported);
    if (!is_placed) {
        report(reported, "the file does not say where it lies; nodes are counted from 0");
    }
    remarks.insert(remarks.end(), scope.Warnings().begin(), scope.Warnings().end());
    for (const std::string& remark : remarks) {
        report(reported, "it opens, but: " + remark);
    }
    return source;
}

std::string with_band(const std::string& path, const std::string& band) {
    return band.empty() ? path : path + '#' + band;
}

void check_text(const ReadBytes& read, const RasterFile& file) {
    const GdalScope scope(file.Network());
    GDALDatasetH dataset = file.Dataset();
    if (GDALGetRasterCount(dataset) < 1) {
        return;
    }
    const std::string format = file.DriverName();
    check_text_values(read, {format, GDALGetRasterXSize(dataset), GDALGetRasterYSize(dataset),
                             GDALGetRasterDataType(GDALGetRasterBand(dataset, 1)) == GDT_Int32});
}

Source open_raster(const std::shared_ptr<const File>& file, const std::string& band) {
    const ReadBytes read = [&](std::uint64_t offset, char* to, std::size_t count) {
        return file->ReadAt(offset, to, count);
    };
    check_text_header(read);
    auto raster = std::make_unique<RasterFile>(file);
    check_text(read, *raster);
    return open_band(std::move(raster), band, with_band(file->Path(), band));
}

/// Closes one of GDAL's own files.
struct CloseVirtual {
    void operator()(VSILFILE* file) const { VSIFCloseL(file); }
};

Source open_virtual_raster(const std::string& path, const std::string& band) {
    const GdalScope scope(GdalScope::Network::Open);
    const std::unique_ptr<VSILFILE, CloseVirtual> bytes(VSIFOpenL(path.c_str(), "rb"));
    const ReadBytes read = [&](std::uint64_t offset, char* to, std::size_t count) -> std::size_t {
        if (bytes == nullptr || VSIFSeekL(bytes.get(), offset, SEEK_SET) != 0) {
            return 0;
        }
        return VSIFReadL(to, 1, count, bytes.get());
    };
    check_text_header(read);
    auto raster = std::make_unique<RasterFile>(path, GdalScope::Network::Open);
    check_text(read, *raster);
    return open_band(std::move(raster), band, with_band(path, band));
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
