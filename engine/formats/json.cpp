// Checked access to values. RapidJSON's own accessors assert; nothing here calls
// one before the type is known.
#include "engine/formats/json.h"

#include <cmath>

#include "engine/formats/json_tree.h"
#include "engine/formats/read_error.h"

namespace zol::engine {

namespace {

using json_tree::Value;

constexpr std::size_t kLongestPath = 300;
constexpr std::size_t kLongestKey = 80;

const Value& as_value(const void* value) {
    return *static_cast<const Value*>(value);
}

const char* kind(const Value& value) {
    switch (value.GetType()) {
        case rapidjson::kNullType:
            return "null";
        case rapidjson::kFalseType:
        case rapidjson::kTrueType:
            return "true or false";
        case rapidjson::kObjectType:
            return "an object";
        case rapidjson::kArrayType:
            return "a list";
        case rapidjson::kStringType:
            return "a text";
        case rapidjson::kNumberType:
            return "a number";
    }
    return "unknown";
}

std::size_t n_children(const Value& value) {
    if (value.IsObject()) return value.MemberCount();
    return value.IsArray() ? value.Size() : 0;
}

const Value& child(const Value& value, std::size_t index) {
    const auto position = static_cast<rapidjson::SizeType>(index);
    if (value.IsArray()) return value[position];
    return (value.MemberBegin() + static_cast<std::ptrdiff_t>(index))->value;
}

bool is_plain_key(std::string_view key) {
    if (key.empty() || key.size() > kLongestKey) return false;
    for (const char c : key) {
        const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
        if (!letter && !(c >= '0' && c <= '9')) return false;
    }
    return true;
}

std::string step_text(const Value& parent, std::size_t index) {
    if (parent.IsArray()) return "[" + std::to_string(index) + "]";
    const Value& name = (parent.MemberBegin() + static_cast<std::ptrdiff_t>(index))->name;
    const std::string_view key(name.GetString(), name.GetStringLength());
    if (is_plain_key(key)) return "." + std::string(key);
    return "[\"" + std::string(key.substr(0, kLongestKey)) + "\"]";
}

}  // namespace

bool JsonValue::IsNull() const {
    return as_value(value_).IsNull();
}
bool JsonValue::IsObject() const {
    return as_value(value_).IsObject();
}
bool JsonValue::IsList() const {
    return as_value(value_).IsArray();
}
bool JsonValue::IsText() const {
    return as_value(value_).IsString();
}
bool JsonValue::IsNumber() const {
    return as_value(value_).IsNumber();
}
bool JsonValue::IsBool() const {
    return as_value(value_).IsBool();
}

std::optional<JsonValue> JsonValue::Find(std::string_view key) const {
    const Value& value = as_value(value_);
    if (!value.IsObject()) RefuseKind("an object");
    for (auto member = value.MemberBegin(); member != value.MemberEnd(); ++member) {
        const Value& name = member->name;
        if (std::string_view(name.GetString(), name.GetStringLength()) != key) continue;
        if (member->value.IsNull()) return std::nullopt;
        return JsonValue(&member->value, root_);
    }
    return std::nullopt;
}

JsonValue JsonValue::Get(std::string_view key) const {
    const std::optional<JsonValue> found = Find(key);
    if (!found) Refuse("has no \"" + std::string(key) + "\"");
    return *found;
}

std::vector<JsonMember> JsonValue::Members() const {
    const Value& value = as_value(value_);
    if (!value.IsObject()) RefuseKind("an object");
    std::vector<JsonMember> members;
    members.reserve(value.MemberCount());
    for (auto member = value.MemberBegin(); member != value.MemberEnd(); ++member) {
        const Value& name = member->name;
        members.push_back({std::string(name.GetString(), name.GetStringLength()),
                           JsonValue(&member->value, root_)});
    }
    return members;
}

std::size_t JsonValue::NMembers() const {
    const Value& value = as_value(value_);
    if (!value.IsObject()) RefuseKind("an object");
    return value.MemberCount();
}

std::size_t JsonValue::Size() const {
    const Value& value = as_value(value_);
    if (!value.IsArray()) RefuseKind("a list");
    return value.Size();
}

JsonValue JsonValue::At(std::size_t index) const {
    if (index >= Size()) Refuse("has no item " + std::to_string(index));
    return {&child(as_value(value_), index), root_};
}

std::string JsonValue::Text() const {
    const Value& value = as_value(value_);
    if (!value.IsString()) RefuseKind("a text");
    return {value.GetString(), value.GetStringLength()};
}

double JsonValue::Number() const {
    const Value& value = as_value(value_);
    if (!value.IsNumber()) RefuseKind("a number");
    return value.GetDouble();
}

std::int64_t JsonValue::Whole() const {
    const Value& value = as_value(value_);
    if (value.IsInt64()) return value.GetInt64();
    if (!value.IsNumber()) RefuseKind("a whole number");
    const double number = value.GetDouble();
    constexpr double kTwo63 = 9223372036854775808.0;
    if (value.IsDouble() && number >= -kTwo63 && number < kTwo63 && std::trunc(number) == number) {
        return static_cast<std::int64_t>(number);
    }
    Refuse("is not a whole number of 64 bits");
}

bool JsonValue::Bool() const {
    const Value& value = as_value(value_);
    if (!value.IsBool()) RefuseKind("true or false");
    return value.GetBool();
}

std::vector<double> JsonValue::Numbers() const {
    const std::size_t size = Size();
    std::vector<double> numbers;
    numbers.reserve(size);
    for (std::size_t i = 0; i < size; ++i) numbers.push_back(At(i).Number());
    return numbers;
}

std::vector<double> JsonValue::Numbers(std::size_t expected) const {
    if (Size() != expected) {
        Refuse("has " + std::to_string(Size()) + " items, " + std::to_string(expected) +
               " are expected");
    }
    return Numbers();
}

std::string JsonValue::Path() const {
    struct Level {
        const Value* value;
        std::size_t next;
    };
    // Depth first; what is on the stack when the value is found is its path.
    std::vector<Level> levels{{&as_value(root_), 0}};
    while (levels.back().value != value_) {
        Level& level = levels.back();
        if (level.next < n_children(*level.value)) {
            levels.push_back({&child(*level.value, level.next++), 0});
        } else if (levels.size() > 1) {
            levels.pop_back();
        } else {
            return "$";
        }
    }
    levels.pop_back();

    std::string path;
    while (!levels.empty() && path.size() < kLongestPath) {
        const Level& level = levels.back();
        path.insert(0, step_text(*level.value, level.next - 1));
        levels.pop_back();
    }
    return (levels.empty() ? "$" : "$...") + path;
}

void JsonValue::Refuse(std::string_view fault) const {
    throw ReadError(Path() + " " + std::string(fault));
}

void JsonValue::RefuseKind(std::string_view expected) const {
    Refuse("is " + std::string(kind(as_value(value_))) + ", " + std::string(expected) +
           " is expected");
}

}  // namespace zol::engine
