#include "tools/zol/relief/image_of_relief.h"

#include <cmath>

namespace zol::tool {

namespace {

std::uint32_t pixel(const Rgb& colour) {
    const auto byte = [](double part) {
        return static_cast<std::uint32_t>(std::lround(part * 255));
    };
    return 0xff000000U | byte(colour.red) << 16U | byte(colour.green) << 8U | byte(colour.blue);
}

}  // namespace

Image image_of_relief(const Thumbnail& surface, const std::vector<Slope>& slopes,
                      double exaggeration, const ColourLimits& limits) {
    Image image{surface.width, surface.height, {}};
    image.pixels.reserve(surface.values.size());
    for (std::size_t cell = 0; cell < surface.values.size(); ++cell) {
        const double value = surface.values[cell];
        if (std::isnan(value)) {
            image.pixels.push_back(0);
            continue;
        }
        const double light = light_on(slopes[cell], exaggeration);
        image.pixels.push_back(pixel(lit(colour_at(limits.PlaceOf(value)), light)));
    }
    return image;
}

}  // namespace zol::tool
