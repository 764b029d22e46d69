// The command `zol variant`. It writes its answer to `output`, which the caller flushes,
// or to the file asked for, and gives the exit code; what keeps it from an answer is thrown
// as one of the errors of exit_codes.h.
#pragma once

#include <optional>
#include <string>

#include "tools/zol/output.h"

namespace zol::tool {

enum class VariantForm { kText, kJson, kSealed };

struct VariantRequest {
    std::string file;
    /// None asks for the text form with a remark on what the file is.
    std::optional<VariantForm> form;
    /// Standard output when there is none.
    std::optional<std::string> out;
};

int run_variant(const VariantRequest& request, Output& output);

}  // namespace zol::tool
