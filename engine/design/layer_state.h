// How a layer gets its state from its reader.
#pragma once

#include <memory>
#include <string>

#include "engine/design/source.h"
#include "platform/zolDesignExport.h"

namespace zol::engine::design {

/// Makes `layer` the one that the reader reads. Objects are counted here, so that the layer
/// never has to say later that it can't: throws ReadError. `file` is named in diagnostics.
void fill(zol::design::Layer& layer, std::unique_ptr<LayerSource> source, std::string file);

}  // namespace zol::engine::design
