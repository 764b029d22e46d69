#include <algorithm>

#include "tools/zol/layout.h"
#include "tools/zol/mesh_attributes.h"
#include "tools/zol/mesh_report.h"
#include "tools/zol/number_text.h"

namespace zol::tool {

namespace {

constexpr std::size_t kLabelWidth = 14;

const char* yes_or_no(bool value) {
    return value ? "yes" : "no";
}

std::string counted(std::size_t number, const char* one, const char* several) {
    return std::to_string(number) + ' ' + (number == 1 ? one : several);
}

/// "3 edges with one triangle, the first from 0 0 0 to 1 0 0"
std::string fault_text(const EdgeFault& fault, const char* kind) {
    const auto& [from, to] = *fault.first;
    return counted(fault.number, "edge", "edges") + ' ' + kind +
           (fault.number == 1 ? ", from " : ", the first from ") + point_text(from) + " to " +
           point_text(to);
}

void write_edges(const EdgeReport& edges, Output& output) {
    const auto write_fault = [&](const char* label, const EdgeFault& fault, const char* kind) {
        if (fault.number > 0) write_fact(output, kLabelWidth, label, fault_text(fault, kind));
    };
    write_fault("  border", edges.border, "with one triangle");
    write_fault("  crowded", edges.crowded, "with more than two triangles");
    write_fault("  misdirected", edges.misdirected,
                "with two triangles that run along it in the same direction");
}

std::string volume_text(const MeshReport& report) {
    if (report.volume) return std::string(computed_text(*report.volume));
    return report.n_triangles == 0 ? "none: there are no triangles" : "none: it is not closed";
}

/// A coordinate that was computed.
std::string near_text(double coordinate) {
    return std::string(coordinate_text(coordinate));
}

std::string crossings_text(const CrossingReport& crossings) {
    const bool is_one = crossings.is_complete && crossings.number == 1;
    return std::string("yes: ") + (crossings.is_complete ? "" : "at least ") +
           counted(crossings.number, "pair", "pairs") + " of triangles, " +
           (is_one ? "" : "the first ") + std::to_string(crossings.first.first) + " and " +
           std::to_string(crossings.first.second) + " near " + near_text(crossings.near.x) + ' ' +
           near_text(crossings.near.y) + ' ' + near_text(crossings.near.z);
}

/// "triangles 3 and 8 have the heights 0 and 5 at 1 2"
std::string second_height_text(const SecondHeight& found) {
    const auto [first, second] = found.triangles;
    const std::string number = std::to_string(first);
    return (first == second ? "triangle " + number + " stands vertical, with"
                            : "triangles " + number + " and " + std::to_string(second) + " have") +
           " the heights " + near_text(found.heights.first) + " and " +
           near_text(found.heights.second) + " at " + near_text(found.x) + ' ' + near_text(found.y);
}

std::string surface_text(const MeshMeetings& meetings) {
    if (!meetings.second_height) return yes_or_no(meetings.is_surface);
    return "no: " + second_height_text(*meetings.second_height);
}

std::string translucency_text(const Appearance& look) {
    return std::string(number_text(static_cast<float>(look.translucency))) +
           (look.is_translucent ? "" : ", opaque");
}

void write_attributes(const std::vector<MeshAttribute>& attributes, Output& output) {
    write_line(output, "");
    write_line(output, "Attributes (" + std::to_string(attributes.size()) + ")");
    std::size_t width = 0;
    for (const MeshAttribute& attribute : attributes) {
        width = std::max(width, display_width(attribute.name));
    }
    constexpr std::size_t kTypeWidth = 7;
    for (const MeshAttribute& attribute : attributes) {
        const bool is_alone = attribute.n_same == 1;
        write_line(
            output,
            "  " + padded(attribute.name, width) + "  " + padded(attribute.type, kTypeWidth) +
                "  " + value_text(attribute) +
                (is_alone ? "" : "  (" + std::to_string(attribute.n_same) + " of this name)"));
    }
}

}  // namespace

void write_report(const MeshReport& report, Output& output) {
    write_fact(output, kLabelWidth, "Mesh", report.name);
    write_fact(output, kLabelWidth, "Points", std::to_string(report.n_points));
    const std::string degenerate =
        report.n_degenerate == 0 ? ""
                                 : ", " + std::to_string(report.n_degenerate) + " without area";
    write_fact(output, kLabelWidth, "Triangles", std::to_string(report.n_triangles) + degenerate);
    write_fact(output, kLabelWidth, "Extent", box_text(report.extent));
    write_fact(output, kLabelWidth, "Area", computed_text(report.area));
    write_fact(output, kLabelWidth, "Volume", volume_text(report));
    write_fact(output, kLabelWidth, "Solid", yes_or_no(report.is_solid));
    write_fact(output, kLabelWidth, "Consistent", yes_or_no(report.is_consistent));
    write_edges(report.edges, output);
}

void write_meetings(const MeshMeetings& meetings, Output& output) {
    write_fact(output, kLabelWidth, "Surface", surface_text(meetings));
    write_fact(output, kLabelWidth, "Crossing",
               meetings.crossings ? crossings_text(*meetings.crossings) : "no");
}

void write_look(const Mesh& mesh, Output& output) {
    const Appearance look = mesh.Look();
    const auto& [red, green, blue] = look.colour;
    write_fact(output, kLabelWidth, "Colour",
               std::to_string(red) + ' ' + std::to_string(green) + ' ' + std::to_string(blue));
    write_fact(output, kLabelWidth, "Translucency", translucency_text(look));
    write_fact(output, kLabelWidth, "Texture", look.is_textured ? look.texture : "none");
    write_attributes(attributes_of(mesh), output);
}

}  // namespace zol::tool
