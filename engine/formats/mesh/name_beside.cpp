#include "engine/formats/mesh/name_beside.h"

#include <algorithm>
#include <filesystem>

namespace zol::engine {

std::optional<std::string> name_beside(const std::string& file, std::string_view name) {
    const bool has_drive = name.size() > 1 && name[1] == ':';
    if (name.empty() || has_drive || name.find('\0') != name.npos) return std::nullopt;
    std::string usual(name);
    std::replace(usual.begin(), usual.end(), '\\', '/');
    const std::filesystem::path path = std::filesystem::path(usual).lexically_normal();
    if (path.is_absolute() || !path.has_filename() || path == "." || *path.begin() == "..") {
        return std::nullopt;
    }
    return (std::filesystem::path(file).parent_path() / path).string();
}

}  // namespace zol::engine
