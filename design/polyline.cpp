// Polylines: their points, and how they are drawn.
#include <string>

#include "api/guard.h"
#include "api/index.h"
#include "api/marshalling.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "design/handles.h"
#include "design/kinds.h"
#include "platform/zolDesignExport.h"

using zol::api::Call;
using zol::api::copy_text;
using zol::api::guarded;
using zol::api::guarded_late;
using zol::api::is_index;
using zol::api::kCount;
using zol::api::kStatus;
using zol::api::Outcome;
using zol::design::ObjectPolyline;
using zol::design::Point;
using zol::design::flat::kInvalidIndex;
using zol::design::flat::kPolyline;

int ZOL_Object_Polyline_NPoints(ObjectHandle* handle) {
    // A count that fails with 1: only ZOL_API_HasError tells that from a single point.
    return guarded_late(__func__, kCount.Failing(1), kPolyline, handle,
                        [](const ObjectPolyline& polyline) { return polyline.NPoints(); });
}

int ZOL_Object_Polyline_GetLineType(ObjectHandle* handle, int* line_type) {
    return guarded(__func__, kStatus, kPolyline, handle, [&](const ObjectPolyline& polyline) {
        *line_type = polyline.GetLineType().value;
    });
}

int ZOL_Object_Polyline_GetAttributes(ObjectHandle* handle, int* line_type, int* line_weight,
                                      int* is_closed, int* has_curves) {
    return guarded(__func__, kStatus, kPolyline, handle, [&](const ObjectPolyline& polyline) {
        constexpr int kWhole = 0;
        *line_type = polyline.GetLineType().value;
        *line_weight = polyline.GetLineCode().value;
        *is_closed = polyline.GetPolylineFlagA() ? 1 : 0;
        *has_curves = polyline.GetPolylineFlagB(kWhole) ? 1 : 0;
    });
}

int ZOL_Object_Polyline_GetPointInfo(ObjectHandle* handle, const int* index, double* x, double* y,
                                     double* z, double* w, int* t, char* name) {
    return guarded(__func__, kStatus, kPolyline, handle,
                   [&](Call& call, const ObjectPolyline& polyline) -> Outcome<int> {
                       if (!is_index(*index, polyline.NPoints())) {
                           return call.Fail(kInvalidIndex);
                       }
                       const Point point = polyline.GetPoint(*index);
                       std::string text;
                       point.GetXyzwtn(x, y, z, w, t, &text);
                       copy_text(text, name);
                       // Point and text are let go of behind the success exit.
                       call.Succeed();
                       return 0;
                   });
}

int ZOL_Object_Polyline_GetPointType(ObjectHandle* handle, const int* index, int* type) {
    return guarded(__func__, kStatus, kPolyline, handle,
                   [&](Call& call, const ObjectPolyline& polyline) -> Outcome<int> {
                       const int point = *index;
                       if (!is_index(point, polyline.NPoints())) {
                           return call.Fail(kInvalidIndex);
                       }
                       // A point may be of both kinds: 2 goes before 1.
                       if (polyline.IsPointKindTwo(point)) {
                           *type = 2;
                       } else {
                           *type = polyline.IsPointKindOne(point) ? 1 : 0;
                       }
                       return 0;
                   });
}
