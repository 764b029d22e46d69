// The two forms of STL behind read_stl.
#pragma once

#include <cstdint>

#include "engine/formats/file.h"
#include "engine/formats/mesh/mesh_data.h"

namespace zol::engine {

/// 80 bytes of header and the count of facets, which are `facets` of 50 bytes each.
inline constexpr std::uint64_t kStlHeaderSize = 84;
inline constexpr std::uint64_t kStlFacetSize = 50;

/// `facets` of them are in the file.
MeshData read_binary_stl(const File& file, std::uint64_t facets);
MeshData read_text_stl(const File& file);

}  // namespace zol::engine
