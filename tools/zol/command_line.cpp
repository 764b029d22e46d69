#include "tools/zol/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <charconv>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/zol/exit_codes.h"
#include "tools/zol/number_text.h"

namespace zol::tool {

namespace {

constexpr const char* kFileHelp =
    "The block model. In a file of several elements, FILE#ELEMENT picks one";

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

Box understood_box(std::string_view text) {
    const std::string what = "--where-in";
    std::array<double, 6> bounds{};
    for (std::size_t i = 0; i < bounds.size(); ++i) {
        const bool is_last = i + 1 == bounds.size();
        const std::size_t comma = is_last ? std::string_view::npos : text.find(',');
        if (!is_last && comma == std::string_view::npos) {
            throw UsageError(what + ": six numbers are needed, x0,y0,z0,x1,y1,z1.");
        }
        bounds[i] = understood_number(what, text.substr(0, comma));
        if (!is_last) text.remove_prefix(comma + 1);
    }
    const Box box{{bounds[0], bounds[1], bounds[2]}, {bounds[3], bounds[4], bounds[5]}};
    if (box.lower.x > box.upper.x || box.lower.y > box.upper.y || box.lower.z > box.upper.z) {
        throw UsageError(what + ": the lower corner x0,y0,z0 comes first, then the upper one.");
    }
    return box;
}

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

/// One place for what the parser fills; its texts are understood when it is done.
class Parser {
public:
    Parser() {
        app_.require_subcommand(1);
        app_.fallthrough();
        app_.get_formatter()->label("SUBCOMMAND", "COMMAND");
        app_.get_formatter()->label("REQUIRED", "");
        app_.set_version_flag("--version", "zol " ZOL_VERSION, "Show the version and end");
        app_.set_help_flag("-h,--help", "Show this help and end");
        app_.add_option("--log", log_file_, "Log each call to the library, and a summary, to FILE")
            ->type_name("FILE");
        app_.footer(kExitCodesHelp);
        AddInfo();
        AddBlocks();
        AddAt();
        app_.footer(std::string("zol COMMAND --help tells more of a command.\n") + kExitCodesHelp);
    }

    CommandLine Parse(int argc, const char* const* argv) {
        try {
            std::vector<std::string> arguments = with_leading_zeros(argc, argv);
            // The parser takes the last one first.
            std::reverse(arguments.begin(), arguments.end());
            app_.parse(std::move(arguments));
        } catch (const CLI::ParseError& error) {
            if (error.get_exit_code() == 0) {
                app_.exit(error, std::cout, std::cerr);
                return {Answered{}, {}};
            }
            const bool has_command = !app_.get_subcommands().empty();
            throw UsageError(has_command ? error.what()
                                         : "a command is needed: info, blocks or at.");
        }
        return {Request(), log_file_};
    }

private:
    CLI::App* AddCommand(const char* name, const char* help, std::string& file) {
        CLI::App* command = app_.add_subcommand(name, help)->group("Commands");
        command->add_option("FILE", file, kFileHelp)->required()->type_name("");
        return command;
    }

    void AddFormat(CLI::App* command, const std::string& usual) {
        command->add_option("--format", format_, "How to write it; " + usual + " when not given")
            ->check(CLI::IsMember({usual, std::string("json")}).description(""))
            ->type_name(usual + "|json");
    }

    void AddInfo() {
        info_ = AddCommand("info", "What a block model says about itself", info_request_.file);
        AddFormat(info_, "text");
    }

    void AddBlocks() {
        blocks_ = AddCommand("blocks", "The blocks and their values, one row a block",
                             blocks_request_.file);
        blocks_
            ->add_option("--vars", blocks_request_.variables,
                         "Only these variables, predefined ones too; may be given several times")
            ->type_name("A,B,...")
            ->expected(1)
            ->take_all();
        blocks_->add_option("--first", first_, "At most N blocks")->type_name("N");
        blocks_
            ->add_option("--where-in", where_in_,
                         "Only blocks whose centroid lies in this box, in model coordinates")
            ->type_name("x0,y0,z0,x1,y1,z1");
        AddFormat(blocks_, "csv");
    }

    void AddAt() {
        at_ = AddCommand("at", "The block at a point, with all its values", at_request_.file);
        at_->add_option("x", x_, "The point, in model coordinates")->required()->type_name("");
        at_->add_option("y", y_, "its y")->required()->type_name("");
        at_->add_option("z", z_, "its z")->required()->type_name("");
        at_->add_flag("--world", at_request_.is_world, "The point is in world coordinates");
        AddFormat(at_, "text");
    }

    decltype(CommandLine::request) Request() {
        const bool as_json = format_ == "json";
        if (info_->parsed()) {
            info_request_.as_json = as_json;
            return info_request_;
        }
        if (blocks_->parsed()) {
            blocks_request_.as_json = as_json;
            if (first_) blocks_request_.first = understood_count("--first", *first_);
            if (where_in_) blocks_request_.where_in = understood_box(*where_in_);
            return blocks_request_;
        }
        at_request_.as_json = as_json;
        at_request_.point = {understood_number("x", x_), understood_number("y", y_),
                             understood_number("z", z_)};
        return at_request_;
    }

    CLI::App app_{"Reads block models and tells what is in them.", "zol"};
    CLI::App* info_ = nullptr;
    CLI::App* blocks_ = nullptr;
    CLI::App* at_ = nullptr;
    InfoRequest info_request_;
    BlocksRequest blocks_request_;
    AtRequest at_request_;
    std::string log_file_;
    std::string format_;
    std::optional<std::string> first_;
    std::optional<std::string> where_in_;
    std::string x_;
    std::string y_;
    std::string z_;
};

}  // namespace

CommandLine parse_command_line(int argc, const char* const* argv) {
    try {
        return Parser().Parse(argc, argv);
    } catch (const UsageError& error) {
        throw UsageError(std::string(error.what()) + "\nzol --help tells how it is used.");
    }
}

}  // namespace zol::tool
