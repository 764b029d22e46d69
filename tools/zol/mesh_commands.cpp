// The command line of the commands that read triangulations, all below `zol mesh`.

#include "tools/zol/mesh_commands.h"

#include <map>
#include <memory>

#include "tools/zol/command_groups.h"
#include "tools/zol/exit_codes.h"
#include "tools/zol/options.h"

namespace zol::tool {

namespace {

constexpr const char* kFileHelp = "The mesh. In a file of several elements, FILE#ELEMENT picks one";

void add_info(CLI::App& mesh, Action& chosen) {
    struct Arguments {
        MeshInfoRequest request;
        std::string format;
    };
    auto given = std::make_shared<Arguments>();
    CLI::App* command = add_command(
        mesh, "info", "Size, volume and look of a mesh, and where it is open or crosses itself");
    add_file(command, given->request.file, kFileHelp);
    command->add_flag("--quick", given->request.quick,
                      "Leave out whether it is a surface, and where it crosses itself");
    add_format(command, given->format, "text");
    command->callback([given, &chosen] {
        given->request.as_json = given->format == "json";
        chosen = [given](Output& output) { return run_mesh_info(given->request, output); };
    });
}

struct ContainsArguments {
    MeshContainsRequest request;
    std::optional<std::string> x;
    std::optional<std::string> y;
    std::optional<std::string> z;
    std::optional<std::string> points;
    std::optional<std::string> tolerance;
    std::string format;
};

void understand(ContainsArguments& given) {
    MeshContainsRequest& request = given.request;
    if (given.points.has_value() == given.x.has_value()) {
        throw UsageError("either a point x y z is needed, or --points FILE.csv.");
    }
    if (given.points) {
        if (given.format == "text") throw UsageError("--format text is for one point.");
        request.points = *given.points;
    } else {
        if (!given.z) throw UsageError("a point needs x, y and z.");
        if (given.format == "csv") throw UsageError("--format csv is for --points.");
        if (request.to) throw UsageError("-o is for --points.");
        request.point = {understood_number("x", *given.x), understood_number("y", *given.y),
                         understood_number("z", *given.z)};
    }
    if (given.tolerance) request.tolerance = understood_number("--tolerance", *given.tolerance);
    if (request.tolerance < 0) throw UsageError("--tolerance: a distance is not below 0.");
    request.as_json = given.format == "json";
}

void add_contains(CLI::App& mesh, Action& chosen) {
    auto given = std::make_shared<ContainsArguments>();
    CLI::App* command =
        add_command(mesh, "contains", "Whether points are inside a mesh, on it or outside");
    add_file(command, given->request.file, kFileHelp);
    command->add_option("x", given->x, "A point, in the coordinates of the mesh")->type_name("");
    command->add_option("y", given->y, "its y")->type_name("");
    command->add_option("z", given->z, "its z")->type_name("");
    command
        ->add_option("--points", given->points,
                     "The points of a text file, from its columns x, y and z, or from the first "
                     "three that hold numbers")
        ->type_name("FILE.csv");
    command
        ->add_option("--tolerance", given->tolerance,
                     "How far from the surface a point is still on it; 0 when not given")
        ->type_name("DISTANCE");
    command
        ->add_option("-o,--output", given->request.to,
                     "With --points, write to OUT, not to standard output")
        ->type_name("OUT");
    command
        ->add_option("--format", given->format,
                     "How to write it; when not given, text for one point, csv for --points")
        ->check(CLI::IsMember({"text", "csv", "json"}).description(""))
        ->type_name("text|csv|json");
    command->callback([given, &chosen] {
        understand(*given);
        chosen = [given](Output& output) { return run_mesh_contains(given->request, output); };
    });
}

const std::map<std::string, MeshForm> kForms{
    {"obj", MeshForm::kObj},
    {"stl", MeshForm::kStl},
    {"ply", MeshForm::kPly},
    {"csv", MeshForm::kCsv},
};

void add_export(CLI::App& mesh, Action& chosen) {
    struct Arguments {
        MeshExportRequest request;
        std::string to;
        bool is_ascii = false;
    };
    auto given = std::make_shared<Arguments>();
    CLI::App* command = add_command(mesh, "export", "The mesh in another format");
    add_file(command, given->request.file, kFileHelp);
    command
        ->add_option("--to", given->to,
                     "obj; stl: binary, with floats; ply: binary, with doubles; csv: a row of nine "
                     "coordinates for each triangle")
        ->required()
        ->check(CLI::IsMember(&kForms).description(""))
        ->type_name("obj|stl|ply|csv");
    command->add_option("-o,--output", given->request.to, "Write to OUT, not to standard output")
        ->type_name("OUT");
    command->add_flag("--ascii", given->is_ascii, "For stl, the text form, with all digits");
    command->callback([given, &chosen] {
        given->request.form = kForms.at(given->to);
        if (given->is_ascii) {
            if (given->request.form != MeshForm::kStl) throw UsageError("--ascii is for --to stl.");
            given->request.form = MeshForm::kStlText;
        }
        chosen = [given](Output& output) { return run_mesh_export(given->request, output); };
    });
}

}  // namespace

void add_mesh_commands(CLI::App& app, Action& chosen) {
    CLI::App* mesh = add_command(app, "mesh", "Triangulations: info, contains, export");
    mesh->require_subcommand(1);
    add_info(*mesh, chosen);
    add_contains(*mesh, chosen);
    add_export(*mesh, chosen);
}

}  // namespace zol::tool
