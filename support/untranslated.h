// Collects what no dictionary had, for whoever translates.
#pragma once

#include <string_view>

namespace zol::support {

/// Adds the text to the file "untranslated" in the current directory as a line that can be
/// taken over as a key. A file that can't be written, or that another process is adding to
/// at this moment, costs the line and nothing else.
void save_untranslated(std::string_view text);

}  // namespace zol::support
