#include "engine/formats/mesh/obj_lines.h"

namespace zol::engine {

// Comments end with their own line, since a folder's name in one may end with a backslash.
std::string_view ObjLines::Joined(std::string_view line) {
    if (without_blanks(line).starts_with('#')) return line;
    joined_.clear();
    while (!line.empty() && line.back() == '\\') {
        joined_ += line.substr(0, line.size() - 1);
        joined_ += ' ';
        if (joined_.size() > TextLines::kMostBytesOfLine) {
            lines_.Refuse("too many lines are joined");
        }
        if (!lines_.Next(line)) return joined_;
    }
    joined_ += line;
    return joined_;
}

}  // namespace zol::engine
