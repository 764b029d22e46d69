#include "tools/zol/options.h"

#include <charconv>

#include "tools/zol/exit_codes.h"
#include "tools/zol/number_text.h"

namespace zol::tool {

CLI::App* add_command(CLI::App& parent, const char* name, const char* help) {
    return parent.add_subcommand(name, help)->group("Commands");
}

void add_file(CLI::App* command, std::string& file, const char* help) {
    command->add_option("FILE", file, help)->required()->type_name("");
}

void add_format(CLI::App* command, std::string& format, const std::string& usual) {
    command->add_option("--format", format, "How to write it; " + usual + " when not given")
        ->check(CLI::IsMember({usual, std::string("json")}).description(""))
        ->type_name(usual + "|json");
}

double understood_number(const std::string& what, std::string_view text) {
    const auto number = parse_number(text);
    if (!number) throw UsageError(what + ": '" + std::string(text) + "' is not a number.");
    return *number;
}

long long understood_count(const std::string& what, std::string_view text) {
    long long count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    if (error != std::errc() || end != text.data() + text.size() || count < 0) {
        throw UsageError(what + ": '" + std::string(text) + "' is not a count.");
    }
    return count;
}

}  // namespace zol::tool
