// What `zol mesh info` tells, gathered, and in the two forms in which it is told.
#pragma once

#include <optional>
#include <string>

#include "tools/zol/json_writer.h"
#include "tools/zol/mesh_shape.h"
#include "tools/zol/output.h"

namespace zol::tool {

/// What is known without holding triangles against each other.
struct MeshReport {
    std::string name;
    int n_points = 0;
    int n_triangles = 0;
    std::size_t n_degenerate = 0;
    Box extent;
    double area = 0;
    EdgeReport edges;
    /// Nothing for a mesh that is not closed.
    std::optional<double> volume;
    bool is_consistent = false;
    bool is_solid = false;
};

/// What is not.
struct MeshMeetings {
    bool is_surface = false;
    /// Nothing for a mesh that is a surface, a solid, or without triangles.
    std::optional<SecondHeight> second_height;
    /// Nothing for a mesh that does not cross itself.
    std::optional<CrossingReport> crossings;
};

void write_report(const MeshReport& report, Output& output);
void write_meetings(const MeshMeetings& meetings, Output& output);
/// How it looks and what its attributes are.
void write_look(const Mesh& mesh, Output& output);

/// Members of one object.
void write_report(const MeshReport& report, JsonWriter& json);
void write_meetings(const MeshMeetings& meetings, JsonWriter& json);
void write_look(const Mesh& mesh, JsonWriter& json);

}  // namespace zol::tool
