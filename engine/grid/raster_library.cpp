#include "engine/grid/raster_library.h"

#include <dlfcn.h>

#include <string>

#include "engine/formats/read_error.h"

namespace zol::engine::grid {

namespace {

const RasterReader& loaded() {
    // Found beside this library, and never unloaded: GDAL has threads and handlers of its own.
    void* const library = dlopen("libzolGridRasters.so", RTLD_NOW | RTLD_LOCAL);
    void* const entry = library != nullptr ? dlsym(library, kRasterReaderName) : nullptr;
    if (entry == nullptr) {
        const char* const reason = dlerror();
        throw ReadError("rasters can't be read here: " +
                        std::string(reason != nullptr ? reason : "no reader is installed"));
    }
    return reinterpret_cast<GetRasterReader>(entry)();
}

}  // namespace

const RasterReader& raster_reader() {
    static const RasterReader& reader = loaded();
    return reader;
}

}  // namespace zol::engine::grid
