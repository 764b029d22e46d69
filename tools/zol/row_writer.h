// Blocks as rows, in one of the formats of a listing.
#pragma once

#include <memory>
#include <vector>

#include "tools/zol/columns.h"
#include "tools/zol/output.h"

namespace zol::tool {

class RowWriter {
public:
    RowWriter() = default;
    RowWriter(const RowWriter&) = delete;
    RowWriter& operator=(const RowWriter&) = delete;
    virtual ~RowWriter() = default;

    virtual void Begin() = 0;
    /// Writes the current block of `model`.
    virtual void WriteBlock(const BlockModel& model) = 0;
    virtual void End() = 0;
};

/// A header row, then one row a block; what is missing is an empty cell.
std::unique_ptr<RowWriter> csv_row_writer(const std::vector<Column>& columns, Output& output);
/// One list with an object a block; what is missing or not finite is null.
std::unique_ptr<RowWriter> json_row_writer(const std::vector<Column>& columns, Output& output);

}  // namespace zol::tool
