// Every export of the block model family as a row of data, for the sweeps that put
// all of them to the same question.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

#include "api/zolExportedApi_ReadOnly.h"
#include "tests/api/export_sweep.h"

namespace zol::testing {

/// Where a call in a sweep writes to, filled with canaries.
struct BlockModelOutputs {
    BlockModelOutputs();
    void ClearFirst(std::size_t count) { std::fill_n(numbers.begin(), count, 0.0); }

    bool operator==(const BlockModelOutputs&) const = default;

    std::array<double, 6> numbers;
    int code;
    std::array<char, 256> text;
    /// A handle that the call made.
    BlockModelHandle* made = nullptr;
};

using BlockModelExport = ExportRow<BlockModelHandle, BlockModelOutputs>;

/// Whether a match in progress does in place of a model.
bool takes_a_match(const BlockModelExport& row);

/// Each handle is opened on a script by which no export fails.
ExportFamily<BlockModelHandle, BlockModelOutputs> block_model_family();

}  // namespace zol::testing
