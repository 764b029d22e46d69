#include <cstddef>
#include <utility>

#include "tools/zol/layout.h"
#include "tools/zol/mesh_attributes.h"
#include "tools/zol/mesh_report.h"
#include "tools/zol/number_text.h"

namespace zol::tool {

namespace {

void write_whole(JsonWriter& json, const char* key, std::size_t number) {
    json.Key(key);
    json.Whole(static_cast<long long>(number));
}

void write_bool(JsonWriter& json, const char* key, bool value) {
    json.Key(key);
    json.Bool(value);
}

/// {"number": 3, "first": [[x, y, z], [x, y, z]]}
void write_fault(JsonWriter& json, const char* key, const EdgeFault& fault) {
    json.Key(key);
    json.BeginObject(JsonWriter::Layout::Flat);
    write_whole(json, "number", fault.number);
    json.Key("first");
    if (fault.first) {
        json.BeginList(JsonWriter::Layout::Flat);
        write_point(json, fault.first->first);
        write_point(json, fault.first->second);
        json.EndList();
    } else {
        json.Null();
    }
    json.EndObject();
}

/// [3, 8]
void write_triangles(JsonWriter& json, const std::pair<std::size_t, std::size_t>& pair) {
    json.BeginList(JsonWriter::Layout::Flat);
    json.Whole(static_cast<long long>(pair.first));
    json.Whole(static_cast<long long>(pair.second));
    json.EndList();
}

void write_crossings(JsonWriter& json, const CrossingReport& crossings) {
    json.BeginObject(JsonWriter::Layout::Flat);
    write_whole(json, "number", crossings.number);
    write_bool(json, "complete", crossings.is_complete);
    json.Key("first");
    write_triangles(json, crossings.first);
    json.Key("near");
    write_point(json, crossings.near);
    json.EndObject();
}

void write_second_height(JsonWriter& json, const SecondHeight& found) {
    json.BeginObject(JsonWriter::Layout::Flat);
    json.Key("first");
    write_triangles(json, found.triangles);
    json.Key("at");
    write_pair(json, found.x, found.y);
    json.Key("heights");
    write_pair(json, found.heights.first, found.heights.second);
    json.EndObject();
}

void write_attributes(JsonWriter& json, const std::vector<MeshAttribute>& attributes) {
    json.Key("attributes");
    json.BeginList();
    for (const MeshAttribute& attribute : attributes) {
        json.BeginObject(JsonWriter::Layout::Flat);
        json.Key("name");
        json.Text(attribute.name);
        json.Key("type");
        json.Text(attribute.type);
        json.Key("value");
        write_value(json, attribute);
        json.Key("count");
        json.Whole(attribute.n_same);
        json.EndObject();
    }
    json.EndList();
}

}  // namespace

void write_report(const MeshReport& report, JsonWriter& json) {
    json.Key("name");
    json.Text(report.name);
    json.Key("points");
    json.Whole(report.n_points);
    json.Key("triangles");
    json.Whole(report.n_triangles);
    write_whole(json, "degenerate", report.n_degenerate);
    json.Key("extent");
    write_box(json, report.extent);
    json.Key("area");
    json.Number(report.area);
    json.Key("volume");
    if (report.volume) {
        json.Number(*report.volume);
    } else {
        json.Null();
    }
    write_bool(json, "solid", report.is_solid);
    write_bool(json, "consistent", report.is_consistent);
    write_bool(json, "closed", report.edges.is_closed);
    write_whole(json, "edges", report.edges.edges);
    write_fault(json, "border", report.edges.border);
    write_fault(json, "crowded", report.edges.crowded);
    write_fault(json, "misdirected", report.edges.misdirected);
}

void write_meetings(const MeshMeetings& meetings, JsonWriter& json) {
    write_bool(json, "surface", meetings.is_surface);
    json.Key("second_height");
    if (meetings.second_height) {
        write_second_height(json, *meetings.second_height);
    } else {
        json.Null();
    }
    write_bool(json, "crossing", meetings.crossings.has_value());
    json.Key("crossings");
    if (meetings.crossings) {
        write_crossings(json, *meetings.crossings);
    } else {
        json.Null();
    }
}

void write_look(const Mesh& mesh, JsonWriter& json) {
    const Appearance look = mesh.Look();
    json.Key("colour");
    json.BeginList(JsonWriter::Layout::Flat);
    for (const int part : look.colour) json.Whole(part);
    json.EndList();
    write_bool(json, "translucent", look.is_translucent);
    json.Key("translucency");
    json.NumberAsWritten(number_text(static_cast<float>(look.translucency)));
    json.Key("texture");
    if (look.is_textured) {
        json.Text(look.texture);
    } else {
        json.Null();
    }
    write_attributes(json, attributes_of(mesh));
}

}  // namespace zol::tool
