// The mesh of a triangulation, and what can be asked of its shape.
#include "api/guard.h"
#include "api/index.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "platform/zolGeometryExport.h"
#include "platform/zolTriangulationExport.h"
#include "tri/handle.h"

using zol::api::Call;
using zol::api::guarded;
using zol::api::guarded_late;
using zol::api::is_index;
using zol::api::kCount;
using zol::api::kPredicate;
using zol::api::kStatus;
using zol::api::Outcome;
using zol::geometry::Point3D;
using zol::model::tri::Triangulation;
using zol::model::tri::TriIndex;
using zol::tri::open_triangulation;

int ZOL_Triangulation_NumPoints(TriangulationHandle* handle) {
    return guarded_late(__func__, kCount, open_triangulation, handle,
                        [](const Triangulation& mesh) { return mesh.NumPoints(); });
}

int ZOL_Triangulation_GetPoint(TriangulationHandle* handle, const int* index, double* x, double* y,
                               double* z) {
    return guarded(__func__, kStatus, open_triangulation, handle,
                   [&](Call& call, const Triangulation& mesh) -> Outcome<int> {
                       if (!is_index(*index, mesh.NumPoints())) {
                           return call.Fail("Invalid point index.");
                       }
                       Point3D point;
                       mesh.GetPoint(*index, point.x, point.y, point.z);
                       *x = point.x;
                       *y = point.y;
                       *z = point.z;
                       return 0;
                   });
}

int ZOL_Triangulation_NumTriangles(TriangulationHandle* handle) {
    return guarded_late(__func__, kCount, open_triangulation, handle,
                        [](const Triangulation& mesh) { return mesh.NumTriangles(); });
}

int ZOL_Triangulation_GetTriangle(TriangulationHandle* handle, const int* index, int* first,
                                  int* second, int* third) {
    return guarded(__func__, kStatus, open_triangulation, handle,
                   [&](Call& call, const Triangulation& mesh) -> Outcome<int> {
                       if (!is_index(*index, mesh.NumTriangles())) {
                           // Worded unlike the one for points; callers know it so.
                           return call.Fail("triangle index invalid");
                       }
                       TriIndex triangle;
                       mesh.GetTriangle(*index, triangle);
                       *first = triangle.first;
                       *second = triangle.second;
                       *third = triangle.third;
                       return 0;
                   });
}

int ZOL_Triangulation_GetVolume(TriangulationHandle* handle, double* volume) {
    return guarded(__func__, kStatus, open_triangulation, handle,
                   [&](const Triangulation& mesh) { *volume = mesh.GetVolume(); });
}

int ZOL_Triangulation_IsSolid(TriangulationHandle* handle) {
    return guarded(__func__, kPredicate, open_triangulation, handle,
                   [](const Triangulation& mesh) { return mesh.IsSolid(); });
}

int ZOL_Triangulation_IsSurface(TriangulationHandle* handle) {
    return guarded(__func__, kPredicate, open_triangulation, handle,
                   [](const Triangulation& mesh) { return mesh.IsSurface(); });
}

int ZOL_Triangulation_IsCrossing(TriangulationHandle* handle) {
    return guarded(__func__, kPredicate, open_triangulation, handle,
                   [](const Triangulation& mesh) { return mesh.IsCrossing(); });
}

int ZOL_Triangulation_IsConsistent(TriangulationHandle* handle) {
    return guarded(__func__, kPredicate, open_triangulation, handle,
                   [](const Triangulation& mesh) { return mesh.IsConsistent(); });
}

int ZOL_Triangulation_IsPointInside(TriangulationHandle* handle, const double* x, const double* y,
                                    const double* z) {
    return guarded(__func__, kPredicate, open_triangulation, handle,
                   [&](const Triangulation& mesh) {
                       return mesh.IsPointInside(Point3D{*x, *y, *z});
                   });
}

int ZOL_Triangulation_IsPointOn(TriangulationHandle* handle, const double* x, const double* y,
                                const double* z, const double* tolerance) {
    return guarded(__func__, kPredicate, open_triangulation, handle,
                   [&](const Triangulation& mesh) {
                       return mesh.IsPointOn(Point3D{*x, *y, *z}, *tolerance);
                   });
}
