#include <cstring>
#include <limits>

#include "support/err_print.h"
#include "support/regex.h"
#include "support/regex_engine.h"

namespace {

using namespace zol::support;

constexpr std::size_t kLongestText = std::numeric_limits<std::int32_t>::max();

void append_expanded(std::string& result, const std::string& replacement,
                     const std::vector<std::string>& groups) {
    for (std::size_t at = 0; at < replacement.size(); ++at) {
        const char next = at + 1 < replacement.size() ? replacement[at + 1] : '\0';
        if (replacement[at] != '\\' || next < '0' || next > '9') {
            result += replacement[at];
            continue;
        }
        ++at;
        const auto group = static_cast<std::size_t>(next - '0');
        if (group < groups.size()) {
            result += groups[group];
        }
    }
}

}  // namespace

std::string pat_Substitute(const std::string& text, const std::string& pattern,
                           const std::string& replacement, bool ignore_case, bool repeat) {
    CompiledPattern compiled(pattern.c_str(), ignore_case);
    if (compiled.Error() != nullptr) {
        err_Print("pat_Substitute: %s", compiled.Error());
        return {};
    }
    const char* const source = text.c_str();
    const std::size_t length = std::strlen(source);
    if (length == 0 || length > kLongestText) {
        return {source, length};
    }
    std::string result;
    std::size_t place = 0;
    OwnRegisters registers;
    do {
        if (compiled.Search(source, static_cast<regoff_t>(length), static_cast<regoff_t>(place),
                            registers) < 0) {
            break;
        }
        const auto start = static_cast<std::size_t>(registers.start[0]);
        result.append(source + place, start - place);
        place = static_cast<std::size_t>(registers.end[0]);
        append_expanded(result, replacement, group_texts(source, registers));
    } while (repeat);
    return result.append(source + place, length - place);
}
