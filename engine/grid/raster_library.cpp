#include "engine/grid/raster_library.h"

#include <dlfcn.h>

#include <string>

#include "engine/formats/read_error.h"

namespace zol::engine::grid {

namespace {

constexpr const char* kName = "libzolGridRasters.so";

/// Beside this library, by its whole path: a search on behalf of the caller fails where
/// something stands between it and dlopen, as sanitizers do.
std::string path_beside() {
    Dl_info here{};
    if (dladdr(reinterpret_cast<const void*>(&kName), &here) == 0 || here.dli_fname == nullptr) {
        return kName;
    }
    const std::string own = here.dli_fname;
    return own.substr(0, own.rfind('/') + 1) + kName;
}

const RasterReader& loaded() {
    // Never unloaded: GDAL has threads and handlers of its own.
    void* library = dlopen(path_beside().c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        library = dlopen(kName, RTLD_NOW | RTLD_LOCAL);
    }
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
