// Texts that lie in the plan.
#include "api/guard.h"
#include "api/marshalling.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "design/kinds.h"
#include "design/text_records.h"
#include "platform/zolDesignExport.h"

using zol::api::copy_text;
using zol::api::guarded;
using zol::api::kStatus;
using zol::design::ObjectText;
using zol::design::flat::copy_record;
using zol::design::flat::count_records;
using zol::design::flat::kText;
using zol::design::flat::store_point;

int ZOL_Object_Text_NRecords(ObjectHandle* handle) {
    return count_records(__func__, kText, handle);
}

int ZOL_Object_Text_GetRecord(ObjectHandle* handle, const int* index, char* buffer) {
    return copy_record(__func__, kText, handle, index, buffer);
}

int ZOL_Object_Text_GetOrigin(ObjectHandle* handle, double* x, double* y, double* z) {
    return store_point(__func__, kStatus, kText, handle, &ObjectText::GetOrigin, x, y, z);
}

int ZOL_Object_Text_GetAttributes(ObjectHandle* handle, char* style, char* alignment,
                                  double* height, double* rotation, double* width_factor,
                                  int* is_mirrored) {
    return guarded(__func__, kStatus, kText, handle, [&](const ObjectText& text) {
        copy_text(text.GetTextStringA(), style);
        copy_text(text.GetTextStringB(), alignment);
        *height = text.GetTextNumberA();
        *rotation = text.GetTextNumberB();
        *width_factor = text.GetTextNumberC();
        *is_mirrored = text.GetTextFlag() ? 1 : 0;
    });
}
