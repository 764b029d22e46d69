// Places in a grid as a person reads them, and as JSON.
#pragma once

#include <string>

#include "tools/zol/grid_nodes.h"
#include "tools/zol/json_writer.h"

namespace zol::tool {

/// "1 2.5"
std::string pair_text(double x, double y);
/// "(1, 2)"
std::string index_text(const NodeIndex& node);
/// "1 2 to 3 4"
std::string extent_text(const Lattice& nodes);

/// [i, j]
void write_index(JsonWriter& json, const NodeIndex& node);
/// {"lower": [x, y], "upper": [x, y]}
void write_extent(JsonWriter& json, const Lattice& nodes);

}  // namespace zol::tool
