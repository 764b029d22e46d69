// An operating system in memory, linked in place of os_posix.cpp: it can deliver less than
// asked for, fail, and have files that grow, and it tells what it was asked.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "support/os.h"

namespace zol::testing {

struct OsScript {
    /// What every file holds; each handle has a position of its own. Handles are given out
    /// as the system does it, the lowest free one.
    std::string content;
    std::map<os::File, std::int64_t> positions;

    /// For the next reads, in turn: how many bytes are delivered at most, or a failure.
    std::deque<std::optional<std::uint32_t>> read_limits;
    /// What each read asked for.
    std::vector<std::uint32_t> reads;

    std::map<std::string, os::PathKind> paths;
    /// Every path that was asked for, in turn.
    std::vector<std::string> asked;
    std::map<std::string, std::string> environment;
    std::string current_directory;
    std::string executable_path;
};

extern OsScript os_script;

}  // namespace zol::testing
