// Opening the file that a person named, and telling the person what to do when
// it doesn't open.
#pragma once

#include <memory>
#include <string>

#include "tools/zol/block_model.h"
#include "tools/zol/grid.h"
#include "tools/zol/mesh.h"

namespace zol::tool {

/// Has the library tell on standard error why a file doesn't open, unless the
/// environment says already where it shall tell. Call before the first opening.
void turn_diagnostics_on();

/// Throw ReadFailure with what a person can do about it.
std::unique_ptr<BlockModel> open_model(const std::string& file);
std::unique_ptr<Grid> open_grid(const std::string& file);
std::unique_ptr<Mesh> open_mesh(const std::string& file);

}  // namespace zol::tool
