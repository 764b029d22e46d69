// The command line of the commands that read grids, all below `zol grid`.

#include "tools/zol/grid_commands.h"

#include <memory>

#include "tools/zol/command_groups.h"
#include "tools/zol/exit_codes.h"
#include "tools/zol/options.h"

namespace zol::tool {

namespace {

constexpr const char* kFileHelp =
    "The grid. FILE#BAND picks a band of a raster, FILE#ELEMENT a surface among several";

void add_info(CLI::App& grid, Action& chosen) {
    struct Arguments {
        GridInfoRequest request;
        std::string format;
    };
    auto given = std::make_shared<Arguments>();
    CLI::App* command =
        add_command(grid, "info", "Where a grid lies, and what its values are like");
    add_file(command, given->request.file, kFileHelp);
    command->add_flag("--no-values", given->request.only_places,
                      "Leave out what asks for a walk over all values");
    add_format(command, given->format, "text");
    command->callback([given, &chosen] {
        given->request.as_json = given->format == "json";
        chosen = [given](Output& output) { return run_grid_info(given->request, output); };
    });
}

void add_at(CLI::App& grid, Action& chosen) {
    struct Arguments {
        GridAtRequest request;
        std::string x;
        std::string y;
        std::string format;
    };
    auto given = std::make_shared<Arguments>();
    CLI::App* command =
        add_command(grid, "at", "The nearest node to a point, and the value between the nodes");
    add_file(command, given->request.file, kFileHelp);
    command->add_option("x", given->x, "The point, in the grid's coordinates")
        ->required()
        ->type_name("");
    command->add_option("y", given->y, "its y")->required()->type_name("");
    add_format(command, given->format, "text");
    command->callback([given, &chosen] {
        given->request.as_json = given->format == "json";
        given->request.x = understood_number("x", given->x);
        given->request.y = understood_number("y", given->y);
        chosen = [given](Output& output) { return run_grid_at(given->request, output); };
    });
}

void add_export(CLI::App& grid, Action& chosen) {
    struct Arguments {
        GridExportRequest request;
        std::string format = "csv";
    };
    auto given = std::make_shared<Arguments>();
    CLI::App* command = add_command(grid, "export", "All nodes, as rows or as an ESRI ASCII grid");
    add_file(command, given->request.file, kFileHelp);
    command
        ->add_option("--format", given->format,
                     "csv: a row i,j,x,y,z for each node that is not masked, z being its value, "
                     "from the north; asc: ESRI ASCII. csv when not given")
        ->check(CLI::IsMember({"csv", "asc"}).description(""))
        ->type_name("csv|asc");
    command->add_option("-o,--output", given->request.to, "Write to OUT, not to standard output")
        ->type_name("OUT");
    command->add_flag("--all", given->request.all, "In csv, masked nodes too, with an empty value");
    command->callback([given, &chosen] {
        given->request.as_asc = given->format == "asc";
        if (given->request.all && given->request.as_asc) {
            throw UsageError("--all is for csv: an ESRI ASCII grid has all nodes anyway.");
        }
        chosen = [given](Output& output) { return run_grid_export(given->request, output); };
    });
}

void add_plot(CLI::App& grid, Action& chosen) {
    auto request = std::make_shared<GridPlotRequest>();
    CLI::App* command = add_command(grid, "plot", "A shaded relief with a colour bar, as a PNG");
    add_file(command, request->file, kFileHelp);
    command->add_option("-o,--output", request->to, "The picture to write")
        ->required()
        ->type_name("OUT.png");
    command->callback(
        [request, &chosen] { chosen = [request](Output&) { return run_grid_plot(*request); }; });
}

}  // namespace

void add_grid_commands(CLI::App& app, Action& chosen) {
    CLI::App* grid = add_command(app, "grid", "Grids: info, at, export, plot");
    grid->require_subcommand(1);
    add_info(*grid, chosen);
    add_at(*grid, chosen);
    add_export(*grid, chosen);
    add_plot(*grid, chosen);
}

}  // namespace zol::tool
