// The commands of `zol` for messages and their dictionaries. What keeps one from an
// answer is thrown as one of the errors of exit_codes.h.
#pragma once

#include <string>

#include "tools/zol/output.h"

namespace zol::tool {

struct TranslateRequest {
    std::string language;
    std::string text;
};

struct DictionaryCheckRequest {
    std::string file;
    bool as_json = false;
};

int run_translate(const TranslateRequest& request, Output& output);
int run_dictionary_check(const DictionaryCheckRequest& request, Output& output);

}  // namespace zol::tool
