#include "engine/grid/raster_file.h"

#include <cpl_conv.h>
#include <cpl_string.h>

#include <algorithm>
#include <optional>

#include "engine/formats/read_error.h"
#include "engine/grid/netcdf_axes.h"
#include "engine/grid/raster_drivers.h"

namespace zol::engine::grid {

namespace {

/// A name that GDAL takes for nothing but a path: without a folder in front, it would try
/// "NETCDF:x" as a request of its own, and "<VRTDataset>" as the content of a file.
std::string as_path(const std::string& path) {
    return path.starts_with('/') ? path : "./" + path;
}

}  // namespace

RasterFile::RasterFile(const std::shared_ptr<const File>& file)
    : path_(as_path(file->Path())), file_(file), network_(GdalScope::Network::Closed) {
    Open(path_);
}

RasterFile::RasterFile(const std::string& path, GdalScope::Network network)
    : path_(path), network_(network) {
    Open(path_);
}

RasterFile::RasterFile(const RasterFile& container, const std::string& name)
    : path_(container.path_), file_(container.file_), network_(container.network_) {
    Open(name);
}

void RasterFile::Open(const std::string& name) {
    const GdalScope scope(network_);
    dataset_ = GDALOpenEx(name.c_str(), GDAL_OF_RASTER | GDAL_OF_READONLY, raster_drivers(),
                          nullptr, nullptr);
    if (dataset_ == nullptr) {
        refuse_netcdf_without_records(path_, network_);
        throw ReadError(scope.Error(
            "it is in no format that is read; those are OMF 1 and rasters of GDAL (GeoTIFF, ESRI "
            "ASCII, Surfer, netCDF, ...)"));
    }
    warnings_ = scope.Warnings();
    if (file_ != nullptr) {
        FindPartners();
    }
}

void RasterFile::FindPartners() {
    char** const names = GDALGetFileList(dataset_);
    for (char* const* name = names; name != nullptr && *name != nullptr; ++name) {
        const std::optional<FileFacts> facts = *name != path_ ? FileFacts::Of(*name) : std::nullopt;
        if (facts) {
            partners_.push_back({*name, *facts});
        }
    }
    CSLDestroy(names);
}

bool RasterFile::IsUnchanged() const {
    // One that was taken away is no other than it was.
    return file_ == nullptr ||
           (file_->IsUnchanged() &&
            std::all_of(partners_.begin(), partners_.end(), [](const Partner& partner) {
                return FileFacts::Of(partner.path).value_or(partner.facts) == partner.facts;
            }));
}

RasterFile::~RasterFile() {
    const GdalScope scope(network_);
    GDALClose(dataset_);
}

std::string RasterFile::DriverName() const {
    return GDALGetDriverShortName(GDALGetDatasetDriver(dataset_));
}

std::string RasterFile::NetcdfVariable(int band) const {
    const char* const name =
        GDALGetMetadataItem(GDALGetRasterBand(dataset_, band), "NETCDF_VARNAME", nullptr);
    return name != nullptr ? name : "";
}

std::vector<std::string> RasterFile::Subdatasets() const {
    std::vector<std::string> names;
    CSLConstList entries = GDALGetMetadata(dataset_, "SUBDATASETS");
    for (int i = 1;
         const char* name = CSLFetchNameValue(entries, CPLSPrintf("SUBDATASET_%d_NAME", i)); ++i) {
        names.emplace_back(name);
    }
    return names;
}

}  // namespace zol::engine::grid
