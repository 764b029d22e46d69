// Reads drawings in DXF, text and binary, of releases 12 to 2018.
#pragma once

#include "engine/formats/dxf/drawing.h"
#include "engine/formats/file.h"

namespace zol::engine {

/// Reads a whole drawing, in one pass; is_dxf in tag_reader.h tells one by its first bytes.
/// Entities that are no objects here are counted in Drawing::Skipped and reported, not refused.
/// Throws ReadError with line or byte for a file that is cut, a group code that is none, a
/// number that is none or is beyond 1e100, and one that has no section of entities.
Drawing read_dxf(const File& file);

}  // namespace zol::engine
