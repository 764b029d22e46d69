// The columns of a table as variables of a block model.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "engine/block/header_roles.h"
#include "engine/block/text_sidecar.h"
#include "engine/block/variable.h"
#include "engine/formats/table_survey.h"
#include "engine/formats/text_columns.h"

namespace zol::engine::block {

/// A column of the table, and what a sidecar and its header say of it.
struct TextColumn {
    /// As in the file; "column 3" for the third when it has none.
    std::string header;
    FieldSpec field;
    ColumnRole role;
    bool has_field = false;
    /// It places blocks, and is no variable.
    bool is_geometry = false;
};

/// Brings the names of a header and the fields of a sidecar together. Throws
/// ReadError for a field that the table doesn't have.
std::vector<TextColumn> match_columns(const std::vector<std::string>& names,
                                      const TextSidecar& sidecar, const std::string& file);

/// How the cells of a column are read while the table is surveyed; `decimal_point` is
/// that of the table, for columns whose own isn't stated.
CellFormat survey_format(const TextColumn& column, const TextSidecar& sidecar, char decimal_point);

/// Settles what the survey left open: a guessed column becomes whole numbers, numbers
/// or texts. Changes the format to that in which values are decoded.
Storage settle_storage(const TextColumn& column, const ColumnSurvey& survey, CellFormat& format);

/// The variable of a column that is no geometry. `name` is its unique name.
Variable make_variable(const TextColumn& column, std::size_t index, std::string name,
                       Storage storage, const std::shared_ptr<TextColumns>& columns);

}  // namespace zol::engine::block
