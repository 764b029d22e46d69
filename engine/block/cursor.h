// Walks over the blocks of a model and answers for the block it stands on.
#pragma once

#include <cstdint>
#include <string>

#include "engine/block/catalogue.h"
#include "engine/block/source.h"
#include "platform/zolGeometryExport.h"

namespace zol::engine::block {

/// A position is the ordinal of a block, and the number of blocks at the end of the
/// data. Past the end numbers are NaN, texts empty and the extent zero.
class Cursor {
public:
    /// Both outlive the cursor. It starts on the first block.
    Cursor(const Source& source, const Catalogue& catalogue);

    /// Takes notice that the source has changed, and starts on its first block.
    void Restart();

    std::int64_t Position() const { return position_; }
    bool IsEof() const { return position_ >= n_blocks_; }
    /// Any number; one outside of the model moves to the end.
    void MoveTo(std::int64_t position);
    void Next() { position_ += IsEof() ? 0 : 1; }

    /// NaN for a text variable and for an unknown name.
    double Number(const std::string& name) const;
    std::string Text(const std::string& name) const;
    zol::geometry::Extent Extent() const;

private:
    const zol::geometry::Extent& BlockExtent() const;
    double Compute(Predefined predefined) const;
    std::string NameOfCode(const Variable& variable, double code) const;

    const Source& source_;
    const Catalogue& catalogue_;
    std::int64_t n_blocks_ = 0;
    std::int64_t position_ = 0;
    // The extent of one block is asked for up to seven times by its predefined variables.
    mutable std::int64_t extent_of_ = -1;
    mutable zol::geometry::Extent extent_{0, 0, 0, 0, 0, 0};
};

}  // namespace zol::engine::block
