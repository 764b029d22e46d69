#include "support/untranslated.h"

#include <cstdint>
#include <limits>
#include <string>

#include "support/dictionary_file.h"
#include "support/file.h"

namespace zol::support {

void save_untranslated(std::string_view text) {
    std::string line;
    for (const char byte : text) {
        if (kPatternBytes.find(byte) != std::string_view::npos) line += '\\';
        line += byte;
    }
    line += '\n';
    if (line.size() > std::numeric_limits<std::uint32_t>::max()) return;
    const file_handle file = file_Open("untranslated", GENERIC_WRITE, OPEN_ALWAYS);
    constexpr int kFromEnd = 2;
    if (file_Seek(file, 0, kFromEnd)) {
        file_Write(file, line.data(), static_cast<std::uint32_t>(line.size()));
    }
    file_Close(file);
}

}  // namespace zol::support
