// What can be wrong with a dictionary that loads all the same.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "support/dictionary_file.h"

namespace zol::tool {

struct Finding {
    std::size_t line = 0;  ///< from 1
    const char* kind = "";
    std::string_view key;  ///< in what was checked
    std::string text;
};

/// What is wrong with these pairs, by lines.
std::vector<Finding> check_dictionary(const support::DictionaryPairs& pairs);

}  // namespace zol::tool
