// An open raster of GDAL.
#pragma once

#include <gdal.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/formats/file.h"
#include "engine/grid/gdal_scope.h"

namespace zol::engine::grid {

/// A dataset, open until it is destroyed. All operations are to stand inside a GdalScope
/// of its network.
class RasterFile {
public:
    /// Opens a file that also stays open as `file`. Throws ReadError, as does the next.
    explicit RasterFile(const std::shared_ptr<const File>& file);
    /// Opens one of GDAL's virtual files, or what GDAL itself calls a dataset.
    RasterFile(const std::string& name, std::shared_ptr<const File> file,
               GdalScope::Network network);
    RasterFile(const RasterFile&) = delete;
    RasterFile& operator=(const RasterFile&) = delete;
    ~RasterFile();

    GDALDatasetH Dataset() const { return dataset_; }
    GdalScope::Network Network() const { return network_; }
    const std::string& Name() const { return name_; }
    const std::shared_ptr<const File>& Underlying() const { return file_; }
    std::string DriverName() const;

    /// Names of the rasters in a file of several, in its order, as GDAL calls them.
    std::vector<std::string> Subdatasets() const;

    /// False when the file under the name was changed since it was opened. Always true of
    /// virtual files.
    bool IsUnchanged() const { return file_ == nullptr || file_->IsUnchanged(); }

private:
    std::string name_;
    std::shared_ptr<const File> file_;
    GdalScope::Network network_;
    GDALDatasetH dataset_ = nullptr;
};

}  // namespace zol::engine::grid
