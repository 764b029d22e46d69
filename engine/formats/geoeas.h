// GEO-EAS text: a title line, a count of columns, their names a line each, then rows
// parted by blanks. Later practice adds the lattice behind the count.
#pragma once

#include <optional>
#include <string_view>

#include "engine/formats/text_head.h"

namespace zol::engine {

/// The head of a GEO-EAS text whose first line starts at `begin`; nothing when the
/// text is none. Throws ReadError when it is one with several realisations.
std::optional<TextHead> read_geoeas_head(std::string_view head, std::size_t begin, char row_end);

}  // namespace zol::engine
