// The parts of a path as texts of their own, for the functions of support/path.h: none of
// them then disturbs what another has handed out.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zol::support {

/// As path_Normalise.
std::string normalised(std::string_view path);

/// As path_DirName and path_BaseName; nothing for null and for a part of more than 1024
/// bytes.
std::optional<std::string> directory_part(const char* path);
std::optional<std::string> base_part(const char* path);

}  // namespace zol::support
