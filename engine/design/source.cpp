// Tells which reader a design is for.
#include "engine/design/source.h"

#include "engine/design/drawing_source.h"
#include "engine/formats/dxf/tag_reader.h"
#include "engine/formats/file.h"
#include "engine/formats/read_error.h"

namespace zol::engine::design {

std::unique_ptr<Source> open_source(const std::string& name) {
    const File file(name);
    if (is_dxf(file)) return open_drawing(file);
    throw ReadError("it is no design of a kind that is read here: DXF");
}

}  // namespace zol::engine::design
