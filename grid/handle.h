// The handle of an open grid, and the test that its functions put it to.
#pragma once

#include <memory>

#include "api/guard.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "platform/zolGridExport.h"

struct GridHandle {
    std::unique_ptr<zol::model::grid::Grid> grid;
};

namespace zol::grid {

/// Gives the grid, or reports the failure and gives null; the guard runs it behind the
/// initialised test.
inline model::grid::Grid* open_grid(api::Call& call, GridHandle* handle) {
    if (handle == nullptr || handle->grid == nullptr) {
        call.Fail("Grid not defined.");
        return nullptr;
    }
    return handle->grid.get();
}

}  // namespace zol::grid
