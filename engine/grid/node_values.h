// The value of one node, as fast as it can be had: nearly every call is the index of a cell
// in the window that the last one was in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "engine/grid/lattice.h"
#include "engine/grid/node_reader.h"
#include "engine/grid/source.h"
#include "engine/grid/window_cache.h"

namespace zol::engine::grid {

class NodeValues {
public:
    /// `reported_as` is the name in the diagnostics.
    NodeValues(Source source, std::string reported_as);

    /// Column and row count from the node of least coordinates. False outside and for
    /// what can't be read; both outputs then stay.
    bool Get(std::int32_t column, std::int32_t row, double& value, bool& masked) {
        // Wraps round for nodes west or south of the window, and is too large then.
        const std::uint32_t across = static_cast<std::uint32_t>(column) - west_;
        const std::uint32_t up = static_cast<std::uint32_t>(row) - south_;
        if (across >= width_ || up >= height_) [[unlikely]] {
            return GetFromNext(column, row, value, masked);
        }
        return GetCell(origin_ + across * column_step_ + up * row_step_, value, masked);
    }

private:
    bool GetFromNext(std::int32_t column, std::int32_t row, double& value, bool& masked);
    void Use(const Window& window);

    bool GetCell(std::ptrdiff_t cell, double& value, bool& masked) const {
        if (flags_ != nullptr && (flags_[cell] & kUnreadable) != 0) {
            return false;
        }
        masked = flags_ != nullptr && (flags_[cell] & kMasked) != 0;
        if (floats_ == nullptr) {
            value = doubles_[cell];
            return true;
        }
        if (IsSpecial(floats_ + cell)) [[unlikely]] {
            return GetSpecialCell(cell, value);
        }
        value = double{floats_[cell]};
        return true;
    }

    /// NaN, infinite or less than normal, but not 0: a process that traps on the former or
    /// flushes the latter to zero must not see its own processor widen it.
    static bool IsSpecial(const float* number) {
        constexpr std::uint32_t kExponent = 0x7F800000;
        constexpr std::uint32_t kOne = 0x00800000;
        std::uint32_t bits = 0;
        std::memcpy(&bits, number, sizeof bits);
        // The exponents 0 and 255 wrap round to, or are, the greatest.
        return (bits & kExponent) - kOne >= kExponent - kOne && bits << 1 != 0;
    }
    bool GetSpecialCell(std::ptrdiff_t cell, double& value) const;

    /// The window in use, of the cache's, by its nodes: the south-west one, how many there
    /// are each way, its cell, and how far off the next ones' cells are.
    std::uint32_t west_ = 0;
    std::uint32_t south_ = 0;
    std::uint32_t width_ = 0;
    std::uint32_t height_ = 0;
    std::ptrdiff_t origin_ = 0;
    std::ptrdiff_t column_step_ = 1;
    std::ptrdiff_t row_step_ = 1;
    const float* floats_ = nullptr;
    const double* doubles_ = nullptr;
    const std::uint8_t* flags_ = nullptr;
    Axis x_;
    Axis y_;
    std::string reported_as_;
    bool failure_reported_ = false;
    WindowCache windows_;
};

}  // namespace zol::engine::grid
