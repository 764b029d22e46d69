// The attributes of a triangulation as typed values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <string>
#include <variant>
#include <vector>

#include "engine/formats/mesh/mesh_data.h"
#include "platform/zolTriangulationExport.h"

namespace zol::engine::tri {

class Shape;

using AttributeValue = decltype(MeshAttribute::value);

/// Callers have to make room for all names before they know how many there are.
inline constexpr std::size_t kMostAttributes = 1000;

/// An attribute whose type is settled.
struct TypedAttribute {
    std::string name;
    AttributeValue value;
    const ubx::object::TypeDescriptor* type = nullptr;
    /// Where there is one, its answer takes the place of the value when that is first read.
    bool (Shape::*question)() = nullptr;
};

/// The type of that name, "INT32", "INT64", "BOOLEAN", "DOUBLE", "STRING", "YMD_Date",
/// "MDY_Date" or "DMY_Date"; null for any other. It lives as long as the process.
const ubx::object::TypeDescriptor* type_of_name(const std::string& name);

/// Whole numbers that fit are INT32, the others INT64; a text is STRING, or, when it is a day
/// of the calendar, a date in the order of its fields. Of "05/06/2001", where both orders are
/// days, the day is first. Comments are texts whatever is in them.
TypedAttribute typed(const MeshAttribute& attribute);

/// True when a value can be of the type: a whole number that fits, a text that is a day.
bool is_value_of(const AttributeValue& value, const ubx::object::TypeDescriptor& type);

/// Attributes in the order in which they were added.
class AttributeLibrary final : public ubx::object::PropertyLibrary {
public:
    /// The shape is what the questions are asked of; it must outlive all properties, and is
    /// null only where there are no questions.
    explicit AttributeLibrary(std::vector<TypedAttribute> attributes, Shape* shape);

    Position Begin() const override { return entries_.begin(); }
    Position End() const override { return entries_.end(); }

private:
    std::list<Entry> entries_;
};

}  // namespace zol::engine::tri
