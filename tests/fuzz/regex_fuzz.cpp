// Patterns with a text each: whatever the bytes, the calls end, agree with each other and
// stay within the text. Input: a pattern to the first newline, then a text.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "support/regex.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

// References take time that grows with a power of the text's length.
constexpr std::size_t kMostText = 40;

void require(bool holds, const char* what, const std::string& pattern, const std::string& text) {
    if (!holds) {
        std::cerr << what << ": pattern " << pattern << "\ntext " << text << '\n';
        std::abort();
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string input(data, data + size);
    const std::size_t line = input.find('\n');
    const std::string pattern = input.substr(0, line).c_str();
    std::string text = line == input.npos ? "" : input.substr(line + 1, kMostText).c_str();
    for (const bool ignore_case : {false, true}) {
        std::vector<std::string> groups;
        const std::int32_t length = regex_Match(text, pattern, ignore_case, groups);
        require(length >= 0 && static_cast<std::size_t>(length) <= text.size(), "length", pattern,
                text);
        require(length == regex_Match(text, pattern, ignore_case), "two lengths", pattern, text);
        require(groups.empty() == (length == 0), "groups", pattern, text);
        for (const std::string& group : groups) {
            require(group.size() <= groups[0].size(), "group", pattern, text);
        }
        const std::string same = pat_Substitute(text, pattern, "\\0", ignore_case, false);
        require(same == text || (same.empty() && length == 0), "substitute", pattern, text);
    }
    return 0;
}
