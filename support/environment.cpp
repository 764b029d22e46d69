#include "support/environment.h"

#include <cstring>

#include "support/os.h"

namespace {

/// Of name, '=' and value together, in bytes.
constexpr std::size_t kLongestSetting = 280;

}  // namespace

const char* env_Get(const char* name) {
    return name == nullptr ? nullptr : zol::os::environment_value(name);
}

int env_Set(const char* name, const char* value) {
    if (name == nullptr || *name == '\0' || std::strchr(name, '=') != nullptr) {
        return 0;
    }
    const std::size_t value_length = value == nullptr ? 0 : std::strlen(value);
    if (std::strlen(name) + 1 + value_length > kLongestSetting) {
        return 0;
    }
    return zol::os::set_environment_value(name, value) ? 1 : 0;
}
