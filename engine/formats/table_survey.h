// Reads every cell of a delimited table once: what its columns hold, and whether
// the table is sound.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "engine/formats/cell_reader.h"
#include "engine/formats/row_watcher.h"
#include "engine/formats/text_blocks.h"

namespace zol::engine {

/// What the cells of one column have turned out to be.
struct ColumnSurvey {
    /// More texts than this are no slips in a column of numbers.
    static constexpr std::size_t kFewTexts = 20;

    /// Texts are counted up to a few, and the first of the file is kept.
    std::size_t texts = 0;
    std::string first_text;
    std::uint64_t first_text_offset = 0;
    bool has_number = false;
    /// A number with a decimal comma, where a decimal point was expected.
    bool has_comma = false;
    /// A number with a fractional part, an exponent or a decimal point.
    bool has_fraction = false;
    /// Of those that have ten digits or more; 0 where there was none.
    std::int64_t least_whole = 0;
    std::int64_t greatest_whole = 0;

    bool HasText() const { return texts > 0; }
    /// Numbers nearly everywhere: the few texts may be meant for missing values.
    bool HasStrayText() const;

    void Add(const Decimal& number) {
        has_number = true;
        if (number.exact && number.scale == 0) {
            least_whole = std::min(least_whole, number.digits);
            greatest_whole = std::max(greatest_whole, number.digits);
        } else {
            has_fraction = true;
        }
    }
    void AddText(std::string_view text, std::uint64_t offset);
    void Merge(const ColumnSurvey& other);
};

struct TableSurvey {
    std::vector<ColumnSurvey> columns;
    std::vector<std::unique_ptr<RowWatcher>> watchers;
};

/// Reads all of `blocks`. Every row must have a cell for each of `formats`; an empty
/// cell more is let pass. Watched columns are read as numbers. Throws ReadError that
/// names line and column of the first cell that its format doesn't allow.
TableSurvey survey_table(TextBlocks& blocks, const std::vector<CellFormat>& formats,
                         const std::vector<std::size_t>& watched,
                         const std::function<std::unique_ptr<RowWatcher>()>& make_watcher);

/// A text of a file as an error shows it: in quotes, at most 80 bytes.
std::string shown(std::string_view text);

}  // namespace zol::engine
