// Arrows.
//
// The family falls into two halves. Its points fail with -1 and say "Object not arrow."; the
// rest fails with 1 and says "Object not 3D text.", though nothing here has to do with text.
// Callers know both so.
#include "api/guard.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "design/kinds.h"
#include "platform/zolDesignExport.h"

using zol::api::Answers;
using zol::api::FunctionId;
using zol::api::guarded;
using zol::api::kStatus;
using zol::design::ObjectArrow;
using zol::design::flat::k3DText;
using zol::design::flat::kArrow;
using zol::design::flat::store_point;

namespace {

constexpr Answers<int> kArrowPoint = kStatus.Failing(-1);
constexpr auto kArrowAsIfText = kArrow.Refusing(k3DText.refusal);

int store_head(FunctionId function, ObjectHandle* handle, double (ObjectArrow::*get_length)() const,
               double (ObjectArrow::*get_width)() const, double* length, double* width) {
    return guarded(function, kStatus, kArrowAsIfText, handle, [&](const ObjectArrow& arrow) {
        *length = (arrow.*get_length)();
        *width = (arrow.*get_width)();
    });
}

}  // namespace

int ZOL_Object_Arrow_GetStart(ObjectHandle* handle, double* x, double* y, double* z) {
    return store_point(__func__, kArrowPoint, kArrow, handle, &ObjectArrow::GetStart, x, y, z);
}

int ZOL_Object_Arrow_GetEnd(ObjectHandle* handle, double* x, double* y, double* z) {
    return store_point(__func__, kArrowPoint, kArrow, handle, &ObjectArrow::GetEnd, x, y, z);
}

int ZOL_Object_Arrow_GetNormal(ObjectHandle* handle, double* x, double* y, double* z) {
    return store_point(__func__, kArrowPoint, kArrow, handle, &ObjectArrow::GetNormal, x, y, z);
}

int ZOL_Object_Arrow_GetHeadInfo(ObjectHandle* handle, double* length, double* width) {
    return store_head(__func__, handle, &ObjectArrow::GetHeadFirst, &ObjectArrow::GetHeadSecond,
                      length, width);
}

int ZOL_Object_Arrow_GetScaledHeadInfo(ObjectHandle* handle, double* length, double* width) {
    return store_head(__func__, handle, &ObjectArrow::GetScaledHeadFirst,
                      &ObjectArrow::GetScaledHeadSecond, length, width);
}

int ZOL_Object_Arrow_GetRelativeHeadInfo(ObjectHandle* handle, double* length, double* width) {
    return store_head(__func__, handle, &ObjectArrow::GetRelativeHeadFirst,
                      &ObjectArrow::GetRelativeHeadSecond, length, width);
}

int ZOL_Object_Arrow_GetAttributes(ObjectHandle* handle, int* has_head, int* is_curved, int* at_end,
                                   int* hook) {
    return guarded(__func__, kStatus, kArrowAsIfText, handle, [&](const ObjectArrow& arrow) {
        *has_head = arrow.GetArrowFlagA() ? 1 : 0;
        *is_curved = arrow.GetArrowFlagB() ? 1 : 0;
        *at_end = arrow.GetArrowCodeA();
        *hook = arrow.GetArrowCodeB();
    });
}
