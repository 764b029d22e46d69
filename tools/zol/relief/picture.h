// A page with a map in relief, its axes, a colour bar and a caption.
#pragma once

#include <string>

#include "tools/zol/grid_statistics.h"
#include "tools/zol/output.h"
#include "tools/zol/relief/map_scale.h"
#include "tools/zol/relief/thumbnail.h"

namespace zol::tool {

/// What the page says of the grid besides showing it.
struct PictureFacts {
    std::string title;
    Lattice nodes;
    GridStatistics statistics;
};

/// Writes a PNG. `surface` has a value somewhere.
void write_picture(const Thumbnail& surface, const MapScale& scale, const PictureFacts& facts,
                   Output& output);

}  // namespace zol::tool
