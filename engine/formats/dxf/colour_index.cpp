#include "engine/formats/dxf/colour_index.h"

#include <algorithm>
#include <array>

namespace zol::engine {

namespace {

constexpr std::array<std::uint32_t, 10> kNamed = {0x000000, 0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF,
                                                  0x0000FF, 0xFF00FF, 0xFFFFFF, 0x808080, 0xC0C0C0};
constexpr std::array<std::uint32_t, 6> kGreys = {0x333333, 0x5B5B5B, 0x848484,
                                                 0xADADAD, 0xD6D6D6, 0xFFFFFF};
constexpr std::array<int, 5> kBrightness = {255, 165, 127, 76, 38};
constexpr int kFirstHue = 10;
constexpr int kFirstGrey = 250;
constexpr int kHues = 24;

// The part of red, in quarters, at hue `step` of 24: full for 60 degrees to both sides, and
// falling to nothing in another 60. Green and blue are the same 120 and 240 degrees on.
constexpr int quarters(int step) {
    const int from_peak = std::min(step % kHues, kHues - step % kHues);
    return std::clamp(8 - from_peak, 0, 4);
}

constexpr std::uint32_t hue_colour(int index) {
    const int step = (index - kFirstHue) / 10;
    const int entry = (index - kFirstHue) % 10;
    const int most = kBrightness[static_cast<std::size_t>(entry / 2)];
    const int least = entry % 2 == 0 ? 0 : most / 2;
    std::uint32_t colour = 0;
    for (const int shift : {0, 16, 8}) {
        const int part = least + (most - least) * quarters(step + shift) / 4;
        colour = colour << 8U | static_cast<std::uint32_t>(part);
    }
    return colour;
}

constexpr std::array<std::uint32_t, 256> kColours = [] {
    std::array<std::uint32_t, 256> colours{};
    for (int i = 0; i < 256; ++i) {
        const auto at = static_cast<std::size_t>(i);
        colours[at] = i < kFirstHue    ? kNamed[at]
                      : i < kFirstGrey ? hue_colour(i)
                                       : kGreys[at - kFirstGrey];
    }
    return colours;
}();

constexpr int part_of(std::uint32_t colour, unsigned shift) {
    return static_cast<int>(colour >> shift & 0xFFU);
}

}  // namespace

std::uint32_t colour_of_index(int index) {
    return index < 1 || index > 255 ? 0 : kColours[static_cast<std::size_t>(index)];
}

int nearest_colour_index(std::uint32_t colour) {
    int nearest = 1;
    int least = 4 * 256 * 256;
    for (int i = 1; i < 256; ++i) {
        int distance = 0;
        for (const unsigned shift : {0U, 8U, 16U}) {
            const int apart = part_of(colour, shift) - part_of(colour_of_index(i), shift);
            distance += apart * apart;
        }
        if (distance < least) {
            least = distance;
            nearest = i;
        }
    }
    return nearest;
}

}  // namespace zol::engine
