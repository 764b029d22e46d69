// The command line of `zol variant`.

#include "tools/zol/variant_commands.h"

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "tools/zol/command_groups.h"
#include "tools/zol/exit_codes.h"
#include "tools/zol/options.h"

namespace zol::tool {

namespace {

constexpr std::array<std::pair<std::string_view, VariantForm>, 3> kForms = {{
    {"text", VariantForm::kText},
    {"json", VariantForm::kJson},
    {"sealed", VariantForm::kSealed},
}};

std::optional<VariantForm> understood_form(const std::string& name) {
    for (const auto& [known, form] : kForms) {
        if (name == known) return form;
    }
    if (name.empty()) return std::nullopt;
    throw UsageError("--to: '" + name + "' is none of text, json and sealed.");
}

}  // namespace

void add_variant_commands(CLI::App& app, Action& chosen) {
    struct Arguments {
        VariantRequest request;
        std::string form;
    };
    auto given = std::make_shared<Arguments>();
    CLI::App* command =
        add_command(app, "variant", "What is in a file of values, or another form of it");
    add_file(command, given->request.file,
             "The file of values: text, or binary, in the clear or enciphered");
    command->add_option("OUT", given->request.out, "Where to write it; standard output without it")
        ->type_name("");
    command->add_option("--to", given->form, "The form to write")->type_name("text|json|sealed");
    command->callback([given, &chosen] {
        VariantRequest& request = given->request;
        request.form = understood_form(given->form);
        if (request.out && !request.form) throw UsageError("OUT needs --to text, json or sealed.");
        if (request.form == VariantForm::kSealed && !request.out) {
            throw UsageError("--to sealed needs OUT, the file to write.");
        }
        chosen = [given](Output& output) { return run_variant(given->request, output); };
    });
}

}  // namespace zol::tool
