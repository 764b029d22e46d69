// Every export of the grid family as a row of data, for the sweeps that put all of them
// to the same question.
#pragma once

#include <array>

#include "api/zolExportedApi_ReadOnly.h"
#include "tests/api/export_sweep.h"
#include "tests/doubles/scripted_grid.h"

namespace zol::testing {

/// Where a call in a sweep writes to, filled with canaries.
struct GridOutputs {
    bool operator==(const GridOutputs&) const = default;

    std::array<double, 4> numbers{-77.0, -77.0, -77.0, -77.0};
    std::array<int, 2> counts{-77, -77};
    GridHandle* made = nullptr;
};

using GridExport = ExportRow<GridHandle, GridOutputs>;

inline constexpr int kFirst = 3;
inline constexpr int kSecond = 4;

// clang-format off
inline constexpr std::array kGridExports = {
    GridExport{"ZOL_Grid_Open",
           [](GridHandle*, GridOutputs& to) {
               to.made = ZOL_Grid_Open("grid");
               return to.made != nullptr ? 1.0 : 0.0;
           },
           0, 0, nullptr, "Grid::Grid"},
    GridExport{"ZOL_Grid_Close", [](GridHandle* grid, GridOutputs&) -> double { return ZOL_Grid_Close(grid); },
           -1, 1, "ZOL_Grid_Close Grid not defined.", nullptr},
    GridExport{"ZOL_Grid_IsValid", [](GridHandle* grid, GridOutputs&) -> double { return ZOL_Grid_IsValid(grid); },
           -1, -1, "ZOL_Grid_IsValid Grid not defined.", "Grid::IsValid",
           Order::kSuccessFirst},
    GridExport{"ZOL_Grid_GetExtent",
           [](GridHandle* grid, GridOutputs& to) -> double {
               auto& [x0, y0, x1, y1] = to.numbers;
               return ZOL_Grid_GetExtent(grid, &x0, &y0, &x1, &y1);
           },
           -1, 1, "ZOL_Grid_GetExtent Grid not defined.", "Grid::GetExtent"},
    GridExport{"ZOL_Grid_GetSpacing",
           [](GridHandle* grid, GridOutputs& to) -> double {
               return ZOL_Grid_GetSpacing(grid, &to.numbers[0], &to.numbers[1]);
           },
           -1, 1, "ZOL_Grid_GetSpacing Grid not defined.", "Grid::GetSpacing"},
    GridExport{"ZOL_Grid_NumNodes",
           [](GridHandle* grid, GridOutputs& to) -> double {
               return ZOL_Grid_NumNodes(grid, &to.counts[0], &to.counts[1]);
           },
           -1, 1, "ZOL_Grid_GetNodes Grid not defined.", "Grid::GetWidthNodeCount"},
    GridExport{"ZOL_Grid_GetNodeValue",
           [](GridHandle* grid, GridOutputs& to) -> double {
               return ZOL_Grid_GetNodeValue(grid, &kFirst, &kSecond, &to.numbers[0],
                                            &to.counts[0]);
           },
           -1, 1, "ZOL_Grid_GetNodeValue Grid not defined.", "Grid::GetNodeValue"},
};
// clang-format on

inline ExportFamily<GridHandle, GridOutputs> grid_family() {
    return {"ZOL_Grid_",
            kGridExports,
            [](const GridExport&) { return ZOL_Grid_Open("grid"); },
            ZOL_Grid_Close,
            &doubles::grid_journal,
            &doubles::grid_script.throwing};
}

}  // namespace zol::testing
