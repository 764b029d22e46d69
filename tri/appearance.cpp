// How a triangulation looks.
//
// Each function asks a copy of the properties and lets go of it behind the success
// exit; the properties of the triangulation itself are only copied from.
#include <cstdint>

#include "api/guard.h"
#include "api/marshalling.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "platform/zolTriangulationExport.h"
#include "tri/handle.h"

using zol::api::Answers;
using zol::api::Call;
using zol::api::copy_text;
using zol::api::FunctionId;
using zol::api::guarded;
using zol::api::kPredicate;
using zol::api::kReal;
using zol::api::kStatus;
using zol::api::Outcome;
using zol::model::tri::Triangulation;
using zol::model::tri::TriProperties;
using zol::tri::open_triangulation;

namespace {

TriProperties copied_properties(const Triangulation& triangulation) {
    return triangulation.GetProperties();
}

template <class R, class Ask>
R ask_properties(FunctionId function, const Answers<R>& answers, TriangulationHandle* handle,
                 Ask ask) {
    return guarded(function, answers, open_triangulation, handle,
                   [&](Call& call, const Triangulation& triangulation) -> Outcome<R> {
                       const TriProperties properties = copied_properties(triangulation);
                       const R result = ask(properties);
                       call.Succeed();
                       return result;
                   });
}

}  // namespace

int ZOL_Triangulation_GetColour(TriangulationHandle* handle, int* red, int* green, int* blue) {
    return guarded(__func__, kStatus, open_triangulation, handle,
                   [&](Call& call, const Triangulation& triangulation) -> Outcome<int> {
                       // Zeros first: callers see them when the copy below throws.
                       *red = *green = *blue = 0;
                       const TriProperties properties = copied_properties(triangulation);
                       zol::api::store(properties.GetColour(), red, green, blue);
                       call.Succeed();
                       return 0;
                   });
}

int ZOL_Triangulation_IsTranslucent(TriangulationHandle* handle) {
    return ask_properties(__func__, kPredicate, handle, [](const TriProperties& properties) {
        return static_cast<int>(properties.IsTranslucent());
    });
}

double ZOL_Triangulation_GetTranslucency(TriangulationHandle* handle) {
    return ask_properties(__func__, kReal, handle, [](const TriProperties& properties) {
        return static_cast<double>(properties.GetTranslucency());
    });
}

int ZOL_Triangulation_IsTextured(TriangulationHandle* handle) {
    return ask_properties(__func__, kPredicate, handle, [](const TriProperties& properties) {
        return static_cast<int>(properties.IsTextured());
    });
}

int ZOL_Triangulation_GetTexture(TriangulationHandle* handle, char* buffer) {
    return ask_properties(__func__, kStatus, handle, [&](const TriProperties& properties) {
        // Copied whether there is a texture or not.
        copy_text(properties.GetTexture(), buffer);
        return 0;
    });
}
