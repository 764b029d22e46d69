// What can be said of a path from its text alone.
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "support/os.h"
#include "support/path.h"
#include "support/path_parts.h"
#include "support/text_search.h"

namespace {

bool is_separator(char c) {
    return c == '/' || c == '\\';
}

bool is_drive(std::string_view text) {
    return text.size() == 2 && text[1] == ':' &&
           ((text[0] >= 'a' && text[0] <= 'z') || (text[0] >= 'A' && text[0] <= 'Z'));
}

/// Through the buffer that path_DirName and path_BaseName share.
const char* hand_out(std::optional<std::string> part) {
    static auto& buffer = *new std::string;  // never destroyed, as the process may end later
    if (!part) {
        return nullptr;
    }
    buffer = std::move(*part);
    return buffer.c_str();
}

}  // namespace

void path_Normalise(char* path) {
    if (path == nullptr || *path == '\0') {
        return;
    }
    char* to = path;
    for (const char* from = path; *from != '\0'; ++from) {
        // The first byte is no part of the run behind it.
        const bool goes_on = from > path + 1 && is_separator(from[0]) && is_separator(from[-1]);
        if (!goes_on) {
            *to++ = is_separator(*from) ? zol::os::kPathSeparator : *from;
        }
    }
    *to = '\0';
}

const char* path_DirName(const char* path) {
    return hand_out(zol::support::directory_part(path));
}

const char* path_BaseName(const char* path) {
    return hand_out(zol::support::base_part(path));
}

void path_StripExtension(char* path) {
    const std::optional<std::string> directory = zol::support::directory_part(path);
    const std::optional<std::string> base = zol::support::base_part(path);
    if (!directory || !base) {
        return;
    }
    const char* const begin = base->c_str();
    const char* const dot = str_LastOccurrence(begin, ".");
    const bool has_extension = dot != nullptr && dot != begin;
    const std::string_view stem(
        begin, has_extension ? static_cast<std::size_t>(dot - begin) : base->size());
    std::string stripped = *directory;
    // The caller's buffer is only known to hold the text that it holds.
    if (!directory->empty() && directory->size() + 1 + stem.size() <= std::strlen(path)) {
        stripped += zol::os::kPathSeparator;
    }
    stripped += stem;
    std::memcpy(path, stripped.c_str(), stripped.size() + 1);
}

int path_IsDriveRoot(const char* path) {
    if (path == nullptr) {
        return 0;
    }
    std::string_view text = path;
    if (text.size() == 3 && is_separator(text.back())) {
        text.remove_suffix(1);
    }
    return is_drive(text) ? 1 : 0;
}

int path_IsDrive(const char* path) {
    return path != nullptr && is_drive(path) ? 1 : 0;
}
