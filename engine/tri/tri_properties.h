// What stands behind the look of a triangulation.
#pragma once

#include <memory>

#include "engine/formats/mesh/mesh_data.h"
#include "platform/zolTriangulationExport.h"

namespace zol::engine::tri {

/// Mid grey, opaque and without a texture where the look says nothing.
model::tri::TriProperties make_properties(const MeshLook& look);

}  // namespace zol::engine::tri
