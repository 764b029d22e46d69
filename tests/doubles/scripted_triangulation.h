// A triangulation library that answers what a test scripts, and keeps a journal of the
// calls that it got. Linked in place of the engine.
#pragma once

#include <array>
#include <list>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/zolTriangulationExport.h"

namespace zol::doubles {

/// What an operation throws when the script says so.
struct TriangulationFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// One value in each type: a reading gives the member of its own type, so that a test sees
/// which reading was asked for.
struct ScriptedValue {
    std::int32_t int32 = 0;
    std::int64_t int64 = 0;
    bool boolean = false;
    double real = 0.0;
    std::string text = {};
};

/// Answers of every triangulation; a fixture makes it anew for each test.
struct TriangulationScript {
    int points = 5;
    int triangles = 4;
    std::array<double, 3> point{};
    model::tri::TriIndex triangle;
    double volume = 0.0;
    bool predicate = true;
    /// The operation that throws, as the journal names it; none when empty.
    std::string throwing;

    std::uint32_t colour = 0;
    float translucency = 0.0F;
    std::string texture;

    std::list<ubx::object::PropertyLibrary::Entry> attributes;
    /// Adds an attribute. `type` must live as long as the script.
    void Add(const std::string& name, const ubx::object::TypeDescriptor* type,
             ScriptedValue value = {});
};

extern TriangulationScript triangulation_script;

/// One entry a call: "Triangulation::GetPoint 3".
extern std::vector<std::string> triangulation_journal;

}  // namespace zol::doubles
