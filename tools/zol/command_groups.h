// How commands join the command line: each group adds its commands to the parser in
// a file of its own, and command_line.cpp lists the groups.
#pragma once

#include <functional>

#include "tools/zol/output.h"

namespace CLI {
class App;
}

namespace zol::tool {

/// What the chosen command does; gives the exit code.
using Action = std::function<int(Output&)>;

/// Adds commands to `app`. The one that the command line names puts what it does into
/// `chosen`, which outlives the parser.
using AddCommands = void (*)(CLI::App& app, Action& chosen);

void add_block_commands(CLI::App& app, Action& chosen);
void add_grid_commands(CLI::App& app, Action& chosen);
void add_mesh_commands(CLI::App& app, Action& chosen);
void add_message_commands(CLI::App& app, Action& chosen);
void add_variant_commands(CLI::App& app, Action& chosen);

}  // namespace zol::tool
