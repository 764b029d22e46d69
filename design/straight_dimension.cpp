// Dimensions along a line: of a distance, and of a radius or a diameter.
#include "api/guard.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "design/dimension.h"
#include "design/kinds.h"
#include "platform/zolDesignExport.h"

using zol::api::Answers;
using zol::api::kStatus;
using zol::design::Object;
using zol::design::ObjectDimensionLine;
using zol::design::ObjectDimensionRadius;
using zol::design::flat::kDimensionLine;
using zol::design::flat::kDimensionRadius;
using zol::design::flat::Kind;
using zol::design::flat::store_dimension;
using zol::design::flat::store_dimension_text;
using zol::design::flat::store_point;

namespace {

// Unlike the other points, which fail with 1.
constexpr Answers<int> kDimensionNormal = kStatus.Failing(-1);

}  // namespace

int ZOL_Object_DimensionLine_GetAttributes(ObjectHandle* handle, char* style, double* measure,
                                           double* head, double* overshoot, double* offset,
                                           double* gap) {
    return store_dimension(__func__, kDimensionLine, handle, style, measure, head, overshoot,
                           offset, gap);
}

int ZOL_Object_DimensionLine_GetTextAttributes(ObjectHandle* handle, char* text, char* style,
                                               double* height, int* location) {
    return store_dimension_text(__func__, kDimensionLine, handle, text, style, height, location);
}

int ZOL_Object_DimensionLine_GetStart(ObjectHandle* handle, double* x, double* y, double* z) {
    return store_point(__func__, kStatus, kDimensionLine, handle, &ObjectDimensionLine::GetStart, x,
                       y, z);
}

int ZOL_Object_DimensionLine_GetEnd(ObjectHandle* handle, double* x, double* y, double* z) {
    return store_point(__func__, kStatus, kDimensionLine, handle, &ObjectDimensionLine::GetEnd, x,
                       y, z);
}

int ZOL_Object_DimensionLine_GetNormal(ObjectHandle* handle, double* x, double* y, double* z) {
    return store_point(__func__, kDimensionNormal, kDimensionLine, handle,
                       &ObjectDimensionLine::GetNormal, x, y, z);
}

int ZOL_Object_DimensionRadius_GetAttributes(ObjectHandle* handle, char* style, double* measure,
                                             double* head, double* overshoot, double* offset,
                                             double* gap) {
    return store_dimension(__func__, kDimensionRadius, handle, style, measure, head, overshoot,
                           offset, gap);
}

int ZOL_Object_DimensionRadius_GetTextAttributes(ObjectHandle* handle, char* text, char* style,
                                                 double* height, int* location) {
    // Lets line dimensions through and no radius dimension: the test is that of the other
    // kind, in the words of this one. Callers rely on the refusal.
    constexpr Kind<ObjectDimensionRadius> kLineAsRadius{
        &Object::IsDimensionLine, &Object::AsDimensionRadius, kDimensionRadius.refusal};
    return store_dimension_text(__func__, kLineAsRadius, handle, text, style, height, location);
}

int ZOL_Object_DimensionRadius_GetStart(ObjectHandle* handle, double* x, double* y, double* z) {
    return store_point(__func__, kStatus, kDimensionRadius, handle,
                       &ObjectDimensionRadius::GetStart, x, y, z);
}

int ZOL_Object_DimensionRadius_GetEnd(ObjectHandle* handle, double* x, double* y, double* z) {
    // Its failures name its twin of the line dimensions; callers have come to match them.
    return store_point(__func__, kStatus.SpeaksAs("ZOL_Object_DimensionLine_GetEnd"),
                       kDimensionRadius, handle, &ObjectDimensionRadius::GetEnd, x, y, z);
}

int ZOL_Object_DimensionRadius_GetNormal(ObjectHandle* handle, double* x, double* y, double* z) {
    return store_point(__func__, kDimensionNormal, kDimensionRadius, handle,
                       &ObjectDimensionRadius::GetNormal, x, y, z);
}
