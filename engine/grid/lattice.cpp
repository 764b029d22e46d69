#include "engine/grid/lattice.h"

#include <cmath>
#include <utility>

#include "engine/formats/number_text.h"
#include "engine/formats/read_error.h"

namespace zol::engine::grid {

Axis Axis::FromSteps(double start, double offset, double step, std::int32_t count) {
    if (count < 1) {
        throw ReadError("it has no nodes");
    }
    Axis axis;
    axis.count = count;
    axis.spacing = std::fabs(step);
    axis.lower = start + offset * step;
    axis.upper = start + (offset + (count - 1)) * step;
    if (step < 0.0) {
        std::swap(axis.lower, axis.upper);
        axis.turned = true;
    }
    // Written so that NaN fails too.
    const bool apart = axis.spacing > 0.0 && axis.lower < axis.lower + axis.spacing &&
                       axis.upper - axis.spacing < axis.upper;
    if (!apart || !std::isfinite(axis.lower) || !std::isfinite(axis.upper)) {
        throw ReadError("its nodes can't be told apart: " + std::to_string(count) + " from " +
                        number_text(start) + " in steps of " + number_text(step));
    }
    return axis;
}

}  // namespace zol::engine::grid
