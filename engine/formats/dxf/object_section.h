// Groups of objects, and the records that objects own.
#pragma once

#include "engine/formats/dxf/drawing_builder.h"
#include "engine/formats/dxf/tag_reader.h"

namespace zol::engine {

/// Reads from behind the name of the section OBJECTS to its end, and adds fields to the objects
/// that it speaks of. All entities must have been read.
void read_object_section(TagReader& tags, DrawingBuilder& builder);

}  // namespace zol::engine
