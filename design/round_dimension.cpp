// Dimensions along an arc: of its length, and of an angle.
#include "api/guard.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "design/dimension.h"
#include "design/kinds.h"
#include "platform/zolDesignExport.h"

using zol::api::kStatus;
using zol::design::ObjectDimensionAngle;
using zol::design::ObjectDimensionArc;
using zol::design::flat::kDimensionAngle;
using zol::design::flat::kDimensionArc;
using zol::design::flat::store_dimension;
using zol::design::flat::store_dimension_text;
using zol::design::flat::store_point;

int ZOL_Object_DimensionArc_GetAttributes(ObjectHandle* handle, char* style, double* measure,
                                          double* head, double* overshoot, double* offset,
                                          double* gap) {
    return store_dimension(__func__, kDimensionArc, handle, style, measure, head, overshoot, offset,
                           gap);
}

int ZOL_Object_DimensionArc_GetTextAttributes(ObjectHandle* handle, char* text, char* style,
                                              double* height, int* location) {
    return store_dimension_text(__func__, kDimensionArc, handle, text, style, height, location);
}

int ZOL_Object_DimensionArc_GetOrigin(ObjectHandle* handle, double* x, double* y, double* z) {
    return store_point(__func__, kStatus, kDimensionArc, handle, &ObjectDimensionArc::GetOrigin, x,
                       y, z);
}

int ZOL_Object_DimensionArc_GetRadius(ObjectHandle* handle, double* x, double* y, double* z) {
    return store_point(__func__, kStatus, kDimensionArc, handle, &ObjectDimensionArc::GetRadius, x,
                       y, z);
}

int ZOL_Object_DimensionArc_GetSweep(ObjectHandle* handle, double* x, double* y, double* z) {
    return store_point(__func__, kStatus, kDimensionArc, handle, &ObjectDimensionArc::GetSweep, x,
                       y, z);
}

int ZOL_Object_DimensionAngle_GetAttributes(ObjectHandle* handle, char* style, double* measure,
                                            double* head, double* overshoot, double* offset,
                                            double* gap) {
    return store_dimension(__func__, kDimensionAngle, handle, style, measure, head, overshoot,
                           offset, gap);
}

int ZOL_Object_DimensionAngle_GetTextAttributes(ObjectHandle* handle, char* text, char* style,
                                                double* height, int* location) {
    return store_dimension_text(__func__, kDimensionAngle, handle, text, style, height, location);
}

int ZOL_Object_DimensionAngle_GetOrigin(ObjectHandle* handle, double* x, double* y, double* z) {
    return store_point(__func__, kStatus, kDimensionAngle, handle, &ObjectDimensionAngle::GetOrigin,
                       x, y, z);
}

int ZOL_Object_DimensionAngle_GetRadius(ObjectHandle* handle, double* x, double* y, double* z) {
    return store_point(__func__, kStatus, kDimensionAngle, handle, &ObjectDimensionAngle::GetRadius,
                       x, y, z);
}

int ZOL_Object_DimensionAngle_GetSweep(ObjectHandle* handle, double* x, double* y, double* z) {
    return store_point(__func__, kStatus, kDimensionAngle, handle, &ObjectDimensionAngle::GetSweep,
                       x, y, z);
}
