#include "engine/formats/diagnostics.h"

#include <cstdio>
#include <cstdlib>

namespace zol::engine {

namespace {

void append_printable(std::string& line, std::string_view text) {
    for (const char c : text) {
        const bool control = static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
        line += control ? '?' : c;
    }
}

}  // namespace

void report(std::string_view file, std::string_view text) noexcept {
    const char* target = std::getenv("ZOL_DIAGNOSTICS");
    if (target == nullptr || *target == '\0') {
        return;
    }
    try {
        std::string line = "zol: ";
        append_printable(line, file);
        line += ": ";
        append_printable(line, text);
        line += '\n';
        const bool to_stderr = std::string_view(target) == "stderr";
        std::FILE* out = to_stderr ? stderr : std::fopen(target, "ae");
        if (out == nullptr) {
            return;
        }
        // One write a line, so that lines of several processes don't mix.
        std::fwrite(line.data(), 1, line.size(), out);
        if (to_stderr) {
            std::fflush(out);
        } else {
            std::fclose(out);
        }
    } catch (...) {
        // A report that can't be made is given up: the answer it explains stands anyway.
        return;
    }
}

}  // namespace zol::engine
