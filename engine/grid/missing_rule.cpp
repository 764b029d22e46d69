#include "engine/grid/missing_rule.h"

#include <utility>

namespace zol::engine::grid {

void MissingRule::SetExact(double code) {
    lowest = code;
    highest = code;
}

void MissingRule::SetNear(double code) {
    // GDAL says equal when |a - b| < 2 e |a + b| with e that of floats, also for doubles.
    constexpr double kSlack = 2.0 * std::numeric_limits<float>::epsilon();
    constexpr double kFactor = (1.0 + kSlack) / (1.0 - kSlack);
    lowest = code / kFactor;
    highest = code * kFactor;
    if (highest < lowest) {
        std::swap(lowest, highest);
    }
}

}  // namespace zol::engine::grid
