#include "engine/tri/mesh_sidecar.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include "engine/formats/diagnostics.h"
#include "engine/formats/file.h"
#include "engine/formats/mesh/colour_words.h"
#include "engine/formats/mesh/name_beside.h"
#include "engine/formats/read_error.h"
#include "engine/formats/sidecar_file.h"

namespace zol::engine::tri {

namespace {

/// "#RRGGBB", or three whole numbers from 0 to 255.
std::array<std::uint8_t, 3> read_colour(const JsonValue& value) {
    if (value.IsText()) {
        const auto stated = colour_of_hex(value.Text());
        if (!stated) value.Refuse("is no colour like \"#C06020\"");
        return *stated;
    }
    std::array<std::uint8_t, 3> colour{};
    if (value.Size() != colour.size()) value.Refuse("is no colour: three numbers are expected");
    for (std::size_t i = 0; i < colour.size(); ++i) {
        const std::int64_t channel = value.At(i).Whole();
        if (channel < 0 || channel > 255) value.At(i).Refuse("is not from 0 to 255");
        colour[i] = static_cast<std::uint8_t>(channel);
    }
    return colour;
}

void read_look(const JsonValue& object, const std::string& sidecar, MeshLook& look) {
    for (const JsonMember& member : object.Members()) {
        if (member.key == "colour") {
            look.colour = read_colour(member.value);
        } else if (member.key == "translucency") {
            const double translucency = member.value.Number();
            if (!(translucency >= 0.0 && translucency <= 1.0)) {
                member.value.Refuse("is not from 0, opaque, to 1, clear");
            }
            look.opacity = 1.0 - translucency;
        } else if (member.key == "texture") {
            if (member.value.IsNull()) {
                look.texture.reset();
                continue;
            }
            look.texture = name_beside(sidecar, member.value.Text());
            if (!look.texture) member.value.Refuse("is no file of the sidecar's folder");
        } else {
            member.value.Refuse("is not known here; a look has colour, translucency and texture");
        }
    }
}

/// Nothing for a number with a fraction, or beyond 64 bits.
std::optional<std::int64_t> whole_number(const JsonValue& value) {
    constexpr double kEnd = 9223372036854775808.0;
    const double number = value.Number();
    if (number != std::floor(number) || number < -kEnd || number > kEnd) return std::nullopt;
    if (number < kEnd) return value.Whole();
    // As doubles the greatest of 64 bits and the next one are the same.
    try {
        return value.Whole();
    } catch (const ReadError&) {
        return std::nullopt;
    }
}

AttributeValue read_plain_value(const JsonValue& value) {
    if (value.IsBool()) return value.Bool();
    if (value.IsText()) return value.Text();
    if (!value.IsNumber()) {
        value.Refuse("is no value of an attribute: a text, a number or a boolean is expected");
    }
    if (const auto whole = whole_number(value)) return *whole;
    return value.Number();
}

/// A value, or {"value": ..., "type": "MDY_Date"} where the value alone does not tell.
TypedAttribute read_attribute(const JsonMember& member) {
    if (!member.value.IsObject()) return typed({member.key, read_plain_value(member.value)});
    for (const JsonMember& part : member.value.Members()) {
        if (part.key != "value" && part.key != "type") {
            part.value.Refuse("is not known here; an attribute has value and type");
        }
    }
    AttributeValue value = read_plain_value(member.value.Get("value"));
    const auto name = member.value.Find("type");
    if (!name) return typed({member.key, std::move(value)});
    const ubx::object::TypeDescriptor* const type = type_of_name(name->Text());
    if (type == nullptr) {
        name->Refuse(
            "is no type; INT32, INT64, BOOLEAN, DOUBLE, STRING, YMD_Date, DMY_Date and MDY_Date "
            "are");
    }
    const auto* const whole = std::get_if<std::int64_t>(&value);
    if (whole != nullptr && name->Text() == "DOUBLE") value = member.value.Get("value").Number();
    if (!is_value_of(value, *type)) {
        member.value.Get("value").Refuse("can't be of type " + name->Text());
    }
    return {member.key, std::move(value), type};
}

/// In the place of all attributes of that name, or behind the others; null takes them away.
void put_attribute(const JsonMember& member, std::vector<TypedAttribute>& attributes) {
    const auto has_name = [&](const TypedAttribute& each) { return each.name == member.key; };
    const auto place = std::find_if(attributes.begin(), attributes.end(), has_name);
    if (member.value.IsNull()) {
        attributes.erase(std::remove_if(place, attributes.end(), has_name), attributes.end());
        return;
    }
    TypedAttribute attribute = read_attribute(member);
    if (place == attributes.end()) {
        attributes.push_back(std::move(attribute));
        return;
    }
    *place = std::move(attribute);
    attributes.erase(std::remove_if(place + 1, attributes.end(), has_name), attributes.end());
}

/// Lets `work` read, and names the sidecar in what it throws.
template <class Work>
void read_sidecar(const std::string& sidecar, Work work) {
    try {
        work();
    } catch (const ReadError& error) {
        throw ReadError("in the sidecar " + sidecar.substr(sidecar.rfind('/') + 1) + ": " +
                        error.what());
    }
}

}  // namespace

MeshSidecar::MeshSidecar(const std::string& path) : path_(path + ".json") {
    if (!File::Exists(path_)) return;
    read_sidecar(
        path_, [&] { document_.emplace(read_sidecar_file(path_), JsonDocument::Dialect::Strict); });
}

void MeshSidecar::Apply(MeshLook& look) const {
    if (!document_) return;
    read_sidecar(path_, [&] {
        if (const auto stated = document_->Root().Find("mesh:look")) {
            read_look(*stated, path_, look);
        }
    });
}

void MeshSidecar::Apply(std::vector<TypedAttribute>& attributes) const {
    if (!document_) return;
    read_sidecar(path_, [&] {
        const auto stated = document_->Root().Find("mesh:attributes");
        if (!stated) return;
        std::size_t read = 0;
        for (const JsonMember& member : stated->Members()) {
            if (read++ == kMostAttributes) {
                report(path_, "of its " + std::to_string(stated->NMembers()) +
                                  " attributes only the first " + std::to_string(kMostAttributes) +
                                  " are read");
                return;
            }
            put_attribute(member, attributes);
        }
    });
}

}  // namespace zol::engine::tri
