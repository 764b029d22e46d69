// The handle of an open triangulation, and the test that its functions put it to.
#pragma once

#include <memory>

#include "api/guard.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "platform/zolTriangulationExport.h"

struct TriangulationHandle {
    std::unique_ptr<zol::model::tri::Triangulation> triangulation;
};

namespace zol::tri {

/// Gives the triangulation, or reports the failure and gives null; the guard runs it
/// behind the initialised test.
inline model::tri::Triangulation* open_triangulation(api::Call& call, TriangulationHandle* handle) {
    if (handle == nullptr || handle->triangulation == nullptr) {
        call.Fail("Triangulation not defined.");
        return nullptr;
    }
    return handle->triangulation.get();
}

}  // namespace zol::tri
