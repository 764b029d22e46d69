// Which numbers of a raster stand for no data.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace zol::engine::grid {

/// For raw numbers, ahead of scale and offset.
struct MissingRule {
    /// Numbers from `lowest` to `highest` are missing; none when they cross.
    double lowest = 1.0;
    double highest = 0.0;
    /// So are numbers not below this.
    double blank_from = std::numeric_limits<double>::infinity();
    /// The bits of the missing number of a band of 64-bit whole numbers, which doubles
    /// can't tell apart.
    bool has_whole = false;
    std::uint64_t whole = 0;

    /// The one number `code`, exactly.
    void SetExact(double code);
    /// All numbers that GDAL takes for `code` in a band of floating-point numbers, since
    /// writers round it to the digits that they print.
    void SetNear(double code);

    /// NaN and the infinities are missing whatever the rule.
    template <typename T>
    bool IsMissing(T raw) const {
        if constexpr (std::is_integral_v<T> && sizeof(T) == 8) {
            return has_whole && static_cast<std::uint64_t>(raw) == whole;
        } else {
            // Without branches, so that many are tested at a time. The last test is of NaN too.
            const auto number = static_cast<double>(raw);
            const bool is_code = (lowest <= number) & (number <= highest);
            const bool is_number = std::fabs(number) <= std::numeric_limits<double>::max();
            return is_code | (number >= blank_from) | !is_number;
        }
    }
};

}  // namespace zol::engine::grid
