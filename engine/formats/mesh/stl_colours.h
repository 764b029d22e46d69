// Colours in the 16 bits behind a facet of a binary STL file, which the format has no use
// for. Two dialects are in use.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "engine/formats/mesh/colour_tally.h"
#include "engine/formats/mesh/mesh_data.h"

namespace zol::engine {

class StlColours {
public:
    /// `header` is the 80 bytes in front of the facets.
    explicit StlColours(std::string_view header);

    void Add(std::uint16_t word) {
        if (word == 0) {
            ++plain_;
        } else {
            AddColoured(word);
        }
    }

    /// Says the colour of most facets; nothing when most, or all, have none.
    void Tell(MeshLook& look);

private:
    void AddColoured(std::uint16_t word);

    /// Of facets without a colour of their own. Only one dialect has it, and its words count
    /// other colours.
    std::optional<ColourTally::Colour> all_;
    std::uint64_t plain_ = 0;
    std::uint64_t coloured_ = 0;
    ColourTally own_;
};

}  // namespace zol::engine
