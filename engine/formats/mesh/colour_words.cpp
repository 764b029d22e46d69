#include "engine/formats/mesh/colour_words.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <string>

#include "engine/formats/text_lines.h"

namespace zol::engine {

namespace {

struct NamedColour {
    std::string_view name;
    std::uint32_t rgb;
};
// As the X Window System has them.
constexpr NamedColour kNamedColours[] = {
    {"aquamarine", 0x7FFFD4}, {"beige", 0xF5F5DC},       {"black", 0x000000},
    {"blue", 0x0000FF},       {"brown", 0xA52A2A},       {"chartreuse", 0x7FFF00},
    {"chocolate", 0xD2691E},  {"coral", 0xFF7F50},       {"cyan", 0x00FFFF},
    {"firebrick", 0xB22222},  {"forestgreen", 0x228B22}, {"gold", 0xFFD700},
    {"goldenrod", 0xDAA520},  {"gray", 0xBEBEBE},        {"green", 0x00FF00},
    {"grey", 0xBEBEBE},       {"indianred", 0xCD5C5C},   {"ivory", 0xFFFFF0},
    {"khaki", 0xF0E68C},      {"lavender", 0xE6E6FA},    {"magenta", 0xFF00FF},
    {"maroon", 0xB03060},     {"navy", 0x000080},        {"orange", 0xFFA500},
    {"orchid", 0xDA70D6},     {"peru", 0xCD853F},        {"pink", 0xFFC0CB},
    {"plum", 0xDDA0DD},       {"purple", 0xA020F0},      {"red", 0xFF0000},
    {"salmon", 0xFA8072},     {"sienna", 0xA0522D},      {"skyblue", 0x87CEEB},
    {"tan", 0xD2B48C},        {"thistle", 0xD8BFD8},     {"tomato", 0xFF6347},
    {"turquoise", 0x40E0D0},  {"violet", 0xEE82EE},      {"wheat", 0xF5DEB3},
    {"white", 0xFFFFFF},      {"yellow", 0xFFFF00},
};

std::array<std::uint8_t, 3> colour_of(std::uint32_t rgb) {
    return {static_cast<std::uint8_t>(rgb >> 16), static_cast<std::uint8_t>(rgb >> 8 & 255),
            static_cast<std::uint8_t>(rgb & 255)};
}

bool read_parts(std::string_view text, MeshLook& look) {
    std::array<double, 4> parts{};
    std::size_t count = 0;
    for (std::string_view word = take_word(text); !word.empty(); word = take_word(text)) {
        if (count == parts.size() || !read_real(word, parts[count])) return false;
        ++count;
    }
    if (count < 3) return false;
    look.colour.emplace();
    for (std::size_t i = 0; i < 3; ++i) (*look.colour)[i] = colour_byte(parts[i]);
    if (count == 4) look.opacity = std::clamp(parts[3], 0.0, 1.0);
    return true;
}

}  // namespace

std::uint8_t colour_byte(double part) {
    return static_cast<std::uint8_t>(std::lround(std::clamp(part, 0.0, 1.0) * 255));
}

std::optional<std::array<std::uint8_t, 3>> colour_of_hex(std::string_view text) {
    if (text.size() != 7 || text[0] != '#') return std::nullopt;
    std::uint32_t rgb = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data() + 1, end, rgb, 16);
    if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
    return colour_of(rgb);
}

bool read_colour(std::string_view text, MeshLook& look) {
    text = without_blanks(text);
    if (text.starts_with('#')) {
        const auto colour = colour_of_hex(text);
        if (colour) look.colour = colour;
        return colour.has_value();
    }
    // Names come in one word or in several: "sky blue".
    std::string name;
    std::copy_if(text.begin(), text.end(), std::back_inserter(name),
                 [](char c) { return c != ' '; });
    const auto* const found =
        std::find_if(std::begin(kNamedColours), std::end(kNamedColours),
                     [&](const NamedColour& known) { return is_same_word(known.name, name); });
    if (found == std::end(kNamedColours)) return read_parts(text, look);
    look.colour = colour_of(found->rgb);
    return true;
}

}  // namespace zol::engine
