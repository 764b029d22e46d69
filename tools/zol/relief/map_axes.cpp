#include "tools/zol/relief/map_axes.h"

#include <algorithm>

#include "tools/zol/number_text.h"

namespace zol::tool {

namespace {

constexpr int kMostMarks = 9;
constexpr double kApart = 16;
constexpr double kTickLength = 5;

std::vector<AxisMark> marks_of(const Ticks& ticks) {
    std::vector<AxisMark> marks;
    for (const double value : ticks.values) marks.push_back({value, tick_text(value, ticks.step)});
    return marks;
}

}  // namespace

std::vector<AxisMark> axis_marks(double low, double high, double pixels,
                                 const std::function<double(const std::string&)>& room_for) {
    std::vector<AxisMark> marks;
    for (int most = kMostMarks; most >= 1; --most) {
        const Ticks ticks = ticks_between(low, high, most);
        marks = marks_of(ticks);
        double room = 0;
        for (const AxisMark& mark : marks) room = std::max(room, room_for(mark.text));
        const double step = ticks.step / (high - low) * pixels;
        if (marks.size() < 2 || step >= room + kApart) break;
    }
    if (!marks.empty()) return marks;
    // No round numbers, as on an axis longer than the largest double.
    return {{low, std::string(number_text(low))}, {high, std::string(number_text(high))}};
}

double MapFrame::X(double easting) const {
    return map.left + (easting - west) / (east - west) * map.width;
}

double MapFrame::Y(double northing) const {
    return map.Bottom() - (northing - south) / (north - south) * map.height;
}

void draw_axes(const MapFrame& frame, const std::vector<AxisMark>& eastings,
               const std::vector<AxisMark>& northings, Canvas& canvas) {
    const Rectangle& map = frame.map;
    canvas.Frame(map);
    for (const AxisMark& mark : eastings) {
        const double x = frame.X(mark.value);
        canvas.Line(x, map.Bottom(), x, map.Bottom() + kTickLength);
        canvas.Write(mark.text, x, map.Bottom() + kTickLength + kTickStyle.size + 2, kTickStyle);
    }
    for (const AxisMark& mark : northings) {
        const double y = frame.Y(mark.value);
        canvas.Line(map.left - kTickLength, y, map.left, y);
        canvas.Write(mark.text, map.left - kTickLength - 4, y + kTickStyle.size / 3,
                     {kTickStyle.size, Anchor::Right, false});
    }
}

}  // namespace zol::tool
