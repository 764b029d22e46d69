// Grids from the rasters that GDAL reads: what the library of them offers.
#pragma once

#include <memory>
#include <string>

#include "engine/formats/file.h"
#include "engine/grid/source.h"

namespace zol::engine::grid {

struct RasterReader {
    /// Opens a raster: its first band, or the one of a number from 1 or of a name when `band`
    /// is not empty. In a file of several rasters `band` names one of them. Throws ReadError.
    Source (*open)(const std::shared_ptr<const File>& file, const std::string& band);
    /// The same for one of GDAL's virtual files ("/vsizip/...", "/vsicurl/..."): only these
    /// may reach for a network.
    Source (*open_virtual)(const std::string& path, const std::string& band);
    /// True when GDAL finds something under the name of a virtual file.
    bool (*is_virtual_file)(const std::string& path);
};

/// The one function that the library shows, by name and type.
inline constexpr const char* kRasterReaderName = "zol_raster_reader";
using GetRasterReader = const RasterReader& (*)();

}  // namespace zol::engine::grid
