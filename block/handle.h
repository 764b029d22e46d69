// The handle of an open block model, and the tests that its functions put it to.
//
// Each test gives the object that the function works on, or reports its failure
// and gives null; the guard runs it behind the initialised test.
#pragma once

#include <memory>
#include <string_view>

#include "api/guard.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "platform/zolBlockExport.h"

struct BlockModelHandle {
    std::unique_ptr<zol::model::block::Model> model;
    /// The match in progress, or null. It belongs to the model.
    zol::model::block::Match* match = nullptr;
};

namespace zol::block {

inline constexpr std::string_view kNoModel = "no model currently open.";
inline constexpr std::string_view kNoModelOrMatch = "no model currently open or blocks matched.";
inline constexpr std::string_view kNoMatch = "no blocks currently matched.";
inline constexpr std::string_view kInvalidIndex = "Invalid index.";

inline model::block::Model* open_model(api::Call& call, BlockModelHandle* handle) {
    if (handle == nullptr || handle->model == nullptr) {
        call.Fail(kNoModel);
        return nullptr;
    }
    return handle->model.get();
}

/// The model as its own cursor object again: a match in progress is closed and
/// forgotten.
inline model::block::Model* open_model_unmatched(api::Call& call, BlockModelHandle* handle) {
    model::block::Model* const model = open_model(call, handle);
    if (model != nullptr && handle->match != nullptr) {
        handle->match->Close();
        handle->match = nullptr;
    }
    return model;
}

/// The cursor object: the match while one is in progress, else the model.
inline model::block::IModel* cursor_object(api::Call& call, BlockModelHandle* handle) {
    if (handle == nullptr || (handle->model == nullptr && handle->match == nullptr)) {
        call.Fail(kNoModelOrMatch);
        return nullptr;
    }
    if (handle->match != nullptr) {
        return handle->match;
    }
    return handle->model.get();
}

}  // namespace zol::block
