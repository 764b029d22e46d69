// The names that callers open files by.
#pragma once

#include <string>
#include <string_view>

namespace zol::engine {

/// The file behind a name, and what the name carries behind its last '#'.
struct FileName {
    std::string path;
    std::string element;
};

/// The name as a whole is the path when a file of that name `exists`.
FileName split_file_name(const std::string& name, bool (*exists)(const std::string& path));

/// True of what begins as an address on a network does: "https://...".
bool is_url(std::string_view name);

}  // namespace zol::engine
