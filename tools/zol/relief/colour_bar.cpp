#include "tools/zol/relief/colour_bar.h"

#include "tools/zol/number_text.h"

namespace zol::tool {

std::vector<AxisMark> colour_marks(const ColourLimits& limits, double pixels) {
    if (!(limits.low < limits.high)) {
        return {{limits.low, std::string(number_text(limits.low))}};
    }
    return axis_marks(limits.low, limits.high, pixels,
                      [](const std::string&) { return kTickStyle.size; });
}

void draw_colour_bar(const ColourLimits& limits, const std::vector<AxisMark>& marks,
                     const Rectangle& area, Canvas& canvas) {
    const bool is_constant = !(limits.low < limits.high);
    for (int y = 0; y < area.height; ++y) {
        canvas.Use(colour_at(is_constant ? limits.PlaceOf(limits.low) : 1 - y / area.height));
        canvas.Fill({area.left, area.top + y, area.width, 1});
    }
    canvas.Use({});
    canvas.Frame(area);
    for (const AxisMark& mark : marks) {
        const double y = area.Bottom() - limits.PlaceOf(mark.value) * area.height;
        canvas.Line(area.Right(), y, area.Right() + 5, y);
        canvas.Write(mark.text, area.Right() + 9, y + kTickStyle.size / 3, {kTickStyle.size});
    }
}

}  // namespace zol::tool
