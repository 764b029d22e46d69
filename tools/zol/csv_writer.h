// Comma-separated rows as RFC 4180 quotes them, with plain line feeds.
#pragma once

#include <string_view>

#include "tools/zol/output.h"

namespace zol::tool {

class CsvWriter {
public:
    explicit CsvWriter(Output& output) : output_(output) {}

    /// A cell of the current row; quoted where its text asks for it.
    void Cell(std::string_view text);
    /// A row of one empty cell comes out as "", since an empty line is no row.
    void EndRow();

private:
    Output& output_;
    int cells_ = 0;
    bool is_row_blank_ = true;
};

}  // namespace zol::tool
