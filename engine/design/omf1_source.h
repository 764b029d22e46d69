// Layers from the line sets and point sets of OMF 1 files.
#pragma once

#include <memory>

#include "engine/design/source.h"
#include "engine/formats/file.h"

namespace zol::engine::design {

/// Opens a file with one such element at least. Of the arrays only colours are read; the others
/// when a layer is opened. Throws ReadError.
std::unique_ptr<Source> open_omf1(std::shared_ptr<const File> file);

}  // namespace zol::engine::design
