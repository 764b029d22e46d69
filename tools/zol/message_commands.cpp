// The command line of the commands for messages.

#include "tools/zol/message_commands.h"

#include <memory>

#include "tools/zol/command_groups.h"
#include "tools/zol/options.h"

namespace zol::tool {

namespace {

void add_translate(CLI::App& app, Action& chosen) {
    auto request = std::make_shared<TranslateRequest>();
    CLI::App* command = add_command(app, "translate", "What a message is in another language");
    command->add_option("LANGUAGE", request->language, "The language, as in German_dictionary")
        ->required()
        ->type_name("");
    command->add_option("TEXT", request->text, "The message, with its context if it has one")
        ->required()
        ->type_name("");
    command->callback([request, &chosen] {
        chosen = [request](Output& output) { return run_translate(*request, output); };
    });
}

void add_dictionary_check(CLI::App& dictionary, Action& chosen) {
    struct Arguments {
        DictionaryCheckRequest request;
        std::string format;
    };
    auto given = std::make_shared<Arguments>();
    CLI::App* command = add_command(dictionary, "check", "What is wrong with a dictionary");
    add_file(command, given->request.file, "The dictionary");
    add_format(command, given->format, "text");
    command->callback([given, &chosen] {
        given->request.as_json = given->format == "json";
        chosen = [given](Output& output) { return run_dictionary_check(given->request, output); };
    });
}

}  // namespace

void add_message_commands(CLI::App& app, Action& chosen) {
    add_translate(app, chosen);
    CLI::App* dictionary = add_command(app, "dictionary", "Looks after dictionaries of messages");
    dictionary->require_subcommand(1);
    add_dictionary_check(*dictionary, chosen);
}

}  // namespace zol::tool
