// Round numbers along an axis, and their texts.
#pragma once

#include <string>
#include <vector>

namespace zol::tool {

struct Ticks {
    double step = 0;
    /// Multiples of the step within the axis, rising. None where the axis is so short
    /// beside its distance from 0 that doubles can't tell them apart.
    std::vector<double> values;
};

/// At most `most` of them, 1, 2 or 5 times a power of ten apart.
Ticks ticks_between(double low, double high, int most);

/// Plain digits with as many decimals as the step needs, or in powers of ten where that
/// would be long.
std::string tick_text(double value, double step);

}  // namespace zol::tool
