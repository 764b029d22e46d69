// `zol translate`: tries a dictionary.

#include "support/dictionary.h"
#include "support/messages.h"
#include "support/path.h"
#include "tools/zol/exit_codes.h"
#include "tools/zol/message_commands.h"

namespace zol::tool {

namespace {

/// The library is silent about a dictionary that is not there; a person wants to know.
void require_dictionary(const std::string& language) {
    const auto path = support::dictionary_path(language);
    if (!path) throw ReadFailure("neither OSTREL_FLIB nor OSTREL says where dictionaries are.");
    if (path_Accepts(path->c_str(), PATH_ACCEPT_FILE) == 0) {
        throw ReadFailure("there is no dictionary '" + *path + "'.");
    }
}

}  // namespace

int run_translate(const TranslateRequest& request, Output& output) {
    const std::string& language = request.language;
    if (!language.empty() && language != "English") require_dictionary(language);
    output.Write(msg_TranslateTo(language, request.text) + '\n');
    return kGood;
}

}  // namespace zol::tool
