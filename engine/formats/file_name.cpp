#include "engine/formats/file_name.h"

#include <algorithm>

namespace zol::engine {

namespace {

/// Of ASCII only, whatever letters the locale of the process has.
bool is_of_scheme(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '+' ||
           c == '-' || c == '.';
}

}  // namespace

FileName split_file_name(const std::string& name, bool (*exists)(const std::string& path)) {
    const std::size_t mark = name.rfind('#');
    if (mark == name.npos || exists(name)) return {name, {}};
    return {name.substr(0, mark), name.substr(mark + 1)};
}

bool is_url(std::string_view name) {
    const std::size_t colon = name.find("://");
    if (colon == 0 || colon == name.npos) return false;
    const std::string_view scheme = name.substr(0, colon);
    return std::all_of(scheme.begin(), scheme.end(), is_of_scheme);
}

}  // namespace zol::engine
