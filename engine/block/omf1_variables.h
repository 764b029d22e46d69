// The variables of an OMF 1 volume.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "engine/block/variable.h"
#include "engine/formats/file.h"
#include "engine/formats/json.h"
#include "engine/formats/omf1_file.h"

namespace zol::engine::block {

/// Variables from the data on the cells of an element, in the order of its list; data
/// elsewhere are reported and left out. Throws ReadError.
std::vector<Variable> read_omf1_variables(std::shared_ptr<const File> file,
                                          const Omf1Document& document, const JsonValue& element,
                                          std::int64_t n_blocks);

}  // namespace zol::engine::block
