// Opening, closing and testing a triangulation.
#include <memory>
#include <string>
#include <utility>

#include "api/guard.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "platform/zolTriangulationExport.h"
#include "tri/handle.h"

using zol::api::Call;
using zol::api::guarded;
using zol::api::kNewHandle;
using zol::api::kPredicate;
using zol::api::kStatus;
using zol::api::Outcome;
using zol::model::tri::Triangulation;
using zol::tri::open_triangulation;

TriangulationHandle* ZOL_Triangulation_Open(const char* file_name) {
    return guarded(__func__, kNewHandle<TriangulationHandle>,
                   [&](Call& call) -> Outcome<TriangulationHandle*> {
                       const std::string file(file_name);
                       auto triangulation = std::make_unique<Triangulation>(file);
                       // One that holds no points is taken for one that can't be read.
                       if (triangulation->NumPoints() == 0) {
                           return call.Fail("error opening/loading " + file);
                       }
                       auto handle = std::make_unique<TriangulationHandle>();
                       handle->triangulation = std::move(triangulation);
                       return handle.release();
                   });
}

int ZOL_Triangulation_Close(TriangulationHandle* handle) {
    return guarded(__func__, kStatus, open_triangulation, handle, [&](Triangulation&) {
        handle->triangulation.reset();
        delete handle;
    });
}

int ZOL_Triangulation_IsValid(TriangulationHandle* handle) {
    return guarded(__func__, kPredicate, open_triangulation, handle,
                   [](Call& call, const Triangulation& triangulation) -> Outcome<int> {
                       // Without points it is a failure: this predicate never answers 0.
                       if (triangulation.NumPoints() == 0) {
                           return call.Fail("Triangulation contains zero points.");
                       }
                       return 1;
                   });
}
