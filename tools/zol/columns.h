// The columns of a listing of blocks: which ones, and the value of each in the
// current block.
#pragma once

#include <string>
#include <vector>

#include "tools/zol/block_model.h"
#include "tools/zol/json_writer.h"

namespace zol::tool {

/// A value as it is to be written.
struct Cell {
    enum class Kind { Missing, Number, Text };

    Kind kind = Kind::Missing;
    /// Of a number, its shortest decimal; empty when missing.
    std::string text;
};

/// Null for what is missing or not finite.
void write_cell(JsonWriter& json, const Cell& cell);

class Column {
public:
    explicit Column(const Variable& variable);

    const std::string& Name() const { return name_; }
    /// The value in the current block, into `cell`, whose storage is used again.
    void Read(const BlockModel& model, Cell& cell) const;

private:
    enum class Reading {
        Number,
        /// Shortest among floats.
        Float,
        /// Numbers that a double can't hold come as texts.
        WholeNumber,
        Text,
        /// The name of a code, or the code where it has no name.
        CodeName
    };

    std::string name_;
    Reading reading_;
};

/// Centroid and size, then the file's own variables.
std::vector<Column> default_columns(const BlockModel& model);

/// The columns asked for, in that order. Each text is a name, or several with
/// commas between. Throws UsageError that names what comes near, or all there are,
/// when a name is unknown.
std::vector<Column> chosen_columns(const BlockModel& model, const std::vector<std::string>& texts);

}  // namespace zol::tool
