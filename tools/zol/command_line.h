// What a person may write behind `zol`.
#pragma once

#include <string>
#include <variant>

#include "tools/zol/commands.h"

namespace zol::tool {

/// The command line asked for help or the version, which has been shown.
struct Answered {};

struct CommandLine {
    std::variant<Answered, InfoRequest, BlocksRequest, AtRequest> request;
    /// Where the calls to the library are logged; empty when nowhere.
    std::string log_file;
};

/// Throws UsageError for a command line that makes no sense.
CommandLine parse_command_line(int argc, const char* const* argv);

}  // namespace zol::tool
