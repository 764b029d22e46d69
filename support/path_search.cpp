// Where the software's own files lie.
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "support/environment.h"
#include "support/os.h"
#include "support/path.h"
#include "support/path_parts.h"

namespace {

constexpr char kRootVariable[] = "OSTREL";
constexpr char kSearchPathVariable[] = "PATH";
constexpr std::size_t kLongestExecutablePath = 1024;

struct ResourceKind {
    /// Under the root; null where the root is not looked into.
    const char* subdirectory;
    bool current_directory_first = false;
    /// A variable with a directory that comes before the root; null for none.
    const char* directory_variable = nullptr;
    bool search_path_first = false;
    bool search_path_last = false;
};

/// Kinds are numbered from 1.
constexpr std::array<ResourceKind, 11> kKinds = {{
    {.subdirectory = "bin/flib/panels"},
    {.subdirectory = "bin/flib/spec_defs",
     .current_directory_first = true,
     .directory_variable = "HOME"},
    {.subdirectory = "bin/flib"},
    {.subdirectory = nullptr, .search_path_first = true},
    {.subdirectory = "help/tod"},
    {.subdirectory = "bin/exe", .search_path_last = true},
    {.subdirectory = "etc"},
    {.subdirectory = "bin"},
    {.subdirectory = "bin/flib/schema"},
    {.subdirectory = "etc/resources", .directory_variable = "TESSA_RESO"},
    {.subdirectory = "bin/flib/images"},
}};

/// The directory in a variable. An empty value is none: with it the search would go through
/// the root of the system.
std::string directory_in(const char* variable) {
    const char* const value = variable == nullptr ? nullptr : env_Get(variable);
    return value == nullptr ? std::string() : value;
}

/// With the separator at its end.
std::string executable_directory() {
    std::string path = zol::os::executable_path();
    if (path.size() > kLongestExecutablePath) {
        return {};
    }
    path.resize(path.find_last_of("/\\") + 1);
    return path;
}

/// One search: the places are tried in turn, and the first that has an acceptable path ends it.
class Search {
public:
    Search(const char* name, int mask) : name_(name), mask_(mask) {}

    /// True when found; nothing is found in an empty directory text.
    bool Try(const std::string& directory) {
        return !directory.empty() && Take(directory + '/' + name_);
    }

    bool TrySearchPath() {
        const char* const path = path_FindOnPath(name_.c_str());
        return path != nullptr && Take(path);
    }

    const std::string& Found() const { return found_; }

private:
    bool Take(std::string path) {
        const bool taken = path_Accepts(path.c_str(), mask_) != 0;
        found_ = taken ? std::move(path) : std::string();
        return taken;
    }

    const std::string name_;
    const int mask_;
    std::string found_;
};

std::string find_resource(const ResourceKind& kind, const char* name, int mask) {
    const std::string root = directory_in(kRootVariable);
    const bool looks_under_root = kind.subdirectory != nullptr && !root.empty();
    Search search(name, mask);
    // The order is the contract; the first success spares the rest.
    static_cast<void>((kind.current_directory_first && search.Try(zol::os::current_directory())) ||
                      search.Try(directory_in(kind.directory_variable)) ||
                      (kind.search_path_first && search.TrySearchPath()) ||
                      (looks_under_root && search.Try(root + '/' + kind.subdirectory)) ||
                      search.Try(executable_directory()) ||
                      (kind.search_path_last && search.TrySearchPath()));
    return search.Found();
}

/// The first path of this name that exists in the directories of the list; an empty place
/// in the list is passed over.
std::string first_on_list(std::string_view list, const std::string& name) {
    while (!list.empty()) {
        const std::size_t end = list.find(zol::os::kListSeparator);
        const std::string_view directory = list.substr(0, end);
        list.remove_prefix(end == std::string_view::npos ? list.size() : end + 1);
        std::string path = std::string(directory) + '/' + name;
        if (!directory.empty() && path_Exists(path.c_str()) != 0) {
            return path;
        }
    }
    return {};
}

/// Keeps a result until the next one takes its place.
const char* hand_out(std::string& buffer, std::string result) {
    buffer = std::move(result);
    return buffer.empty() ? nullptr : buffer.c_str();
}

}  // namespace

const char* path_FindResource(int kind, const char* name, int mask) {
    static auto& buffer = *new std::string;  // never destroyed, as the process may end later
    if (kind < 1 || kind > static_cast<int>(kKinds.size())) {
        return hand_out(buffer, {});
    }
    const bool named = name != nullptr && *name != '\0';
    return hand_out(buffer, find_resource(kKinds[static_cast<std::size_t>(kind) - 1],
                                          named ? name : "", named ? mask : PATH_ACCEPT_DIRECTORY));
}

const char* path_FindOnPath(const char* name) {
    static auto& buffer = *new std::string;  // never destroyed, as the process may end later
    if (name == nullptr) {
        return hand_out(buffer, {});
    }
    const std::string path =
        zol::support::normalised(first_on_list(directory_in(kSearchPathVariable), name));
    return hand_out(buffer, path_IsDirectory(path.c_str()) != 0 ? std::string() : path);
}
