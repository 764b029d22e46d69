// The named fields of an object.
//
// These functions test pointers for null, unlike most, and each asks a copy of the fields,
// which it lets go of behind the success exit.
#include <algorithm>
#include <initializer_list>

#include "api/guard.h"
#include "api/index.h"
#include "api/marshalling.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "design/handles.h"
#include "platform/zolDesignExport.h"

using zol::api::Answers;
using zol::api::Call;
using zol::api::copy_text_but_last;
using zol::api::FunctionId;
using zol::api::guarded;
using zol::api::is_index;
using zol::api::kCount;
using zol::api::kPredicate;
using zol::api::kStatus;
using zol::api::Outcome;
using zol::design::Metadata;
using zol::design::Object;
using zol::design::flat::kInvalidIndex;
using zol::design::flat::open_object;

namespace {

/// Hands the fields to `ask`, with the call; not before the pointers have been tested.
template <class Ask>
int ask_metadata(FunctionId function, const Answers<int>& answers, ObjectHandle* handle,
                 std::initializer_list<const void*> pointers, Ask ask) {
    return guarded(function, answers, open_object, handle,
                   [&](Call& call, const Object& object) -> Outcome<int> {
                       if (std::find(pointers.begin(), pointers.end(), nullptr) != pointers.end()) {
                           return call.Fail("Received a null pointer.");
                       }
                       const Metadata metadata = object.GetMetadata();
                       const Outcome<int> outcome = ask(call, metadata);
                       if (outcome) {
                           call.Succeed();
                       }
                       return outcome;
                   });
}

/// Copies the text that `text_at` gets of the field at a position.
template <class TextAt>
int copy_at(FunctionId function, ObjectHandle* handle, const int* index, char* buffer,
            TextAt text_at) {
    return ask_metadata(function, kStatus, handle, {buffer},
                        [&](Call& call, const Metadata& metadata) -> Outcome<int> {
                            if (!is_index(*index, metadata.NFields())) {
                                return call.Fail(kInvalidIndex);
                            }
                            copy_text_but_last(text_at(metadata, *index), buffer);
                            return 0;
                        });
}

}  // namespace

int ZOL_Object_HasMetadata(ObjectHandle* handle) {
    return ask_metadata(__func__, kPredicate, handle, {},
                        [](Call&, const Metadata& metadata) -> Outcome<int> {
                            return metadata.HasMetadata() ? 1 : 0;
                        });
}

int ZOL_Object_NMetadataFields(ObjectHandle* handle) {
    return ask_metadata(
        __func__, kCount, handle, {},
        [](Call&, const Metadata& metadata) -> Outcome<int> { return metadata.NFields(); });
}

int ZOL_Object_HasMetadataField(ObjectHandle* handle, const char* name) {
    return ask_metadata(__func__, kPredicate, handle, {name},
                        [&](Call&, const Metadata& metadata) -> Outcome<int> {
                            return metadata.HasField(name) ? 1 : 0;
                        });
}

int ZOL_Object_GetMetadataFieldIndex(ObjectHandle* handle, const char* name, int* index) {
    return ask_metadata(__func__, kStatus, handle, {name, index},
                        [&](Call& call, const Metadata& metadata) -> Outcome<int> {
                            const int found = metadata.GetFieldIndex(name);
                            if (found < 0) {
                                return call.Fail("Field not found.");
                            }
                            call.Succeed();
                            *index = found;
                            return 0;
                        });
}

int ZOL_Object_GetMetadataFieldName(ObjectHandle* handle, const int* index, char* buffer) {
    return copy_at(__func__, handle, index, buffer, [](const Metadata& metadata, int position) {
        return metadata.GetField(position);
    });
}

int ZOL_Object_GetMetadataFieldValue_Index(ObjectHandle* handle, const int* index, char* buffer) {
    return copy_at(__func__, handle, index, buffer, [](const Metadata& metadata, int position) {
        return metadata.GetValue(position);
    });
}

int ZOL_Object_GetMetadataFieldValue_Name(ObjectHandle* handle, const char* name, char* buffer) {
    return ask_metadata(__func__, kStatus, handle, {name, buffer},
                        [&](Call& call, const Metadata& metadata) -> Outcome<int> {
                            if (!metadata.HasField(name)) {
                                return call.Fail("Field does not exist.");
                            }
                            copy_text_but_last(metadata.GetValue(name), buffer);
                            return 0;
                        });
}
