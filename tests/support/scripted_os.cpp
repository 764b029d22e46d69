#include "tests/support/scripted_os.h"

#include <algorithm>

namespace zol::testing {

OsScript os_script;

}  // namespace zol::testing

namespace zol::os {

using testing::os_script;

const char kPathSeparator = '/';
const char kListSeparator = ':';

File open_file(const char*, const OpenMode&) {
    File file = 1;
    while (os_script.positions.contains(file)) {
        ++file;
    }
    os_script.positions[file] = 0;
    return file;
}

void close_file(File file) {
    os_script.positions.erase(file);
}

std::optional<std::uint32_t> read_file(File file, void* buffer, std::uint32_t count) {
    os_script.reads.push_back(count);
    std::uint32_t limit = count;
    if (!os_script.read_limits.empty()) {
        const auto next = os_script.read_limits.front();
        os_script.read_limits.pop_front();
        if (!next) {
            return std::nullopt;
        }
        limit = std::min(limit, *next);
    }
    const auto place = os_script.positions.find(file);
    if (place == os_script.positions.end()) {
        return std::nullopt;
    }
    const auto begin = std::min(static_cast<std::size_t>(place->second), os_script.content.size());
    const std::size_t delivered = os_script.content.copy(static_cast<char*>(buffer), limit, begin);
    place->second += static_cast<std::int64_t>(delivered);
    return static_cast<std::uint32_t>(delivered);
}

bool write_file(File, const void*, std::uint32_t) {
    return false;
}

bool move_in_file(File file, std::int64_t offset, Origin origin) {
    const auto place = os_script.positions.find(file);
    if (place == os_script.positions.end()) {
        return false;
    }
    const auto end = static_cast<std::int64_t>(os_script.content.size());
    const std::int64_t from = origin == Origin::kBegin     ? 0
                              : origin == Origin::kCurrent ? place->second
                                                           : end;
    if (from + offset < 0) {
        return false;
    }
    place->second = from + offset;
    return true;
}

std::optional<std::int64_t> position_in_file(File file) {
    const auto place = os_script.positions.find(file);
    return place == os_script.positions.end() ? std::nullopt : std::optional(place->second);
}

std::optional<std::uint64_t> size_of_file(File) {
    return os_script.content.size();
}

PathKind kind_of(const char* path) {
    os_script.asked.emplace_back(path);
    const auto found = os_script.paths.find(path);
    return found == os_script.paths.end() ? PathKind::kNothing : found->second;
}

std::string current_directory() {
    return os_script.current_directory;
}

std::string executable_path() {
    return os_script.executable_path;
}

// The answer of a system that doesn't say.
Stack stack_of_this_thread() {
    return {};
}

const char* environment_value(const char* name) {
    const auto found = os_script.environment.find(name);
    return found == os_script.environment.end() ? nullptr : found->second.c_str();
}

bool set_environment_value(const char* name, const char* value) {
    if (value == nullptr) {
        os_script.environment.erase(name);
    } else {
        os_script.environment[name] = value;
    }
    return true;
}

}  // namespace zol::os
