// Values of narrower floats. Out of line, so that the rounding happens in the mode of the call.
#pragma once

namespace zol::engine::block {

/// The float nearest to `value`; beyond the greatest infinity. NaN stays.
double rounded_to_float(double value);

/// The half float (IEEE 754 binary16) nearest to `value`, ties to even; beyond 65504 infinity. NaN
/// stays.
double rounded_to_half(double value);

}  // namespace zol::engine::block
