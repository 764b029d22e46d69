// The command line of the commands that read block models.

#include "tools/zol/block_commands.h"

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "tools/zol/command_groups.h"
#include "tools/zol/exit_codes.h"
#include "tools/zol/options.h"

namespace zol::tool {

namespace {

constexpr const char* kFileHelp =
    "The block model. In a file of several elements, FILE#ELEMENT picks one";

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

void add_info(CLI::App& app, Action& chosen) {
    struct Arguments {
        InfoRequest request;
        std::string format;
    };
    auto given = std::make_shared<Arguments>();
    CLI::App* command = add_command(app, "info", "What a block model says about itself");
    add_file(command, given->request.file, kFileHelp);
    add_format(command, given->format, "text");
    command->callback([given, &chosen] {
        given->request.as_json = given->format == "json";
        chosen = [given](Output& output) { return run_info(given->request, output); };
    });
}

void add_blocks(CLI::App& app, Action& chosen) {
    struct Arguments {
        BlocksRequest request;
        std::optional<std::string> first;
        std::optional<std::string> where_in;
        std::string format;
    };
    auto given = std::make_shared<Arguments>();
    CLI::App* command = add_command(app, "blocks", "The blocks and their values, one row a block");
    add_file(command, given->request.file, kFileHelp);
    command
        ->add_option("--vars", given->request.variables,
                     "Only these variables, predefined ones too; may be given several times")
        ->type_name("A,B,...")
        ->expected(1)
        ->take_all();
    command->add_option("--first", given->first, "At most N blocks")->type_name("N");
    command
        ->add_option("--where-in", given->where_in,
                     "Only blocks whose centroid lies in this box, in model coordinates")
        ->type_name("x0,y0,z0,x1,y1,z1");
    add_format(command, given->format, "csv");
    command->callback([given, &chosen] {
        BlocksRequest& request = given->request;
        request.as_json = given->format == "json";
        if (given->first) request.first = understood_count("--first", *given->first);
        if (given->where_in) request.where_in = understood_box(*given->where_in);
        chosen = [given](Output& output) { return run_blocks(given->request, output); };
    });
}

void add_at(CLI::App& app, Action& chosen) {
    struct Arguments {
        AtRequest request;
        std::string x;
        std::string y;
        std::string z;
        std::string format;
    };
    auto given = std::make_shared<Arguments>();
    CLI::App* command = add_command(app, "at", "The block at a point, with all its values");
    add_file(command, given->request.file, kFileHelp);
    command->add_option("x", given->x, "The point, in model coordinates")
        ->required()
        ->type_name("");
    command->add_option("y", given->y, "its y")->required()->type_name("");
    command->add_option("z", given->z, "its z")->required()->type_name("");
    command->add_flag("--world", given->request.is_world, "The point is in world coordinates");
    add_format(command, given->format, "text");
    command->callback([given, &chosen] {
        given->request.as_json = given->format == "json";
        given->request.point = {understood_number("x", given->x), understood_number("y", given->y),
                                understood_number("z", given->z)};
        chosen = [given](Output& output) { return run_at(given->request, output); };
    });
}

}  // namespace

void add_block_commands(CLI::App& app, Action& chosen) {
    add_info(app, chosen);
    add_blocks(app, chosen);
    add_at(app, chosen);
}

}  // namespace zol::tool
