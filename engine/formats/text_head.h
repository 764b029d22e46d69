// The top of a delimited text: which separator it has, where its header and its
// first row of data stand.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/formats/text_dialect.h"

namespace zol::engine {

/// What is known of a table before it is looked at.
struct TextHints {
    std::optional<char> delimiter;
    std::optional<char> quote;
    bool double_quote = true;
    char escape = 0;
    char comment = 0;
    /// Rows of the header counted from 1 behind leading comments: the first has the
    /// names. Empty when the table has no header; nothing when it isn't known.
    std::optional<std::vector<std::int64_t>> header_rows;
    /// A table of one column will do: something else says what it means.
    bool one_column_will_do = false;
    /// Tells names that a header is expected to have; of several separators the one
    /// that brings two of them to light is taken.
    std::function<bool(std::string_view)> is_known_name;
};

/// What a gridded GEO-EAS text states on its second line.
struct StatedLattice {
    std::int64_t count[3];
    double first_centroid[3];
    double size[3];
};

struct TextHead {
    TextDialect dialect;
    /// Offset of the first row of data.
    std::uint64_t data_begin = 0;
    /// Names of the columns as written; empty texts where the header has none.
    std::vector<std::string> names;
    std::optional<StatedLattice> lattice;
    /// ',' when the first rows have numbers with a decimal comma and none with a point.
    char decimal_point = '.';
};

/// Reads the head of a file from its first bytes; `whole` says that they are all of
/// it. Throws ReadError when they are no text, or no table can be told in them.
TextHead read_text_head(std::string_view head, bool whole, const TextHints& hints);

}  // namespace zol::engine
