// Every export of the triangulation family as a row of data.
#pragma once

#include <array>

#include "api/zolExportedApi_ReadOnly.h"
#include "tests/api/export_sweep.h"
#include "tests/doubles/scripted_triangulation.h"

namespace zol::testing {

/// Where a call in a sweep writes to, filled with canaries.
struct TriangulationOutputs {
    TriangulationOutputs() { text.fill('#'); }
    bool operator==(const TriangulationOutputs&) const = default;

    std::array<double, 3> reals{-77.0, -77.0, -77.0};
    std::array<int, 3> wholes{-77, -77, -77};
    long long wide = -77;
    std::array<char, 256> text{};
    TriangulationHandle* made = nullptr;
};

using TriangulationExport = ExportRow<TriangulationHandle, TriangulationOutputs>;

/// Scripts a library in which no call of the table fails.
void script_triangulation();

ExportFamily<TriangulationHandle, TriangulationOutputs> triangulation_family();

}  // namespace zol::testing
