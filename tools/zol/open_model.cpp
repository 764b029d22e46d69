#include "tools/zol/open_model.h"

#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "tools/zol/exit_codes.h"

namespace zol::tool {

namespace {

constexpr const char* kDiagnostics = "ZOL_DIAGNOSTICS";
constexpr const char* kModelFormats =
    "formats read are delimited text (CSV and its relatives, GEO-EAS) and OMF 1; for a raster, "
    "use zol grid.";

// What GDAL looks for in archives, on servers and in memory.
constexpr std::string_view kVirtualFile = "/vsi";

bool exists(const std::string& file) {
    std::error_code ignored;
    return std::filesystem::exists(file, ignored);
}

/// Whether there is a file of this name, or of its part before the last '#', which
/// then names an element in the file.
bool is_there(const std::string& file) {
    // A URL is no file, which the library says better.
    if (file.starts_with(kVirtualFile) || file.find("://") != std::string::npos) return true;
    const std::size_t mark = file.rfind('#');
    return exists(file) || (mark != std::string::npos && exists(file.substr(0, mark)));
}

template <class Handle>
std::unique_ptr<Handle> opened(const std::string& file, const std::string& hint) {
    if (!is_there(file)) throw ReadFailure("there is no file '" + file + "'.");
    try {
        return std::make_unique<Handle>(file);
    } catch (const ReadFailure& failure) {
        const char* channel = std::getenv(kDiagnostics);
        const bool is_reason_told = channel != nullptr && std::string_view(channel) == "stderr";
        if (is_reason_told) throw ReadFailure(hint);
        throw ReadFailure(std::string(failure.what()) + "\n" + hint);
    }
}

}  // namespace

void turn_diagnostics_on() {
    constexpr int kKeepWhatIsSet = 0;
    setenv(kDiagnostics, "stderr", kKeepWhatIsSet);
}

std::unique_ptr<BlockModel> open_model(const std::string& file) {
    return opened<BlockModel>(file, kModelFormats);
}

std::unique_ptr<Grid> open_grid(const std::string& file) {
    // The library names the formats where it knows none for the file.
    return opened<Grid>(file, "'" + file + "' can't be opened as a grid.");
}

std::unique_ptr<Mesh> open_mesh(const std::string& file) {
    return opened<Mesh>(file, "'" + file + "' can't be opened as a mesh.");
}

}  // namespace zol::tool
