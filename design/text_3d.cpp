// Texts with a place and a direction in space.
#include "api/guard.h"
#include "api/marshalling.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "design/kinds.h"
#include "design/text_records.h"
#include "platform/zolDesignExport.h"

using zol::api::copy_text;
using zol::api::guarded;
using zol::api::kStatus;
using zol::design::Object3DText;
using zol::design::flat::copy_record;
using zol::design::flat::count_records;
using zol::design::flat::k3DText;
using zol::design::flat::store_point;

int ZOL_Object_3DText_NRecords(ObjectHandle* handle) {
    return count_records(__func__, k3DText, handle);
}

int ZOL_Object_3DText_GetRecord(ObjectHandle* handle, const int* index, char* buffer) {
    return copy_record(__func__, k3DText, handle, index, buffer);
}

int ZOL_Object_3DText_GetOrigin(ObjectHandle* handle, double* x, double* y, double* z) {
    return store_point(__func__, kStatus, k3DText, handle, &Object3DText::GetOrigin, x, y, z);
}

int ZOL_Object_3DText_GetDirection(ObjectHandle* handle, double* x, double* y, double* z) {
    return store_point(__func__, kStatus, k3DText, handle, &Object3DText::GetDirection, x, y, z);
}

int ZOL_Object_3DText_GetNormal(ObjectHandle* handle, double* x, double* y, double* z) {
    return store_point(__func__, kStatus, k3DText, handle, &Object3DText::GetNormal, x, y, z);
}

int ZOL_Object_3DText_GetOriginPosition(ObjectHandle* handle, int* across, int* up) {
    // One less than the text itself counts.
    return guarded(__func__, kStatus, k3DText, handle, [&](const Object3DText& text) {
        *across = text.GetOriginPositionFirst() - 1;
        *up = text.GetOriginPositionSecond() - 1;
    });
}

int ZOL_Object_3DText_GetAttributes(ObjectHandle* handle, char* style, char* font, double* height,
                                    double* width_factor, int* is_mirrored) {
    return guarded(__func__, kStatus, k3DText, handle, [&](const Object3DText& text) {
        copy_text(text.Get3DTextStringA(), style);
        copy_text(text.Get3DTextStringB(), font);
        *height = text.Get3DTextNumberA();
        *width_factor = text.Get3DTextNumberB();
        *is_mirrored = text.Get3DTextFlag() ? 1 : 0;
    });
}
