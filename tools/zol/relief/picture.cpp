#include "tools/zol/relief/picture.h"

#include <algorithm>
#include <cmath>

#include "tools/zol/relief/caption.h"
#include "tools/zol/relief/colour_bar.h"
#include "tools/zol/relief/image_of_relief.h"

namespace zol::tool {

namespace {

constexpr double kMargin = 14;
constexpr TextStyle kTitleStyle{17, Anchor::Left, true};
constexpr TextStyle kLabelStyle{13, Anchor::Middle, false};
constexpr TextStyle kCaptionStyle{12, Anchor::Left, false};
constexpr double kLineHeight = 17;
constexpr double kNarrowestPage = 560;
// A colour bar beside a flat map has to be readable all the same.
constexpr double kShortestBar = 180;
constexpr double kBarWidth = 20;
// With fewer cells along a side the shade of one looks like a colour of its own.
constexpr int kFewestForRelief = 24;
constexpr double kMaskedKeyHeight = 34;
constexpr const char* kEastLabel = "East";
constexpr const char* kNorthLabel = "North";
constexpr const char* kBarLabel = "value (unit of the file)";

struct Page {
    MapFrame frame;
    std::vector<AxisMark> eastings;
    std::vector<AxisMark> northings;
    Rectangle bar;
    std::vector<AxisMark> values;
    double values_width = 0;
    double caption_top = 0;
    std::vector<std::string> caption;
    std::string title;
    double width = 0;
    double height = 0;
};

double widest(const std::vector<AxisMark>& marks, Canvas& canvas) {
    double width = 0;
    for (const AxisMark& mark : marks) {
        width = std::max(width, canvas.WidthOf(mark.text, kTickStyle));
    }
    return width;
}

MapFrame frame_of(const Thumbnail& surface, const MapScale& scale) {
    MapFrame frame;
    frame.map.width = std::round(surface.width * scale.cell_width);
    frame.map.height = std::round(surface.height * scale.cell_height);
    frame.west = surface.west;
    frame.east = surface.west + surface.width * surface.dx;
    frame.north = surface.north;
    frame.south = surface.north - surface.height * surface.dy;
    return frame;
}

/// Everything but the texts below and above, whose lines depend on the width.
Page laid_out(const MapFrame& frame, const ColourLimits& limits, bool has_masked, Canvas& canvas) {
    Page page;
    page.frame = frame;
    Rectangle& map = page.frame.map;
    page.eastings = axis_marks(frame.west, frame.east, map.width, [&](const std::string& text) {
        return canvas.WidthOf(text, kTickStyle);
    });
    page.northings = axis_marks(frame.south, frame.north, map.height,
                                [](const std::string&) { return kTickStyle.size; });
    map.left = std::ceil(kMargin + kLabelStyle.size + 8 + widest(page.northings, canvas) + 10);
    map.top = kMargin + kTitleStyle.size + 14;

    const double key = has_masked ? kMaskedKeyHeight : 0;
    page.bar = {map.Right() + 28, map.top, kBarWidth, std::max(map.height - key, kShortestBar)};
    page.values = colour_marks(limits, page.bar.height);
    page.values_width = widest(page.values, canvas);
    page.width = std::max(
        page.bar.Right() + 9 + page.values_width + 12 + kLabelStyle.size + kMargin, kNarrowestPage);
    page.caption_top = std::max(map.Bottom() + kTickStyle.size + kLabelStyle.size + 26,
                                page.bar.Bottom() + key + 8);
    return page;
}

void draw_page(const Page& page, bool has_masked, const ColourLimits& limits, const Image& relief,
               Canvas& canvas) {
    const Rectangle& map = page.frame.map;
    canvas.Write(page.title, kMargin, kMargin + kTitleStyle.size, kTitleStyle);
    if (has_masked) canvas.Hatch(map);
    canvas.Draw(relief, map);
    canvas.Use({});
    draw_axes(page.frame, page.eastings, page.northings, canvas);
    canvas.Write(kEastLabel, map.left + map.width / 2,
                 map.Bottom() + kTickStyle.size + kLabelStyle.size + 14, kLabelStyle);
    // On a flat map it must not reach up into the title.
    const double north_middle =
        map.top + std::max(map.height, canvas.WidthOf(kNorthLabel, kLabelStyle)) / 2;
    canvas.WriteUpwards(kNorthLabel, kMargin + kLabelStyle.size / 2, north_middle, kLabelStyle);

    draw_colour_bar(limits, page.values, page.bar, canvas);
    canvas.WriteUpwards(kBarLabel,
                        page.bar.Right() + 9 + page.values_width + 12 + kLabelStyle.size / 2,
                        page.bar.top + page.bar.height / 2, kLabelStyle);
    if (has_masked) {
        const Rectangle key{page.bar.left, page.bar.Bottom() + 16, kBarWidth, 16};
        canvas.Hatch(key);
        canvas.Use({});
        canvas.Frame(key);
        canvas.Write("masked", key.Right() + 9, key.top + 12, {kTickStyle.size});
    }
    double y = page.caption_top;
    for (const std::string& line : page.caption) {
        y += kLineHeight;
        canvas.Write(line, kMargin, y, kCaptionStyle);
    }
}

}  // namespace

void write_picture(const Thumbnail& surface, const MapScale& scale, const PictureFacts& facts,
                   Output& output) {
    const ColourLimits limits = colour_limits(surface);
    const std::vector<Slope> slopes = slopes_of(surface);
    const bool is_shaded = std::min(surface.width, surface.height) >= kFewestForRelief;
    const double exaggeration = is_shaded ? exaggeration_for(slopes) : 0;
    const bool has_masked = facts.statistics.NMasked() > 0 || surface.HasHoles();

    // Texts are measured on a canvas of their own: the page's size depends on them.
    Canvas measure(1, 1);
    Page page = laid_out(frame_of(surface, scale), limits, has_masked, measure);
    const double text_width = page.width - 2 * kMargin;
    page.title = title_of(facts.title, text_width, kTitleStyle, measure);
    page.caption = wrapped(caption_of(surface, scale, facts, exaggeration, limits), text_width,
                           kCaptionStyle, measure);
    page.height =
        page.caption_top + kLineHeight * static_cast<double>(page.caption.size()) + kMargin;

    Canvas canvas(static_cast<int>(std::ceil(page.width)),
                  static_cast<int>(std::ceil(page.height)));
    const Image relief = image_of_relief(surface, slopes, exaggeration, limits);
    draw_page(page, has_masked, limits, relief, canvas);
    canvas.WritePng(output);
}

}  // namespace zol::tool
