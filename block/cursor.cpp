// The cursor of a block model, and the values of the block under it.
//
// Seven functions follow the cursor object, the match while one is in progress;
// the three that go to a place end the match and move the model's own cursor.
#include "api/guard.h"
#include "api/marshalling.h"
#include "api/name_text.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "block/handle.h"
#include "platform/zolBlockExport.h"

using zol::api::copy_text;
using zol::api::guarded;
using zol::api::guarded_late;
using zol::api::kPredicate;
using zol::api::kStatus;
using zol::api::kWide;
using zol::api::NameText;
using zol::api::store;
using zol::api::store_zeros;
using zol::block::cursor_object;
using zol::block::open_model_unmatched;
using zol::model::block::IModel;
using zol::model::block::Model;
using zol::model::block::Position;

int ZOL_BlockModel_FirstBlock(BlockModelHandle* handle) {
    return guarded(__func__, kStatus, cursor_object, handle, [](IModel& cursor) {
        // Success whether or not there is a block: only IsEof tells.
        cursor.FindFirst();
    });
}

int ZOL_BlockModel_NextBlock(BlockModelHandle* handle) {
    return guarded(__func__, kStatus, cursor_object, handle, [](IModel& cursor) {
        // Success also off the end: only IsEof tells.
        cursor.Next();
    });
}

int ZOL_BlockModel_IsEof(BlockModelHandle* handle) {
    return guarded_late(__func__, kPredicate, cursor_object, handle,
                        [](const IModel& cursor) { return cursor.IsEof(); });
}

long long ZOL_BlockModel_GetPosition(BlockModelHandle* handle) {
    return guarded(__func__, kWide, cursor_object, handle,
                   [](const IModel& cursor) { return cursor.GetPosition().value; });
}

int ZOL_BlockModel_GetNumber(BlockModelHandle* handle, const char* variable, double* number) {
    return guarded(__func__, kStatus, cursor_object, handle,
                   [&](const IModel& cursor) { *number = cursor.Get(NameText(variable).Get()); });
}

int ZOL_BlockModel_GetString(BlockModelHandle* handle, const char* variable, char* buffer) {
    return guarded(__func__, kStatus, cursor_object, handle, [&](const IModel& cursor) {
        copy_text(cursor.GetString(NameText(variable).Get()), buffer);
    });
}

int ZOL_BlockModel_GetBlockExtent(BlockModelHandle* handle, double* lower_x, double* lower_y,
                                  double* lower_z, double* upper_x, double* upper_y,
                                  double* upper_z) {
    return guarded(__func__, kStatus, cursor_object, handle, [&](const IModel& cursor) {
        // Behind the test, unlike the model's own extent: a null handle leaves them alone.
        store_zeros(lower_x, lower_y, lower_z, upper_x, upper_y, upper_z);
        store(cursor.GetBlockExtent().GetExtent(), lower_x, lower_y, lower_z, upper_x, upper_y,
              upper_z);
    });
}

int ZOL_BlockModel_SetPosition(BlockModelHandle* handle, const long long* position) {
    return guarded(__func__, kStatus, open_model_unmatched, handle, [&](Model& model) {
        // Success whatever the model says of the position: only IsEof tells.
        model.SetPosition(Position{*position});
    });
}

int ZOL_BlockModel_FindXyz(BlockModelHandle* handle, const double* x, const double* y,
                           const double* z) {
    return guarded_late(__func__, kStatus.Failing(-1), open_model_unmatched, handle,
                        [&](Model& model) { return model.FindXyz(*x, *y, *z) == 0 ? 0 : 1; });
}

int ZOL_BlockModel_FindWorldXyz(BlockModelHandle* handle, const double* x, const double* y,
                                const double* z) {
    // Passed on as it stands, not folded to 0 and 1 as its twin does.
    return guarded_late(__func__, kStatus.Failing(-1), open_model_unmatched, handle,
                        [&](Model& model) { return model.FindWorldXyz(*x, *y, *z); });
}
