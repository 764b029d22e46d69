// The one colour of a mesh whose parts have colours of their own: that of most of them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_map>

#include "engine/formats/mesh/mesh_data.h"

namespace zol::engine {

class ColourTally {
public:
    /// Red, green, blue and opacity, each to 255.
    using Colour = std::array<std::uint8_t, 4>;

    void Add(const Colour& colour) {
        if (colour == run_colour_) {
            ++run_;
            return;
        }
        EndRun();
        run_colour_ = colour;
        run_ = 1;
    }

    /// Says the colour that was added most often, the first of those that were alike often.
    /// Of more than 65,536 colours it is their mean: what a scanner saw, each a little
    /// different. Says nothing when none was added.
    void Tell(MeshLook& look, bool with_opacity);

private:
    struct Seen {
        std::uint64_t times = 0;
        /// Which colour it was, from 0.
        std::size_t place = 0;
    };

    void EndRun();

    Colour run_colour_{};
    std::uint64_t run_ = 0;
    std::uint64_t added_ = 0;
    std::array<std::uint64_t, 4> sums_{};
    bool is_countable_ = true;
    std::unordered_map<std::uint32_t, Seen> seen_;
};

}  // namespace zol::engine
