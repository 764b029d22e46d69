// The colour table of a source that has none: the colours that its objects use.
#pragma once

#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "platform/colour.h"

namespace zol::engine::design {

class ColourList {
public:
    /// Red, green, blue.
    using Colour = std::array<std::uint8_t, 3>;

    void Add(const Colour& colour) {
        const std::uint32_t value = Packed(colour);
        if (positions_.emplace(value, static_cast<int>(table_.size())).second) {
            table_.push_back({value});
        }
    }
    /// 0 for a colour that was not added.
    int PositionOf(const Colour& colour) const {
        const auto found = positions_.find(Packed(colour));
        return found == positions_.end() ? 0 : found->second;
    }
    /// In the order in which they were added.
    const std::vector<graphics::RGB>& Table() const { return table_; }

private:
    static std::uint32_t Packed(const Colour& colour) {
        return colour[0] | static_cast<std::uint32_t>(colour[1]) << 8U |
               static_cast<std::uint32_t>(colour[2]) << 16U;
    }

    std::vector<graphics::RGB> table_;
    std::unordered_map<std::uint32_t, int> positions_;
};

}  // namespace zol::engine::design
