// The clock of the call log. A library of its own, so that a test links another.
#pragma once

#include <cstdint>

namespace zol::api {

/// Milliseconds of a steady clock, cut to 32 bits: differences are right modulo
/// 2 to the 32nd, also across the wrap.
std::uint32_t tick_milliseconds();

}  // namespace zol::api
