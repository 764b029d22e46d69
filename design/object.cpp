// What objects of every kind answer.
#include <string>

#include "api/guard.h"
#include "api/marshalling.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "design/colour_table.h"
#include "design/handles.h"
#include "platform/zolDesignExport.h"

using zol::api::Call;
using zol::api::copy_text;
using zol::api::FunctionId;
using zol::api::guarded;
using zol::api::kStatus;
using zol::api::Outcome;
using zol::design::Object;
using zol::design::flat::open_object;

namespace {

int copy_attribute(FunctionId function, ObjectHandle* handle, std::string (Object::*get)() const,
                   char* buffer) {
    return guarded(function, kStatus, open_object, handle,
                   [&](const Object& object) { copy_text((object.*get)(), buffer); });
}

}  // namespace

int ZOL_Object_Close(ObjectHandle* handle) {
    // -1 for an object that is not defined, as for a layer.
    return guarded(__func__, kStatus.Failing(-1), open_object, handle, [&](Object&) {
        handle->object.reset();
        delete handle;
    });
}

int ZOL_Object_GetType(ObjectHandle* handle, int* type) {
    return guarded(__func__, kStatus, open_object, handle,
                   [&](Call& call, const Object& object) -> Outcome<int> {
                       // Ahead of the test: of an object in error, too, the type is known.
                       *type = static_cast<int>(object.GetType());
                       if (object.HasError()) {
                           return call.Fail(object.GetError());
                       }
                       return 0;
                   });
}

int ZOL_Object_GetName(ObjectHandle* handle, char* buffer) {
    return copy_attribute(__func__, handle, &Object::GetName, buffer);
}

int ZOL_Object_GetDescription(ObjectHandle* handle, char* buffer) {
    return copy_attribute(__func__, handle, &Object::GetDescription, buffer);
}

int ZOL_Object_GetFeature(ObjectHandle* handle, char* buffer) {
    return copy_attribute(__func__, handle, &Object::GetFeature, buffer);
}

int ZOL_Object_GetGroup(ObjectHandle* handle, char* buffer) {
    return copy_attribute(__func__, handle, &Object::GetGroup, buffer);
}

int ZOL_Object_GetPrimitive(ObjectHandle* handle, char* buffer) {
    return copy_attribute(__func__, handle, &Object::GetPrimitive, buffer);
}

int ZOL_Object_GetValue(ObjectHandle* handle, double* value) {
    return guarded(__func__, kStatus, open_object, handle,
                   [&](const Object& object) { *value = object.GetValue(); });
}

int ZOL_Object_GetColourIndex(ObjectHandle* handle, int* index) {
    return guarded(__func__, kStatus, open_object, handle,
                   [&](const Object& object) { *index = object.GetColour().index; });
}

int ZOL_Object_GetColour(ObjectHandle* handle, int* red, int* green, int* blue) {
    return guarded(__func__, kStatus, open_object, handle, [&](const Object& object) {
        zol::api::store(zol::design::flat::colour_at(object.GetColour().index), red, green, blue);
    });
}
