// Marks the classes that a library underneath shares with its callers;
// everything else of such a library stays hidden.
#pragma once

#if defined(_WIN32)
#define ZOL_PLATFORM
#else
#define ZOL_PLATFORM __attribute__((visibility("default")))
#endif
