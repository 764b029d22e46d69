// The kinds of objects, and the functions that are alike for all of them.
#pragma once

#include <string_view>

#include "api/guard.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "design/handles.h"
#include "platform/zolDesignExport.h"

namespace zol::design::flat {

/// A kind of object as the guard's test of a handle: it gives the object's view, which is
/// not asked for before the object has said that it is of the kind.
template <class View>
struct Kind {
    /// The same kind, refused in other words.
    constexpr Kind Refusing(std::string_view words) const { return {is, as, words}; }

    // Inlined as the guard is: each step of a walk along a polyline goes through here.
    [[gnu::always_inline]] inline View* operator()(api::Call& call, ObjectHandle* handle) const {
        Object* const object = open_object(call, handle);
        if (object == nullptr) {
            return nullptr;
        }
        if (!(object->*is)()) {
            call.Fail(refusal);
            return nullptr;
        }
        return &(object->*as)();
    }

    bool (Object::*is)() const;
    View& (Object::*as)();
    /// What is said of an object of another kind.
    std::string_view refusal;
};

inline constexpr Kind<ObjectPolyline> kPolyline{&Object::IsPolyline, &Object::AsPolyline,
                                                "Object not a polyline."};
inline constexpr Kind<ObjectText> kText{&Object::IsText, &Object::AsText, "Object not text."};
inline constexpr Kind<Object3DText> k3DText{&Object::Is3DText, &Object::As3DText,
                                            "Object not 3D text."};
inline constexpr Kind<ObjectArrow> kArrow{&Object::IsArrow, &Object::AsArrow, "Object not arrow."};
inline constexpr Kind<ObjectDimensionLine> kDimensionLine{
    &Object::IsDimensionLine, &Object::AsDimensionLine, "Object not a dimension line."};
inline constexpr Kind<ObjectDimensionRadius> kDimensionRadius{
    &Object::IsDimensionRadius, &Object::AsDimensionRadius, "Object not a dimension radius."};
inline constexpr Kind<ObjectDimensionArc> kDimensionArc{
    &Object::IsDimensionArc, &Object::AsDimensionArc, "Object not a dimension arc."};
inline constexpr Kind<ObjectDimensionAngle> kDimensionAngle{
    &Object::IsDimensionAngle, &Object::AsDimensionAngle, "Object not a dimension angle."};

/// A function that hands out one point of an object of a kind.
template <class View>
int store_point(api::FunctionId function, const api::Answers<int>& answers, const Kind<View>& kind,
                ObjectHandle* handle, Point (View::*get)() const, double* x, double* y, double* z) {
    return api::guarded(function, answers, kind, handle,
                        [&](api::Call& call, const View& view) -> api::Outcome<int> {
                            const Point point = (view.*get)();
                            point.GetXyz(x, y, z);
                            // The point is let go of behind the success exit.
                            call.Succeed();
                            return 0;
                        });
}

}  // namespace zol::design::flat
