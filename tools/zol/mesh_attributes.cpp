#include "tools/zol/mesh_attributes.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <unordered_map>

#include "tools/zol/exit_codes.h"
#include "tools/zol/last_error.h"
#include "tools/zol/number_text.h"

namespace zol::tool {

namespace {

using Buffer = std::array<char, 256>;

// The interface fills a list whose length it is not told; it promises no more than this.
constexpr std::size_t kMostNames = 1000;

/// In their order, and a name as often as it occurs.
std::vector<std::string> attribute_names(TriangulationHandle* handle) {
    std::vector<Buffer> buffers(kMostNames, Buffer{});
    std::vector<char*> places(kMostNames);
    std::transform(buffers.begin(), buffers.end(), places.begin(),
                   [](Buffer& buffer) { return buffer.data(); });
    int count = 0;
    if (ZOL_Triangulation_GetAttributeNames(handle, places.data(), &count) != 0) {
        fail_by_last_error();
    }
    return {places.begin(), places.begin() + count};
}

template <class Value, class Get>
Value got(Get get, TriangulationHandle* handle, const std::string& name) {
    Value value{};
    if (get(handle, name.c_str(), &value) != 0) fail_by_last_error();
    return value;
}

std::string text_of(TriangulationHandle* handle, const std::string& name) {
    Buffer buffer{};
    if (ZOL_Triangulation_GetAttributeAsString(handle, name.c_str(), buffer.data()) != 0) {
        fail_by_last_error();
    }
    return buffer.data();
}

/// A text that does not have the form of its date type is shown as it stands.
std::string date_of(TriangulationHandle* handle, const std::string& name) {
    int year = 0;
    int month = 0;
    int day = 0;
    if (ZOL_Triangulation_GetAttributeAsDate(handle, name.c_str(), &year, &month, &day) != 0) {
        return text_of(handle, name);
    }
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", year, month, day);
    return text.data();
}

MeshAttribute described(TriangulationHandle* handle, const std::string& name) {
    MeshAttribute attribute;
    attribute.name = name;
    int type = 0;
    // Not found by a name that arrived cut, or where there is no value.
    if (ZOL_Triangulation_GetAttributeType(handle, name.c_str(), &type) != 0) return attribute;
    switch (type) {
        case 1:
            attribute.type = "int32";
            attribute.value.emplace<long long>(
                got<int>(ZOL_Triangulation_GetAttributeAsInt32, handle, name));
            break;
        case 2:
            attribute.type = "int64";
            attribute.value = got<long long>(ZOL_Triangulation_GetAttributeAsInt64, handle, name);
            break;
        case 3:
            attribute.type = "boolean";
            attribute.value = got<int>(ZOL_Triangulation_GetAttributeAsBoolean, handle, name) != 0;
            break;
        case 4:
            attribute.type = "double";
            attribute.value = got<double>(ZOL_Triangulation_GetAttributeAsDouble, handle, name);
            break;
        case 5:
            attribute.type = "text";
            attribute.value = text_of(handle, name);
            break;
        case 6:
        case 7:
        case 8:
            attribute.type = "date";
            attribute.value = date_of(handle, name);
            break;
        default:
            attribute.value = text_of(handle, name);
    }
    return attribute;
}

}  // namespace

std::vector<MeshAttribute> attributes_of(const Mesh& mesh) {
    std::vector<MeshAttribute> attributes;
    std::unordered_map<std::string, std::size_t> places;
    for (const std::string& name : attribute_names(mesh.Handle())) {
        const auto [place, is_new] = places.emplace(name, attributes.size());
        if (is_new) {
            attributes.push_back(described(mesh.Handle(), name));
        } else {
            ++attributes[place->second].n_same;
        }
    }
    return attributes;
}

std::string value_text(const MeshAttribute& attribute) {
    struct Texts {
        std::string operator()(std::monostate) const { return "-"; }
        std::string operator()(bool value) const { return value ? "true" : "false"; }
        std::string operator()(long long value) const { return std::to_string(value); }
        std::string operator()(double value) const { return std::string(number_text(value)); }
        std::string operator()(const std::string& value) const { return value; }
    };
    return std::visit(Texts{}, attribute.value);
}

void write_value(JsonWriter& json, const MeshAttribute& attribute) {
    struct Write {
        JsonWriter& json;
        void operator()(std::monostate) const { json.Null(); }
        void operator()(bool value) const { json.Bool(value); }
        void operator()(long long value) const { json.Whole(value); }
        void operator()(double value) const { json.Number(value); }
        void operator()(const std::string& value) const { json.Text(value); }
    };
    std::visit(Write{json}, attribute.value);
}

}  // namespace zol::tool
