// Narrowing a block model to the blocks that match triangulations and an extent.
//
// The handle's match is the model's own object: a setting puts it there, and from then on
// the functions of the cursor follow it, with no other word spoken.
#include "api/guard.h"
#include "api/marshalling.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "block/handle.h"
#include "platform/zolBlockExport.h"

using zol::api::Call;
using zol::api::guarded;
using zol::api::guarded_late;
using zol::api::kReal;
using zol::api::kStatus;
using zol::api::store;
using zol::api::store_zeros;
using zol::block::cursor_object;
using zol::block::kNoMatch;
using zol::geometry::Extent;
using zol::model::block::Match;

namespace {

/// The match to set something of, begun if there is none. Fails as the cursor does.
Match* match_to_set(Call& call, BlockModelHandle* handle) {
    if (cursor_object(call, handle) == nullptr) {
        return nullptr;
    }
    if (handle->match == nullptr) {
        handle->match = &handle->model->GetMatch();
    }
    return handle->match;
}

/// The match in progress.
Match* running_match(Call& call, BlockModelHandle* handle) {
    if (handle == nullptr || handle->match == nullptr) {
        call.Fail(kNoMatch);
        return nullptr;
    }
    return handle->match;
}

}  // namespace

int ZOL_BlockModel_AddMatchTriangulation(BlockModelHandle* handle, const char* file_name) {
    return guarded(__func__, kStatus, match_to_set, handle,
                   [&](Match& match) { match.AddTriangulation(file_name); });
}

int ZOL_BlockModel_SetMatchExtent(BlockModelHandle* handle, const double* lower_x,
                                  const double* lower_y, const double* lower_z,
                                  const double* upper_x, const double* upper_y,
                                  const double* upper_z) {
    return guarded(__func__, kStatus, match_to_set, handle, [&](Match& match) {
        match.SetExtent(Extent(*lower_x, *lower_y, *lower_z, *upper_x, *upper_y, *upper_z));
    });
}

int ZOL_BlockModel_SetUseExactVolume(BlockModelHandle* handle, const int* exact) {
    return guarded(__func__, kStatus, match_to_set, handle, [&](Match& match) {
        // 1 alone is on: any other value, 2 and -1 too, is off.
        match.SetUseExactVolume(*exact == 1);
    });
}

int ZOL_BlockModel_ClearMatch(BlockModelHandle* handle) {
    return guarded(__func__, kStatus, running_match, handle, [&](Match& match) {
        match.Close();
        handle->match = nullptr;
    });
}

int ZOL_BlockModel_GetBlockMatchExtent(BlockModelHandle* handle, double* lower_x, double* lower_y,
                                       double* lower_z, double* upper_x, double* upper_y,
                                       double* upper_z) {
    return guarded(__func__, kStatus, running_match, handle, [&](const Match& match) {
        // Behind the test: without a match they stay as they are.
        store_zeros(lower_x, lower_y, lower_z, upper_x, upper_y, upper_z);
        store(match.GetMatchExtent().GetExtent(), lower_x, lower_y, lower_z, upper_x, upper_y,
              upper_z);
    });
}

double ZOL_BlockModel_GetBlockMatchVolume(BlockModelHandle* handle) {
    return guarded_late(__func__, kReal, running_match, handle,
                        [](const Match& match) { return match.GetMatchVolume(); });
}
