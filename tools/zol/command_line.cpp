#include "tools/zol/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "tools/zol/exit_codes.h"

namespace zol::tool {

namespace {

constexpr AddCommands kGroups[] = {
    add_block_commands,   add_grid_commands,    add_mesh_commands,
    add_message_commands, add_variant_commands,
};

/// "-.5" as "-0.5": a number's sign is told from an option's by the digit behind it.
std::vector<std::string> with_leading_zeros(int argc, const char* const* argv) {
    std::vector<std::string> arguments(argv + 1, argv + argc);
    for (std::string& argument : arguments) {
        if (argument.size() > 2 && argument.starts_with("-.") && argument[2] >= '0' &&
            argument[2] <= '9') {
            argument.insert(1, "0");
        }
    }
    return arguments;
}

void set_up(CLI::App& app, CommandLine& result) {
    app.require_subcommand(1);
    app.fallthrough();
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    app.get_formatter()->label("REQUIRED", "");
    app.set_version_flag("--version", "zol " ZOL_VERSION, "Show the version and end");
    app.set_help_flag("-h,--help", "Show this help and end");
    app.add_option("--log", result.log_file, "Log each call to the library, and a summary, to FILE")
        ->type_name("FILE");
    // Commands take over the footer that stands when they are added.
    app.footer(kExitCodesHelp);
    for (const AddCommands add : kGroups) add(app, result.action);
    app.footer(std::string("zol COMMAND --help tells more of a command.\n") + kExitCodesHelp);
}

/// "info, blocks or at", of the commands that may stand here.
std::string names_of_commands(const CLI::App& app) {
    std::string names;
    const auto commands = app.get_subcommands([](const CLI::App*) { return true; });
    for (std::size_t i = 0; i < commands.size(); ++i) {
        if (i > 0) names += i + 1 == commands.size() ? " or " : ", ";
        names += commands[i]->get_name();
    }
    return names;
}

/// The innermost command that was named and needs another one behind it, if any.
const CLI::App* unfinished(const CLI::App& app) {
    const CLI::App* command = &app;
    while (!command->get_subcommands().empty()) command = command->get_subcommands().front();
    const bool has_commands =
        !command->get_subcommands([](const CLI::App*) { return true; }).empty();
    return has_commands ? command : nullptr;
}

CommandLine parsed(int argc, const char* const* argv) {
    CommandLine result;
    CLI::App app{"Reads mine-planning data and tells what is in it.", "zol"};
    set_up(app, result);
    try {
        std::vector<std::string> arguments = with_leading_zeros(argc, argv);
        // The parser takes the last one first.
        std::reverse(arguments.begin(), arguments.end());
        app.parse(std::move(arguments));
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) {
            app.exit(error, std::cout, std::cerr);
            return {};
        }
        const CLI::App* command = unfinished(app);
        if (command == nullptr) throw UsageError(error.what());
        throw UsageError("a command is needed: " + names_of_commands(*command) + ".");
    }
    return result;
}

}  // namespace

CommandLine parse_command_line(int argc, const char* const* argv) {
    try {
        return parsed(argc, argv);
    } catch (const UsageError& error) {
        throw UsageError(std::string(error.what()) + "\nzol --help tells how it is used.");
    }
}

}  // namespace zol::tool
