// Hill shading: how much light falls on each cell of a surface that is lit from one side.
#pragma once

#include <vector>

#include "tools/zol/relief/thumbnail.h"

namespace zol::tool {

/// Where the light comes from: degrees clockwise from north, and above the horizon.
inline constexpr double kLightAzimuth = 315;
inline constexpr double kLightAltitude = 45;

/// Rise of the value for one unit of way.
struct Slope {
    double east = 0;
    double north = 0;
};

/// Of each cell, by the difference of its neighbours. A neighbour that is missing is
/// replaced by the cell itself; a cell without value is level.
std::vector<Slope> slopes_of(const Thumbnail& surface);

/// A round factor for all slopes that makes the steep ones among them about 45 degrees,
/// whatever the unit of the values; 1 for a level surface.
double exaggeration_for(const std::vector<Slope>& slopes);

/// Light on a slope by Lambert's law (the cosine of the angle between the light and the
/// normal of the surface, none where it is turned away), as a part of what falls on level
/// ground. An exaggeration of 0 levels every slope.
double light_on(const Slope& slope, double exaggeration);

}  // namespace zol::tool
