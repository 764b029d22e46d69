// The clock of the call log, read from a script.
#pragma once

#include <cstdint>
#include <deque>

namespace zol::doubles {

/// Answers of the next readings, first one first; an empty list reads 0.
extern std::deque<std::uint32_t> ticks;
extern int tick_readings;

}  // namespace zol::doubles
