// An open raster of GDAL.
#pragma once

#include <gdal.h>

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
    /// Opens one of GDAL's virtual files.
    RasterFile(const std::string& path, GdalScope::Network network);
    /// Opens one of the rasters in a file of several, by the name that GDAL gives it.
    RasterFile(const RasterFile& container, const std::string& name);
    RasterFile(const RasterFile&) = delete;
    RasterFile& operator=(const RasterFile&) = delete;
    ~RasterFile();

    GDALDatasetH Dataset() const { return dataset_; }
    GdalScope::Network Network() const { return network_; }
    /// As GDAL knows the file, also where this is one of several rasters in it.
    const std::string& Path() const { return path_; }
    /// What GDAL said while it opened the file, though it did.
    const std::vector<std::string>& Warnings() const { return warnings_; }
    std::string DriverName() const;
    /// The netCDF variable that a band is of; empty in other formats.
    std::string NetcdfVariable(int band) const;

    /// Names of the rasters in a file of several, in its order, as GDAL calls them.
    std::vector<std::string> Subdatasets() const;

    /// False when the file, or one beside it that belongs to the raster (a header, a mask,
    /// values), was changed since it was opened. Always true of virtual files.
    bool IsUnchanged() const;

private:
    /// A file beside the one that was named, which GDAL may read at any time.
    struct Partner {
        std::string path;
        FileFacts facts;
    };

    void Open(const std::string& name);
    void FindPartners();

    std::string path_;
    std::shared_ptr<const File> file_;
    GdalScope::Network network_;
    GDALDatasetH dataset_ = nullptr;
    std::vector<std::string> warnings_;
    std::vector<Partner> partners_;
};

}  // namespace zol::engine::grid
