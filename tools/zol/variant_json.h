// A value as JSON: docs/tool.md tells what becomes of each kind.
#pragma once

#include "support/variant.h"
#include "tools/zol/output.h"

namespace zol::tool {

void write_variant_json(const MVariant& value, Output& output);

}  // namespace zol::tool
