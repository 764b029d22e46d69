// Opening, closing and testing a block model.
#include <memory>
#include <string>

#include "api/guard.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "block/handle.h"
#include "platform/zolBlockExport.h"

using zol::api::Call;
using zol::api::guarded;
using zol::api::kNewHandle;
using zol::api::kPredicate;
using zol::api::kStatus;
using zol::api::Outcome;
using zol::block::open_model;
using zol::model::block::Model;

BlockModelHandle* ZOL_BlockModel_Open(const char* file_name) {
    return guarded(__func__, kNewHandle<BlockModelHandle>,
                   [&](Call& call) -> Outcome<BlockModelHandle*> {
                       const std::string file(file_name);
                       auto model = std::make_unique<Model>(file, "r");
                       if (!model->IsOpen()) {
                           return call.Fail("error opening/loading " + file);
                       }
                       auto handle = std::make_unique<BlockModelHandle>();
                       handle->model = std::move(model);
                       return handle.release();
                   });
}

int ZOL_BlockModel_Close(BlockModelHandle* handle) {
    return guarded(__func__, kStatus, open_model, handle,
                   [&](Call& call, Model& model) -> Outcome<int> {
                       if (handle->match != nullptr) {
                           handle->match->Close();
                       }
                       if (model.Close() != 0) {
                           // The handle stays as it is, a closed match included: the caller
                           // may try again.
                           return call.Fail("error closing " + model.GetName());
                       }
                       handle->model.reset();
                       delete handle;
                       return 0;
                   });
}

int ZOL_BlockModel_IsOpen(BlockModelHandle* handle) {
    return guarded(__func__, kPredicate, [&](Call& call) -> Outcome<int> {
        // Even the look at the handle comes late: no handle is an answer, not a failure.
        call.Succeed();
        return handle != nullptr && handle->model != nullptr && handle->model->IsOpen();
    });
}
