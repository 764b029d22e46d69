#include "engine/tri/property_library.h"

#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <string_view>
#include <utility>

#include "engine/formats/number_text.h"
#include "engine/tri/shape.h"
#include "engine/tri/value_text.h"
#include "support/floating_point.h"

namespace ubx::object {

Property::~Property() = default;

std::int32_t Property::TypeId() const {
    return type_->id;
}

std::string Property::TypeName() const {
    return type_ == nullptr ? std::string() : type_->name;
}

PropertyLibrary::~PropertyLibrary() = default;

}  // namespace ubx::object

namespace zol::engine::tri {

namespace {

using ubx::object::Property;
using ubx::object::TypeDescriptor;

enum class Type { Int32, Int64, Boolean, Double, String, YearFirst, MonthFirst, DayFirst };

struct NamedType {
    std::string_view name;
    TypeDescriptor descriptor;
};

const NamedType& named_type(Type type) {
    // A date is a text. In the order of Type.
    static const std::array<NamedType, 8> kTypes = {{
        {"INT32", {3, "INT32"}},
        {"INT64", {4, "INT64"}},
        {"BOOLEAN", {5, "BOOLEAN"}},
        {"DOUBLE", {6, "DOUBLE"}},
        {"STRING", {7, "STRING"}},
        {"YMD_Date", {7, "Types.YMD_Date"}},
        {"MDY_Date", {7, "Types.MDY_Date"}},
        {"DMY_Date", {7, "Types.DMY_Date"}},
    }};
    return kTypes[static_cast<std::size_t>(type)];
}

const TypeDescriptor* descriptor(Type type) {
    return &named_type(type).descriptor;
}

constexpr std::array kAllTypes = {Type::Int32,  Type::Int64,     Type::Boolean,    Type::Double,
                                  Type::String, Type::YearFirst, Type::MonthFirst, Type::DayFirst};

bool fits_int32(std::int64_t value) {
    return value == static_cast<std::int32_t>(value);
}

Type type_of_text(const std::string& text) {
    switch (date_order(text)) {
        case DateOrder::YearFirst:
            return Type::YearFirst;
        case DateOrder::MonthFirst:
            return Type::MonthFirst;
        case DateOrder::DayFirst:
        case DateOrder::DayOrMonthFirst:
            return Type::DayFirst;
        case DateOrder::None:
            break;
    }
    return Type::String;
}

struct TypeOf {
    Type operator()(bool) const { return Type::Boolean; }
    Type operator()(std::int64_t value) const {
        return fits_int32(value) ? Type::Int32 : Type::Int64;
    }
    Type operator()(double) const { return Type::Double; }
    Type operator()(const std::string& text) const { return type_of_text(text); }
};

/// Towards zero; the end of the range for what is beyond it, and 0 for NaN.
std::int64_t whole(double value) {
    constexpr double kEnd = 9223372036854775808.0;
    if (std::isnan(value)) return 0;
    if (value >= kEnd) return std::numeric_limits<std::int64_t>::max();
    if (value < -kEnd) return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(value);
}

struct ToDouble {
    double operator()(bool value) const { return value ? 1.0 : 0.0; }
    double operator()(std::int64_t value) const { return static_cast<double>(value); }
    double operator()(double value) const { return value; }
    double operator()(const std::string& text) const {
        double value = 0.0;
        return parse_number(text, value) ? value : 0.0;
    }
};

struct ToWhole {
    std::int64_t operator()(bool value) const { return value ? 1 : 0; }
    std::int64_t operator()(std::int64_t value) const { return value; }
    std::int64_t operator()(double value) const { return whole(value); }
    std::int64_t operator()(const std::string& text) const { return whole(ToDouble()(text)); }
};

struct ToText {
    int decimals;
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(std::int64_t value) const { return std::to_string(value); }
    std::string operator()(double value) const { return fixed_text(value, decimals); }
    std::string operator()(const std::string& text) const { return text; }
};

class Value final : public Property {
public:
    Value(TypedAttribute attribute, Shape* shape)
        : Property(attribute.type),
          value_(std::move(attribute.value)),
          question_(attribute.question),
          shape_(shape) {}

    /// The low bits of a number that is wider.
    std::int32_t AsInt32() const override { return static_cast<std::int32_t>(AsInt64()); }
    std::int64_t AsInt64() const override { return std::visit(ToWhole(), Get()); }
    bool AsBoolean() const override { return std::visit(ToDouble(), Get()) != 0.0; }
    double AsDouble() const override { return std::visit(ToDouble(), Get()); }
    std::string& AsString(std::string& text, int decimals) const override {
        return text = std::visit(ToText{decimals}, Get());
    }

private:
    const AttributeValue& Get() const {
        if (question_ != nullptr) {
            const support::UsualFloatingPoint usual;
            value_ = (shape_->*question_)();
            question_ = nullptr;
        }
        return value_;
    }

    mutable AttributeValue value_;
    /// Null when it has been asked.
    mutable bool (Shape::*question_)();
    Shape* shape_;
};

}  // namespace

const TypeDescriptor* type_of_name(const std::string& name) {
    for (const Type type : kAllTypes) {
        if (named_type(type).name == name) return descriptor(type);
    }
    return nullptr;
}

TypedAttribute typed(const MeshAttribute& attribute) {
    const bool is_comment = attribute.name == "comment";
    const Type type = is_comment && std::holds_alternative<std::string>(attribute.value)
                          ? Type::String
                          : std::visit(TypeOf(), attribute.value);
    return {attribute.name, attribute.value, descriptor(type)};
}

bool is_value_of(const AttributeValue& value, const TypeDescriptor& type) {
    const auto is = [&](Type each) { return &type == descriptor(each); };
    if (const auto* const text = std::get_if<std::string>(&value)) {
        const DateOrder order = date_order(*text);
        const bool either = order == DateOrder::DayOrMonthFirst;
        return is(Type::String) || (is(Type::YearFirst) && order == DateOrder::YearFirst) ||
               (is(Type::MonthFirst) && (either || order == DateOrder::MonthFirst)) ||
               (is(Type::DayFirst) && (either || order == DateOrder::DayFirst));
    }
    if (const auto* const number = std::get_if<std::int64_t>(&value)) {
        return is(Type::Int64) || (is(Type::Int32) && fits_int32(*number));
    }
    return std::holds_alternative<bool>(value) ? is(Type::Boolean) : is(Type::Double);
}

AttributeLibrary::AttributeLibrary(std::vector<TypedAttribute> attributes, Shape* shape) {
    for (TypedAttribute& attribute : attributes) {
        std::string name = attribute.name;
        entries_.emplace_back(std::move(name),
                              std::make_shared<const Value>(std::move(attribute), shape));
    }
}

}  // namespace zol::engine::tri
