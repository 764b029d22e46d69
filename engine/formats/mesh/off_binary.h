// The binary form of OFF.
#pragma once

#include <cstdint>

#include "engine/formats/file.h"
#include "engine/formats/mesh/mesh_data.h"
#include "engine/formats/mesh/off_header.h"

namespace zol::engine {

/// Reads what stands from byte `offset` on, behind the line of the kind: whole numbers and
/// floats of 32 bits, highest byte first. Throws ReadError.
MeshData read_binary_off(const File& file, const OffKind& kind, std::uint64_t offset);

}  // namespace zol::engine
