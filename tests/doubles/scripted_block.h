// A block model library that answers what a test scripts, and keeps a journal of
// the calls that it got. Linked in place of the engine.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/zolBlockExport.h"

namespace zol::doubles {

/// What an operation throws when the script says so.
struct EngineFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Answers of the cursor operations, of a model or of its match.
struct ScriptedCursor {
    bool eof = false;
    double number = 0.0;
    std::string text;
    std::int64_t position = 0;
    geometry::Extent extent{0, 0, 0, 0, 0, 0};
};

struct ScriptedSchema {
    bool original = true;
    geometry::Extent extent{0, 0, 0, 0, 0, 0};
    geometry::Point3I dimensions = {};
    geometry::Coord3D least = {};
    geometry::Coord3D greatest = {};
};

/// Answers of every model; a fixture makes it anew for each test.
struct Script {
    bool opens = true;
    int close_result = 0;
    std::string name = "scripted";
    /// The operation that throws, as the journal names it; none when empty.
    std::string throwing;

    ScriptedCursor model;
    ScriptedCursor match;
    geometry::Extent match_extent{0, 0, 0, 0, 0, 0};
    double match_volume = 0.0;

    geometry::Extent extent{0, 0, 0, 0, 0, 0};
    geometry::Coord3D origin;
    geometry::Coord3D orientation;
    bool strat = false;
    std::int64_t blocks = 0;
    std::vector<ScriptedSchema> schemas;
    /// What a conversion or a search adds to its input, or answers.
    double to_world_shift = 0.0;
    double to_model_shift = 0.0;
    int find_result = 0;
    int move_result = 0;

    std::map<int, std::vector<std::string>> fields;
    bool is_number = false;
    bool is_string = false;
    bool is_predefined = false;
    double default_number = 0.0;
    std::string default_text;
    std::string description;
    std::string type;
    std::vector<std::string> translations;
};

extern Script script;

/// One entry a call: "Model::Get grade", "Match::Close".
extern std::vector<std::string> journal;

/// Runs inside every operation of the library, after its entry in the journal.
extern std::function<void()> during_call;

}  // namespace zol::doubles
