#include "engine/grid/raster_file.h"

#include <cpl_conv.h>
#include <cpl_string.h>

#include <utility>

#include "engine/formats/read_error.h"
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
    : RasterFile(as_path(file->Path()), file, GdalScope::Network::Closed) {}

RasterFile::RasterFile(const std::string& name, std::shared_ptr<const File> file,
                       GdalScope::Network network)
    : name_(name), file_(std::move(file)), network_(network) {
    const GdalScope scope(network_);
    dataset_ = GDALOpenEx(name_.c_str(), GDAL_OF_RASTER | GDAL_OF_READONLY, raster_drivers(),
                          nullptr, nullptr);
    if (dataset_ == nullptr) {
        throw ReadError(scope.Error("it is no raster in a format that is read"));
    }
}

RasterFile::~RasterFile() {
    const GdalScope scope(network_);
    GDALClose(dataset_);
}

std::string RasterFile::DriverName() const {
    return GDALGetDriverShortName(GDALGetDatasetDriver(dataset_));
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
