// What the colours of a map stand for.
#pragma once

#include <vector>

#include "tools/zol/relief/canvas.h"
#include "tools/zol/relief/colour_limits.h"
#include "tools/zol/relief/map_axes.h"

namespace zol::tool {

/// Marks of a bar `pixels` high; the one value itself where the limits are the same.
std::vector<AxisMark> colour_marks(const ColourLimits& limits, double pixels);

/// Draws the bar into `area`, and its marks to the right of it.
void draw_colour_bar(const ColourLimits& limits, const std::vector<AxisMark>& marks,
                     const Rectangle& area, Canvas& canvas);

}  // namespace zol::tool
