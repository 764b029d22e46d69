// The tables of a drawing: layers, line types, text styles, dimension styles.
#pragma once

#include "engine/formats/dxf/drawing_builder.h"
#include "engine/formats/dxf/tag_reader.h"

namespace zol::engine {

/// Reads from behind the name of the section HEADER to its end.
void read_header(TagReader& tags, DrawingBuilder& builder);

/// The same for TABLES.
void read_tables(TagReader& tags, Entity& row, DrawingBuilder& builder);

}  // namespace zol::engine
