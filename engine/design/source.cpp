// Tells which reader a design is for.
#include "engine/design/source.h"

#include <array>
#include <utility>

#include "engine/design/drawing_source.h"
#include "engine/design/omf1_source.h"
#include "engine/formats/dxf/tag_reader.h"
#include "engine/formats/file.h"
#include "engine/formats/omf1_file.h"
#include "engine/formats/read_error.h"

namespace zol::engine::design {

std::unique_ptr<Source> open_source(const std::string& name) {
    auto file = std::make_shared<const File>(name);
    std::array<char, 4> head{};
    if (is_omf1({head.data(), file->ReadAt(0, head.data(), head.size())})) {
        return open_omf1(std::move(file));
    }
    if (is_dxf(*file)) return open_drawing(*file);
    throw ReadError("it is no design of a kind that is read here: DXF, OMF 1");
}

}  // namespace zol::engine::design
