// How the scripted libraries write down a call.
#pragma once

#include <sstream>
#include <string>

namespace zol::doubles {

/// "Model::Get grade": the operation, then each argument behind a blank.
template <class... Arguments>
std::string journal_entry(const char* operation, const Arguments&... arguments) {
    std::ostringstream entry;
    entry << operation;
    ((entry << ' ' << arguments), ...);
    return entry.str();
}

}  // namespace zol::doubles
