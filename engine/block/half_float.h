// Values of the 16-bit float (IEEE 754 binary16).
#pragma once

namespace zol::engine::block {

/// The half float nearest to `value`, ties to even; beyond 65504 infinity. NaN stays.
double rounded_to_half(double value);

}  // namespace zol::engine::block
