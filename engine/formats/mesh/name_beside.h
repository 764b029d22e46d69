// Files that a file names.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zol::engine {

/// The path of what `file` calls `name`, which is looked for from the folder of that file;
/// both kinds of slash part folders. Nothing when the name is empty, absolute, or leads out of
/// that folder: a mesh may come from anywhere and must not point at other files of a machine.
std::optional<std::string> name_beside(const std::string& file, std::string_view name);

}  // namespace zol::engine
