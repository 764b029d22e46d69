// Layers and objects of a drawing in DXF.
#pragma once

#include <memory>

#include "engine/design/source.h"
#include "engine/formats/file.h"

namespace zol::engine::design {

/// Reads the whole drawing. Throws ReadError.
std::unique_ptr<Source> open_drawing(const File& file);

}  // namespace zol::engine::design
