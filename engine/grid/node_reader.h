// The one face that the sources of grids show to the cache of their nodes.
//
// Cells are counted as the file has them: columns from its first, rows from its first.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace zol::engine::grid {

/// A rectangle of cells.
struct Area {
    std::int32_t column = 0;
    std::int32_t row = 0;
    std::int32_t columns = 0;
    std::int32_t rows = 0;

    std::size_t Cells() const {
        return static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows);
    }
};

/// Bits of a cell. A cell that could not be read has no value.
inline constexpr std::uint8_t kMasked = 1;
inline constexpr std::uint8_t kUnreadable = 2;

/// The values of an area, row by row, in memory of the cache's; of `floats` and `doubles`
/// one is there.
struct Window {
    Area area;
    float* floats = nullptr;
    double* doubles = nullptr;
    /// Only to be read when `is_flagged`; otherwise every cell has a value and none is masked.
    std::uint8_t* flags = nullptr;
    bool is_flagged = false;

    void Flag(std::size_t cell, std::uint8_t bits) {
        if (!is_flagged) {
            is_flagged = true;
            std::fill_n(flags, area.Cells(), std::uint8_t{0});
        }
        flags[cell] |= bits;
    }
};

class NodeReader {
public:
    virtual ~NodeReader() = default;

    /// What is best read at one go, at most the whole.
    struct Shape {
        std::int32_t columns = 1;
        std::int32_t rows = 1;
    };
    virtual Shape Block() const = 0;

    /// True when every value is exact as a float; windows then hold floats.
    virtual bool IsNarrow() const = 0;

    /// Fills a window that has its area and room for it. Cells that can't be
    /// read are flagged. Throws ReadError when nothing can be read any more.
    virtual void Read(Window& window) = 0;
};

}  // namespace zol::engine::grid
