#include "tools/zol/last_error.h"

#include <array>

#include "api/zolExportedApi_ReadOnly.h"
#include "tools/zol/exit_codes.h"

namespace zol::tool {

void fail_by_last_error() {
    // One byte above what the interface fills.
    std::array<char, 256> text{};
    ZOL_API_GetError(text.data());
    throw ReadFailure(text.data());
}

}  // namespace zol::tool
