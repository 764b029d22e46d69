// The lines of OBJ and MTL files: a backslash at its end joins a line to the next.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "engine/formats/file.h"
#include "engine/formats/text_lines.h"

namespace zol::engine {

class ObjLines {
public:
    explicit ObjLines(const File& file) : lines_(file) {}

    /// Gives the next line, with those that are joined to it; as TextLines::Next does.
    bool Next(std::string_view& line) {
        if (!lines_.Next(line)) return false;
        if (!line.empty() && line.back() == '\\') line = Joined(line);
        return true;
    }

    /// The number of the last line that Next took, from 1.
    std::uint64_t Number() const { return lines_.Number(); }
    [[noreturn]] void Refuse(const std::string& reason) const { lines_.Refuse(reason); }

private:
    std::string_view Joined(std::string_view line);

    TextLines lines_;
    std::string joined_;
};

}  // namespace zol::engine
