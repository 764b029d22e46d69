// The axes of a map: where round coordinates lie, and what is written there.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tools/zol/relief/canvas.h"
#include "tools/zol/relief/ticks.h"

namespace zol::tool {

inline constexpr TextStyle kTickStyle{12, Anchor::Middle, false};

struct AxisMark {
    double value = 0;
    std::string text;
};

/// Marks of an axis that is `pixels` long. `room_for` tells how many pixels a text takes
/// along it; marks are so many that their texts keep apart.
std::vector<AxisMark> axis_marks(double low, double high, double pixels,
                                 const std::function<double(const std::string&)>& room_for);

/// What is left of the map and below it.
struct MapFrame {
    Rectangle map;
    double west = 0;
    double east = 0;
    double south = 0;
    double north = 0;

    double X(double easting) const;
    double Y(double northing) const;
};

void draw_axes(const MapFrame& frame, const std::vector<AxisMark>& eastings,
               const std::vector<AxisMark>& northings, Canvas& canvas);

}  // namespace zol::tool
