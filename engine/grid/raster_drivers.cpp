#include "engine/grid/raster_drivers.h"

#include <gdal.h>
#include <gdal_frmts.h>

#include <array>
#include <cstddef>
#include <mutex>

namespace zol::engine::grid {

namespace {

struct Driver {
    const char* name;
    void (*make_known)();
};

// In this order a file is offered to them: those first that know theirs by a signature,
// and those that are content with any text or a name's ending last.
// clang-format off
constexpr std::array kDrivers = {
    Driver{"GTiff", GDALRegister_GTiff},
    Driver{"HFA", GDALRegister_HFA},
    Driver{"AAIGrid", GDALRegister_AAIGrid},
    Driver{"GRASSASCIIGrid", GDALRegister_GRASSASCIIGrid},
    Driver{"ISG", GDALRegister_ISG},
    Driver{"GSAG", GDALRegister_GSAG},
    Driver{"GSBG", GDALRegister_GSBG},
    Driver{"GS7BG", GDALRegister_GS7BG},
    Driver{"DTED", GDALRegister_DTED},
    Driver{"AIG", GDALRegister_AIGrid},
    Driver{"BT", GDALRegister_BT},
    Driver{"NWT_GRD", GDALRegister_NWT_GRD},
#ifdef ZOL_GDAL_HAS_NETCDF
    Driver{"netCDF", GDALRegister_netCDF},
#endif
    Driver{"USGSDEM", GDALRegister_USGSDEM},
    Driver{"SIGDEM", GDALRegister_SIGDEM},
    Driver{"GXF", GDALRegister_GXF},
    Driver{"ERS", GDALRegister_ERS},
    Driver{"SAGA", GDALRegister_SAGA},
    Driver{"RRASTER", GDALRegister_RRASTER},
    Driver{"ZMap", GDALRegister_ZMap},
    Driver{"SRTMHGT", GDALRegister_SRTMHGT},
    Driver{"ENVI", GDALRegister_ENVI},
    Driver{"EHdr", GDALRegister_EHdr},
    Driver{"XYZ", GDALRegister_XYZ},
};
// clang-format on

using Names = std::array<const char*, kDrivers.size() + 1>;

constexpr Names kNames = [] {
    Names names{};
    for (std::size_t i = 0; i < kDrivers.size(); ++i) {
        names[i] = kDrivers[i].name;
    }
    return names;
}();

}  // namespace

const char* const* raster_drivers() {
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    // Asked each time: the host program may have taken GDAL's formats away.
    for (const Driver& driver : kDrivers) {
        if (GDALGetDriverByName(driver.name) == nullptr) {
            driver.make_known();
        }
    }
    return kNames.data();
}

}  // namespace zol::engine::grid
