// The language of regex_Match and pat_Substitute, told to an engine that reads it
// differently in places: a pattern is read once, byte by byte, and written anew so that
// today's re_compile_pattern understands it as meant.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zol::support {

/// What the engine is given, or why there is nothing to give.
struct EnginePattern {
    std::string text;
    const char* error = nullptr;  // in the engine's own words; null when `text` stands
    // Repeats something that can be empty in more than one way: today's engine finds the
    // match, but its search for the groups may never end.
    bool groups_unsafe = false;
    // The engine's number of each group from 1 on; empty when it is the same.
    std::vector<std::size_t> groups;
};

/// Reads a pattern without null bytes. With `ignore_case` lists are folded here, member
/// by member; all else is folded by the engine's translate table.
EnginePattern engine_pattern(std::string_view pattern, bool ignore_case);

}  // namespace zol::support
