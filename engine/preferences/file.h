// The file of the user's preferences.
#pragma once

#include "support/variant.h"

namespace zol::engine {

/// What stands in "zol/preferences" in the folder XDG_CONFIG_HOME, or in ".config" under
/// HOME. Always a map: an empty one without such a file, and, told on the diagnostics
/// channel, for one that can't be read as a map.
MVariant read_preferences();

}  // namespace zol::engine
