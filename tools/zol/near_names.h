// What a person may have meant by a name that doesn't exist.
#pragma once

#include <string>
#include <vector>

namespace zol::tool {

/// "Did you mean 'a' or 'b'?", or, when nothing comes near, "There are: a, b, c."
std::string near_names(const std::string& wanted, const std::vector<std::string>& known);

}  // namespace zol::tool
