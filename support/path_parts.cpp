#include "support/path_parts.h"

#include "support/path.h"

namespace zol::support {
namespace {

/// In bytes. A longer part makes the call fail, and nothing is cut: the process around us is
/// not ours to stop.
constexpr std::size_t kLongestPart = 1024;

std::optional<std::string> checked(std::string_view part) {
    return part.size() > kLongestPart ? std::nullopt : std::optional(normalised(part));
}

}  // namespace

std::string normalised(std::string_view path) {
    // Through c_str, which stops at the text's own end.
    std::string text(path);
    path_Normalise(text.data());
    return text.c_str();
}

std::optional<std::string> directory_part(const char* path) {
    if (path == nullptr) {
        return std::nullopt;
    }
    const std::string_view text = path;
    const std::size_t separator = text.find_last_of("/\\");
    if (separator == std::string_view::npos) {
        return std::string();
    }
    const bool is_root = separator == 0 || text[separator - 1] == ':';
    return checked(text.substr(0, separator + (is_root ? 1 : 0)));
}

std::optional<std::string> base_part(const char* path) {
    if (path == nullptr) {
        return std::nullopt;
    }
    const std::string_view text = path;
    // Without a separator npos + 1 is 0, and the part is the whole text.
    return checked(text.substr(text.find_last_of("/\\") + 1));
}

}  // namespace zol::support
