// The attributes of a triangulation, each with the value that its type promises.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "tools/zol/json_writer.h"
#include "tools/zol/mesh.h"

namespace zol::tool {

struct MeshAttribute {
    std::string name;
    /// "int32", "int64", "boolean", "double", "text", "date", or "unknown" for a type that the
    /// interface has no name for.
    const char* type = "unknown";
    /// A date is a text, "2024-05-31". Nothing where the interface does not give the value.
    std::variant<std::monostate, bool, long long, double, std::string> value;
    /// How many there are of this name. The interface finds the first of them only.
    int n_same = 1;
};

/// In the order of the file, each name once. Texts longer than 254 bytes arrive cut.
std::vector<MeshAttribute> attributes_of(const Mesh& mesh);

/// The value for a person.
std::string value_text(const MeshAttribute& attribute);
void write_value(JsonWriter& json, const MeshAttribute& attribute);

}  // namespace zol::tool
