#include "engine/formats/mesh/colour_tally.h"

#include <bit>

namespace zol::engine {

namespace {

constexpr std::size_t kMostColours = 65536;

}  // namespace

void ColourTally::EndRun() {
    if (run_ == 0) return;
    added_ += run_;
    for (std::size_t i = 0; i < sums_.size(); ++i) sums_[i] += run_ * run_colour_[i];
    if (is_countable_) {
        const std::size_t place = seen_.size();
        Seen& seen = seen_[std::bit_cast<std::uint32_t>(run_colour_)];
        if (seen.times == 0) seen.place = place;
        seen.times += run_;
        if (seen_.size() > kMostColours) {
            is_countable_ = false;
            seen_.clear();
        }
    }
    run_ = 0;
}

void ColourTally::Tell(MeshLook& look, bool with_opacity) {
    EndRun();
    if (added_ == 0) return;
    Colour colour{};
    if (is_countable_) {
        Seen most;
        for (const auto& [bits, seen] : seen_) {
            if (seen.times > most.times || (seen.times == most.times && seen.place < most.place)) {
                most = seen;
                colour = std::bit_cast<Colour>(bits);
            }
        }
    } else {
        for (std::size_t i = 0; i < colour.size(); ++i) {
            colour[i] = static_cast<std::uint8_t>((sums_[i] + added_ / 2) / added_);
        }
    }
    look.colour = {colour[0], colour[1], colour[2]};
    if (with_opacity) look.opacity = colour[3] / 255.0;
}

}  // namespace zol::engine
