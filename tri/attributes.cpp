// The attributes of a triangulation: their names, types and values.
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "api/guard.h"
#include "api/marshalling.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "platform/zolTriangulationExport.h"
#include "support/floating_point.h"
#include "tri/conversion.h"
#include "tri/handle.h"
#include "tri/property_text.h"

using ubx::object::Property;
using ubx::object::PropertyLibrary;
using zol::api::Call;
using zol::api::copy_text;
using zol::api::FunctionId;
using zol::api::guarded;
using zol::api::kStatus;
using zol::api::Outcome;
using zol::model::tri::Triangulation;
using zol::tri::open_triangulation;

namespace {

constexpr std::string_view kNotANumber = "Attribute value is not a number.";
constexpr std::string_view kNotABoolean = "Attribute value is not a boolean.";
constexpr std::string_view kNotADate = "Attribute value is not a date.";

struct TypeCode {
    std::string_view name;
    int code;
};

// In the order in which they are tested, which is not that of the codes.
constexpr std::array<TypeCode, 8> kTypeCodes{{
    {"INT32", 1},
    {"INT64", 2},
    {"BOOLEAN", 3},
    {"DOUBLE", 4},
    {"STRING", 5},
    {"Types.YMD_Date", 6},
    {"Types.MDY_Date", 8},
    {"Types.DMY_Date", 7},
}};

int type_code(const std::string& type_name) {
    for (const TypeCode& type : kTypeCodes) {
        if (type_name == type.name) {
            return type.code;
        }
    }
    return 0;
}

/// The property of the first entry of that name; null where there is no such entry, or
/// no property in it. The name is not read while there is nothing to compare it with.
std::shared_ptr<const Property> find_property(const PropertyLibrary& attributes, const char* name) {
    const PropertyLibrary::Position end = attributes.End();
    for (PropertyLibrary::Position entry = attributes.Begin(); entry != end; ++entry) {
        if (entry->first == name) {
            return entry->second;
        }
    }
    return nullptr;
}

/// Looks the attribute up for `work`, which takes the call and the property. The property
/// is let go of behind the success exit.
template <class Work>
int ask_attribute(FunctionId function, TriangulationHandle* handle, const char* name, Work work) {
    return guarded(function, kStatus, open_triangulation, handle,
                   [&](Call& call, const Triangulation& triangulation) -> Outcome<int> {
                       const std::shared_ptr<const Property> property =
                           find_property(triangulation.GetAttributes(), name);
                       if (property == nullptr) {
                           return call.Fail("Could not find attribute.");
                       }
                       const Outcome<int> outcome = work(call, *property);
                       if (outcome) {
                           call.Succeed();
                       }
                       return outcome;
                   });
}

/// Stores what `convert` makes of the attribute, or fails with `refusal`.
template <class Convert, class Out>
int store_converted(FunctionId function, TriangulationHandle* handle, const char* name,
                    Convert convert, std::string_view refusal, Out* out) {
    return ask_attribute(function, handle, name,
                         [&](Call& call, const Property& property) -> Outcome<int> {
                             // Around a call into another file, which the compiler does not
                             // move arithmetic out of.
                             const zol::support::UsualFloatingPoint usual;
                             const auto value = convert(property);
                             if (!value) {
                                 return call.Fail(refusal);
                             }
                             *out = *value;
                             return 0;
                         });
}

}  // namespace

int ZOL_Triangulation_GetAttributeNames(TriangulationHandle* handle, char** names, int* count) {
    return guarded(__func__, kStatus, open_triangulation, handle,
                   [&](const Triangulation& triangulation) {
                       const PropertyLibrary& attributes = triangulation.GetAttributes();
                       const PropertyLibrary::Position end = attributes.End();
                       int copied = 0;
                       for (auto entry = attributes.Begin(); entry != end; ++entry) {
                           copy_text(entry->first, names[copied++]);
                       }
                       *count = copied;
                   });
}

int ZOL_Triangulation_GetAttributeType(TriangulationHandle* handle, const char* name, int* type) {
    return ask_attribute(__func__, handle, name,
                         [&](Call&, const Property& property) -> Outcome<int> {
                             *type = type_code(property.TypeName());
                             return 0;
                         });
}

int ZOL_Triangulation_GetAttributeAsInt32(TriangulationHandle* handle, const char* name,
                                          int* value) {
    return store_converted(__func__, handle, name, zol::tri::as_int32, kNotANumber, value);
}

int ZOL_Triangulation_GetAttributeAsInt64(TriangulationHandle* handle, const char* name,
                                          long long* value) {
    return store_converted(__func__, handle, name, zol::tri::as_int64, kNotANumber, value);
}

int ZOL_Triangulation_GetAttributeAsBoolean(TriangulationHandle* handle, const char* name,
                                            int* value) {
    return store_converted(__func__, handle, name, zol::tri::as_boolean, kNotABoolean, value);
}

int ZOL_Triangulation_GetAttributeAsDouble(TriangulationHandle* handle, const char* name,
                                           double* value) {
    return store_converted(__func__, handle, name, zol::tri::as_double, kNotANumber, value);
}

int ZOL_Triangulation_GetAttributeAsString(TriangulationHandle* handle, const char* name,
                                           char* buffer) {
    return ask_attribute(__func__, handle, name,
                         [&](Call&, const Property& property) -> Outcome<int> {
                             copy_text(zol::tri::text_of(property), buffer);
                             return 0;
                         });
}

int ZOL_Triangulation_GetAttributeAsDate(TriangulationHandle* handle, const char* name, int* year,
                                         int* month, int* day) {
    return ask_attribute(__func__, handle, name,
                         [&](Call& call, const Property& property) -> Outcome<int> {
                             if (!zol::tri::store_date(property, year, month, day)) {
                                 return call.Fail(kNotADate);
                             }
                             return 0;
                         });
}
