// The two functions of the library with C++ linkage, for programs that share its
// string type. Everything else is in the C header.
#ifndef ZOL_EXPORTED_API_READ_ONLY_HPP
#define ZOL_EXPORTED_API_READ_ONLY_HPP

#include <string>

#include "zolExportedApi_ReadOnly.h"

/**
 * Initialises the library, as ZOL_API_Init does.
 * Results:
 *   0   always
 */
ZOL_EXPORTED int ZOL_API_InitBlockApi();

/**
 * Replaces the pending error text. An empty text leaves no error pending.
 * message   in, of any length. Borrowed for this call.
 */
ZOL_EXPORTED void ZOL_API_SetErrorMessage(const std::string& message);

#endif
