// The file of a sidecar, whichever format it stands beside.
#pragma once

#include <string>

namespace zol::engine {

/// The text of the file. Throws ReadError when it can't be read or is larger than 64 MiB.
std::string read_sidecar_file(const std::string& path);

}  // namespace zol::engine
