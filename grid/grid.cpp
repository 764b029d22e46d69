// The grid family: opening and closing, the lattice of nodes, and their values.
#include <memory>
#include <string>

#include "api/guard.h"
#include "api/marshalling.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "grid/handle.h"
#include "platform/zolGeometryExport.h"
#include "platform/zolGridExport.h"

using zol::api::Call;
using zol::api::guarded;
using zol::api::guarded_late;
using zol::api::kNewHandle;
using zol::api::kPredicate;
using zol::api::kStatus;
using zol::api::Outcome;
using zol::api::store;
using zol::geometry::Point2D;
using zol::grid::open_grid;
using zol::model::grid::Grid;

GridHandle* ZOL_Grid_Open(const char* file_name) {
    return guarded(__func__, kNewHandle<GridHandle>, [&](Call& call) -> Outcome<GridHandle*> {
        const std::string file(file_name);
        auto grid = std::make_unique<Grid>(file);
        if (!grid->IsValid()) {
            return call.Fail("error opening/loading " + file);
        }
        auto handle = std::make_unique<GridHandle>();
        handle->grid = std::move(grid);
        return handle.release();
    });
}

int ZOL_Grid_Close(GridHandle* handle) {
    return guarded(__func__, kStatus, open_grid, handle, [&](Grid&) {
        handle->grid.reset();
        delete handle;
    });
}

int ZOL_Grid_IsValid(GridHandle* handle) {
    return guarded_late(__func__, kPredicate, open_grid, handle,
                        [](const Grid& grid) { return grid.IsValid() ? 1 : 0; });
}

int ZOL_Grid_GetExtent(GridHandle* handle, double* first_x, double* first_y, double* second_x,
                       double* second_y) {
    return guarded(__func__, kStatus, open_grid, handle, [&](const Grid& grid) {
        Point2D first;
        Point2D second;
        grid.GetExtent(first, second);
        store(first, first_x, first_y);
        store(second, second_x, second_y);
    });
}

int ZOL_Grid_GetSpacing(GridHandle* handle, double* first, double* second) {
    return guarded(__func__, kStatus, open_grid, handle,
                   [&](const Grid& grid) { grid.GetSpacing(*first, *second); });
}

int ZOL_Grid_NumNodes(GridHandle* handle, int* width, int* height) {
    // Its text names a function that does not exist; callers have come to match it.
    return guarded(__func__, kStatus.SpeaksAs("ZOL_Grid_GetNodes"), open_grid, handle,
                   [&](const Grid& grid) {
                       *width = grid.GetWidthNodeCount();
                       *height = grid.GetHeightNodeCount();
                   });
}

int ZOL_Grid_GetNodeValue(GridHandle* handle, const int* first, const int* second, double* value,
                          int* masked) {
    return guarded(__func__, kStatus, open_grid, handle, [&](const Grid& grid) {
        // No test of the indices: the grid's answer is the only one. A node that it does not
        // give is no failure of the call, whose error slot is emptied and which is counted.
        const int column = *first;
        const int row = *second;
        bool is_masked = false;
        const bool is_read = grid.GetNodeValue(column, row, *value, is_masked);
        *masked = is_masked ? 1 : 0;
        return is_read ? 0 : 1;
    });
}
