// Every export of the grid family as a row of data, for the sweeps that put all of them
// to the same question.
#pragma once

#include <array>

#include "api/zolExportedApi_ReadOnly.h"

namespace zol::testing {

/// Where a call in a sweep writes to, filled with canaries.
struct Outputs {
    bool operator==(const Outputs&) const = default;

    std::array<double, 4> numbers{-77.0, -77.0, -77.0, -77.0};
    std::array<int, 2> counts{-77, -77};
};

struct Export {
    const char* name;
    /// Calls the export with a handle, valid inputs and the outputs. 0 for no handle made.
    int (*call)(GridHandle* handle, Outputs& outputs);
    int not_initialised;
    /// Result and text without a grid; no text for the one that takes no handle.
    int no_grid;
    const char* no_grid_text;
    /// The first thing that it asks of the library underneath.
    const char* operation;
    /// Whether the call is counted ahead of that.
    bool late_work = false;
};

inline constexpr int kFirst = 3;
inline constexpr int kSecond = 4;

// clang-format off
inline constexpr std::array kExports = {
    Export{"ZOL_Grid_Open",
           [](GridHandle*, Outputs&) {
               GridHandle* const made = ZOL_Grid_Open("grid");
               return made != nullptr ? ZOL_Grid_Close(made) + 1 : 0;
           },
           0, 0, nullptr, "Grid::Grid"},
    Export{"ZOL_Grid_Close", [](GridHandle* grid, Outputs&) { return ZOL_Grid_Close(grid); },
           -1, 1, "ZOL_Grid_Close Grid not defined.", nullptr},
    Export{"ZOL_Grid_IsValid", [](GridHandle* grid, Outputs&) { return ZOL_Grid_IsValid(grid); },
           -1, -1, "ZOL_Grid_IsValid Grid not defined.", "Grid::IsValid", true},
    Export{"ZOL_Grid_GetExtent",
           [](GridHandle* grid, Outputs& to) {
               auto& [x0, y0, x1, y1] = to.numbers;
               return ZOL_Grid_GetExtent(grid, &x0, &y0, &x1, &y1);
           },
           -1, 1, "ZOL_Grid_GetExtent Grid not defined.", "Grid::GetExtent"},
    Export{"ZOL_Grid_GetSpacing",
           [](GridHandle* grid, Outputs& to) {
               return ZOL_Grid_GetSpacing(grid, &to.numbers[0], &to.numbers[1]);
           },
           -1, 1, "ZOL_Grid_GetSpacing Grid not defined.", "Grid::GetSpacing"},
    Export{"ZOL_Grid_NumNodes",
           [](GridHandle* grid, Outputs& to) {
               return ZOL_Grid_NumNodes(grid, &to.counts[0], &to.counts[1]);
           },
           -1, 1, "ZOL_Grid_GetNodes Grid not defined.", "Grid::GetWidthNodeCount"},
    Export{"ZOL_Grid_GetNodeValue",
           [](GridHandle* grid, Outputs& to) {
               return ZOL_Grid_GetNodeValue(grid, &kFirst, &kSecond, &to.numbers[0],
                                            &to.counts[0]);
           },
           -1, 1, "ZOL_Grid_GetNodeValue Grid not defined.", "Grid::GetNodeValue"},
};
// clang-format on

}  // namespace zol::testing
