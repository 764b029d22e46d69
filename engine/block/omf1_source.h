// Block models from the volumes of OMF 1 files.
#pragma once

#include <memory>
#include <string>

#include "engine/block/source.h"
#include "engine/formats/file.h"

namespace zol::engine::block {

/// Opens the first volume of a file, or the first of the name when `element_name` is
/// not empty. A sidecar beside the file ("mine.omf.json") may state the order of
/// cells. Throws ReadError; the error for a name that is no volume lists the
/// elements that exist.
Source open_omf1(const std::shared_ptr<const File>& file, const std::string& element_name);

}  // namespace zol::engine::block
