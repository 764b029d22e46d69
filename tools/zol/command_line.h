// What a person may write behind `zol`.
#pragma once

#include <string>

#include "tools/zol/command_groups.h"

namespace zol::tool {

struct CommandLine {
    /// Empty where the command line asked for help or the version, which has been shown.
    Action action;
    /// Where the calls to the library are logged; empty when nowhere.
    std::string log_file;
};

/// Throws UsageError for a command line that makes no sense.
CommandLine parse_command_line(int argc, const char* const* argv);

}  // namespace zol::tool
