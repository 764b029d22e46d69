#include "engine/preferences/file.h"

#include <string>

#include "engine/formats/diagnostics.h"
#include "support/environment.h"
#include "support/path.h"

namespace zol::engine {

namespace {

/// Empty where the environment names no place.
std::string preferences_path() {
    // A folder that is no full path is to be ignored, by the rules for this variable.
    const char* folder = env_Get("XDG_CONFIG_HOME");
    if (folder != nullptr && *folder == '/') return std::string(folder) + "/zol/preferences";
    const char* home = env_Get("HOME");
    if (home == nullptr || *home == '\0') return {};
    return std::string(home) + "/.config/zol/preferences";
}

/// "line 3: what: why", from the reader's map of errors.
std::string fault_text(const MVariant& errors) {
    std::string text = "line " + std::to_string(errors.Get("line").AsInt64() + 1) + ": " +
                       errors.Get("message").AsString();
    if (errors.HasKey("explain")) text += ": " + errors.Get("explain").AsString();
    return text;
}

}  // namespace

MVariant read_preferences() {
    const std::string path = preferences_path();
    MVariant value;
    MVariant errors;
    if (value.ReadText(path.c_str(), errors)) {
        if (value.Kind() == MV_MAP) return value;
        report(path, "the preferences are no map");
    } else if (errors.IsDefined()) {
        report(path, fault_text(errors));
    } else if (path_Exists(path.c_str()) != 0) {
        report(path, "the preferences can't be read");
    }
    return MVariant(MV_MAP);
}

}  // namespace zol::engine
