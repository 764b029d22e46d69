// The coloured and shaded cells of a surface.
#pragma once

#include <vector>

#include "tools/zol/relief/canvas.h"
#include "tools/zol/relief/colour_limits.h"
#include "tools/zol/relief/shading.h"

namespace zol::tool {

/// A pixel for each cell, transparent where there is no value.
Image image_of_relief(const Thumbnail& surface, const std::vector<Slope>& slopes,
                      double exaggeration, const ColourLimits& limits);

}  // namespace zol::tool
