// What the options of several commands have in common. Texts are told from numbers
// here and not by the parser, so that every number is read the same way in every
// locale, and every refusal sounds the same.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <string_view>

namespace zol::tool {

CLI::App* add_command(CLI::App& parent, const char* name, const char* help);

/// The file that a command reads, as its first argument.
void add_file(CLI::App* command, std::string& file, const char* help);

/// --format, with `usual` when it is not given and "json" besides.
void add_format(CLI::App* command, std::string& format, const std::string& usual);

/// Throw UsageError, which says of `what` the text is no number.
double understood_number(const std::string& what, std::string_view text);
long long understood_count(const std::string& what, std::string_view text);

}  // namespace zol::tool
