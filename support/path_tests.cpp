// What lies under a path.
#include <optional>
#include <string>

#include "support/os.h"
#include "support/path.h"
#include "support/path_parts.h"
#include "support/regex.h"

namespace {

constexpr char kReservedNames[] =
    R"(^((com[1-9](\..*)?)|(lpt[1-9](\..*)?)|(con(\..*)?)|(prn(\..*)?)|(aux(\..*)?)|(nul(\..*)?))$)";
constexpr int kEcmaScript = 2;
constexpr int kDirectoryBit = 16;

/// The path as the system is asked for it: without the separators at its end, unless they
/// are all that makes it a root.
std::string asked_path(const char* path) {
    std::string text = zol::support::normalised(path);
    text.resize(text.find_last_not_of(zol::os::kPathSeparator) + 1);
    if (text.empty() || path_IsDrive(text.c_str()) != 0) {
        text += zol::os::kPathSeparator;
    }
    return text;
}

zol::os::PathKind kind_of(const char* path) {
    if (path == nullptr || *path == '\0' || path_IsReservedName(path) != 0) {
        return zol::os::PathKind::kNothing;
    }
    return zol::os::kind_of(asked_path(path).c_str());
}

/// A name of any length as short as the pattern needs it: what stands behind the first
/// full stop of a line makes no difference. The pattern's engine takes stack for each byte.
std::string shortened(std::string name) {
    constexpr std::size_t kLongest = 64;
    const std::size_t stop = name.find('.');
    const bool is_one_line = name.find_first_of("\r\n") == std::string::npos;
    if (name.size() > kLongest && is_one_line && stop < name.size()) {
        name.resize(stop + 1);
    }
    return name;
}

}  // namespace

int path_IsReservedName(const char* path) {
    const std::optional<std::string> name = zol::support::base_part(path);
    return name && regex_Match2(shortened(*name), kReservedNames, true, kEcmaScript) ? 1 : 0;
}

int path_Exists(const char* path) {
    return kind_of(path) != zol::os::PathKind::kNothing ? 1 : 0;
}

int path_IsDirectory(const char* path) {
    return kind_of(path) == zol::os::PathKind::kDirectory ? kDirectoryBit : 0;
}

int path_Accepts(const char* path, int mask) {
    switch (kind_of(path)) {
        case zol::os::PathKind::kDirectory:
            return (mask & PATH_ACCEPT_DIRECTORY) != 0 ? 1 : 0;
        case zol::os::PathKind::kOther:
            return (mask & PATH_ACCEPT_FILE) != 0 ? 1 : 0;
        case zol::os::PathKind::kNothing:
            break;
    }
    return 0;
}
