#include "engine/formats/mesh/stl_colours.h"

namespace zol::engine {

namespace {

constexpr std::uint16_t kTopBit = 0x8000;

/// Of five bits at `shift`.
std::uint8_t channel(std::uint16_t word, unsigned shift) {
    const unsigned level = static_cast<unsigned>(word) >> shift & 31U;
    return static_cast<std::uint8_t>((level * 255U + 15U) / 31U);
}

}  // namespace

StlColours::StlColours(std::string_view header) {
    constexpr std::string_view kKey = "COLOR=";
    const std::size_t at = header.find(kKey);
    if (at == header.npos || header.size() - at < kKey.size() + 4) return;
    ColourTally::Colour colour;
    for (std::size_t i = 0; i < colour.size(); ++i) {
        colour[i] = static_cast<std::uint8_t>(header[at + kKey.size() + i]);
    }
    all_ = colour;
}

void StlColours::AddColoured(std::uint16_t word) {
    const bool top = (word & kTopBit) != 0;
    // With a colour for all, the top bit says that the facet has none of its own; without,
    // that it has one. Red is in the low bits of the one, blue of the other.
    if (top == all_.has_value()) {
        ++plain_;
    } else if (all_) {
        ++coloured_;
        own_.Add({channel(word, 0), channel(word, 5), channel(word, 10), 255});
    } else {
        ++coloured_;
        own_.Add({channel(word, 10), channel(word, 5), channel(word, 0), 255});
    }
}

void StlColours::Tell(MeshLook& look) {
    if (coloured_ > plain_) {
        own_.Tell(look, false);
    } else if (all_) {
        look.colour = {(*all_)[0], (*all_)[1], (*all_)[2]};
        look.opacity = (*all_)[3] / 255.0;
    }
}

}  // namespace zol::engine
