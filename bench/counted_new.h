// Counts the allocations of a whole process, its shared libraries included.
#pragma once

#include <cstdint>

/// How often operator new has been called since the process began.
std::int64_t allocations();
