// What the metadata of an object answer from.
#pragma once

#include <string>
#include <vector>

#include "engine/formats/drawing_shapes.h"
#include "platform/zolDesignViews.h"

namespace zol::design {

struct Metadata::State {
    State() = default;
    explicit State(std::vector<engine::DrawingField> all) : fields(std::move(all)) {}

    std::vector<engine::DrawingField> fields;
};

}  // namespace zol::design
