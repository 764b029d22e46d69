// Walks over the blocks that match, in the model's own order.
#pragma once

#include <cstdint>
#include <memory>

#include "engine/block/geometry.h"
#include "engine/block/match_region.h"
#include "engine/geometry/block_selection.h"

namespace zol::engine::block {

/// A block that matches.
struct Matched {
    static constexpr double kWhole = geometry::Stretch::kWhole;

    /// The number of blocks when there is no more.
    std::int64_t block;
    /// Of the part that is selected, or kWhole for all that counts of the block.
    double volume;
};

class MatchWalk {
public:
    MatchWalk() = default;
    MatchWalk(const MatchWalk&) = delete;
    MatchWalk& operator=(const MatchWalk&) = delete;
    virtual ~MatchWalk() = default;

    /// The first block from `block` on that matches. Any block may be asked for; in their
    /// order it costs least.
    virtual Matched NotBefore(std::int64_t block) = 0;
};

/// The walk that suits how the blocks are laid out. Region and geometry outlive it. Memory
/// follows the surfaces that cross the blocks in work, whatever the number of blocks.
std::unique_ptr<MatchWalk> walk_over(const MatchRegion& region, Geometry& geometry);

}  // namespace zol::engine::block
