// Block models from delimited text.
#pragma once

#include <memory>
#include <string>

#include "engine/block/source.h"
#include "engine/formats/file.h"

namespace zol::engine::block {

/// Opens a table of blocks with the sidecar beside it. `element` is the model's name
/// when the caller asked for one, else empty. Throws ReadError.
Source open_text(const std::shared_ptr<const File>& file, const std::string& element);

}  // namespace zol::engine::block
