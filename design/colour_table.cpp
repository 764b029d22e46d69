#include "design/colour_table.h"

#include <cstddef>
#include <cstdint>
#include <vector>

#include "design/default_palette.h"

namespace zol::design::flat {

namespace {

/// Plain static storage, shared by all threads and locked by none.
std::vector<graphics::RGB> colours;

graphics::RGB packed(const PaletteRow& row) {
    return {static_cast<std::uint32_t>(row.red) | static_cast<std::uint32_t>(row.green) << 8 |
            static_cast<std::uint32_t>(row.blue) << 16};
}

}  // namespace

void take_colours(const Database& database) {
    colours.clear();
    // Whether there are any is seen by the table alone.
    database.GetColourTable(colours);
}

void forget_colours() {
    colours.clear();
}

graphics::RGB colour_at(int index) {
    // Below 0 comes out beyond both ends.
    const auto position = static_cast<std::size_t>(index);
    if (!colours.empty()) {
        return position < colours.size() ? colours[position] : graphics::RGB{};
    }
    return position < kDefaultPalette.size() ? packed(kDefaultPalette[position]) : graphics::RGB{};
}

}  // namespace zol::design::flat
