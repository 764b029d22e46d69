#include "tools/zol/relief/colour_map.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace zol::tool {

namespace {

// Sixteen of the 256 colours of "viridis" by S. van der Walt and N. Smith (mpl-colormaps,
// CC0), numbers 60 to 255. The darkest quarter is left out: shadow on it would be lost.
constexpr Rgb kColours[] = {
    {0.237441, 0.305202, 0.541921}, {0.212395, 0.359683, 0.551710}, {0.188923, 0.410910, 0.556326},
    {0.168126, 0.459988, 0.558082}, {0.149039, 0.508051, 0.557250}, {0.131172, 0.555899, 0.552459},
    {0.119738, 0.603785, 0.541400}, {0.130067, 0.651384, 0.521608}, {0.175707, 0.697900, 0.491033},
    {0.252899, 0.742211, 0.448284}, {0.352360, 0.783011, 0.392636}, {0.468053, 0.818921, 0.323998},
    {0.595839, 0.848717, 0.243329}, {0.730889, 0.871916, 0.156029}, {0.866013, 0.889868, 0.095953},
    {0.993248, 0.906157, 0.143936},
};

// What deepest shadow leaves of a colour, and how far full light takes it to white.
constexpr double kShadow = 0.4;
constexpr double kGloss = 0.6;

Rgb mixed(const Rgb& from, const Rgb& to, double part) {
    return {std::lerp(from.red, to.red, part), std::lerp(from.green, to.green, part),
            std::lerp(from.blue, to.blue, part)};
}

}  // namespace

Rgb colour_at(double place) {
    constexpr auto kLast = static_cast<double>(std::size(kColours) - 1);
    const double at = std::clamp(place, 0.0, 1.0) * kLast;
    const auto below = static_cast<std::size_t>(std::min(std::floor(at), kLast - 1));
    return mixed(kColours[below], kColours[below + 1], at - static_cast<double>(below));
}

Rgb lit(const Rgb& colour, double light) {
    constexpr Rgb kBlack;
    constexpr Rgb kWhite{1, 1, 1};
    if (light <= 1) return mixed(kBlack, colour, std::lerp(kShadow, 1.0, std::max(light, 0.0)));
    return mixed(colour, kWhite, kGloss * std::min(light - 1, 1.0));
}

}  // namespace zol::tool
