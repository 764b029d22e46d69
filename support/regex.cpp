#include "support/regex.h"

#include <cstring>
#include <limits>

#include "support/err_print.h"
#include "support/regex_engine.h"

namespace {

using namespace zol::support;

// Offsets are 32-bit in the engine.
constexpr std::size_t kLongestText = std::numeric_limits<std::int32_t>::max();

}  // namespace

std::int32_t regex_Match(const char* text, const char* pattern, std::int32_t ignore_case,
                         re_registers* registers) {
    CompiledPattern compiled(pattern, ignore_case != 0);
    if (compiled.Error() != nullptr) {
        err_Print("regex_Match: %s", compiled.Error());
        return 0;
    }
    const std::size_t length = std::strlen(text);
    if (length > kLongestText) {
        return 0;
    }
    const auto size = static_cast<regoff_t>(length);
    if (registers == nullptr) {
        regoff_t end = 0;
        const regoff_t start = compiled.Search(text, size, 0, end);
        return start < 0 ? 0 : end - start;
    }
    return compiled.Search(text, size, 0, *registers) < 0 ? 0
                                                          : registers->end[0] - registers->start[0];
}

std::int32_t regex_Match(const std::string& text, const std::string& pattern, bool ignore_case) {
    return regex_Match(text.c_str(), pattern.c_str(), ignore_case ? 1 : 0, nullptr);
}

std::int32_t regex_Match(const std::string& text, const std::string& pattern, bool ignore_case,
                         std::vector<std::string>& groups) {
    OwnRegisters registers;
    const std::int32_t length =
        regex_Match(text.c_str(), pattern.c_str(), ignore_case ? 1 : 0, &registers);
    groups = length == 0 ? std::vector<std::string>() : group_texts(text.c_str(), registers);
    return length;
}
