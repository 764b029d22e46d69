// Counts the allocations of a test program, the sources under test included.
#pragma once

#include <cstddef>

namespace zol::testing {

/// How often operator new has been called since the program began.
std::size_t allocations();

}  // namespace zol::testing
