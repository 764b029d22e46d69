#pragma once

#include <string>

#include "api/zolExportedApi_ReadOnly.h"
#include "api/zolExportedApi_ReadOnly.hpp"

namespace zol::testing {

/// The pending error text, empty when there is none.
inline std::string pending_error() {
    char buffer[255];
    ZOL_API_GetError(buffer);
    return buffer;
}

/// Leaves an error pending, whatever is initialised or open.
inline void make_error_pending() {
    ZOL_API_SetErrorMessage("pending");
}

}  // namespace zol::testing
