#include "engine/formats/mesh/mtl_file.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include "engine/formats/diagnostics.h"
#include "engine/formats/line_numbers.h"
#include "engine/formats/mesh/colour_words.h"
#include "engine/formats/mesh/name_beside.h"
#include "engine/formats/mesh/obj_lines.h"
#include "engine/formats/read_error.h"
#include "engine/formats/text_lines.h"

namespace zol::engine {

namespace {

// Thousands of materials; what is larger is something else.
constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 24;

// How many arguments stand between an option of a map and what follows.
struct MapOption {
    std::string_view name;
    int arguments;
    // Fewer will do: as many as are numbers.
    bool numbers_only;
};
constexpr MapOption kMapOptions[] = {
    {"-s", 3, true},       {"-o", 3, true},      {"-t", 3, true},       {"-mm", 2, false},
    {"-texres", 1, false}, {"-clamp", 1, false}, {"-blendu", 1, false}, {"-blendv", 1, false},
    {"-bm", 1, false},     {"-cc", 1, false},    {"-boost", 1, false},  {"-imfchan", 1, false},
};

std::string_view without_options(std::string_view rest) {
    while (true) {
        std::string_view behind = rest;
        const std::string_view word = take_word(behind);
        const auto* const option =
            std::find_if(std::begin(kMapOptions), std::end(kMapOptions),
                         [&](const MapOption& known) { return known.name == word; });
        if (option == std::end(kMapOptions)) return without_blanks(rest);
        rest = behind;
        for (int i = 0; i < option->arguments; ++i) {
            double number = 0;
            if (option->numbers_only && !read_real(take_word(behind), number)) break;
            if (!option->numbers_only) take_word(behind);
            rest = behind;
        }
    }
}

class MaterialReader {
public:
    MaterialReader(const File& file, MeshLook& look) : file_(file), look_(look) {}

    // What a statement of the material says; false when it can't be read.
    bool Take(std::string_view keyword, std::string_view rest) {
        if (keyword == "Kd") return TakeColour(rest);
        if (keyword == "d" || keyword == "Tr") return TakeOpacity(rest, keyword == "d");
        if (is_same_word(keyword, "map_Kd")) return TakeTexture(rest);
        return true;
    }

private:
    bool TakeColour(std::string_view rest) {
        std::string_view behind = rest;
        const std::string_view first = take_word(behind);
        if (first == "spectral" || first == "xyz") return true;
        std::array<double, 3> parts{};
        int count = 0;
        Taken taken = Taken::Number;
        while (count < 3 &&
               (taken = take_real(rest, parts[static_cast<std::size_t>(count)])) == Taken::Number) {
            ++count;
        }
        // Green and blue are as red when they are not there.
        if (count == 1 && taken == Taken::Nothing) {
            parts[1] = parts[2] = parts[0];
        } else if (count < 3) {
            return false;
        }
        look_.colour.emplace();
        for (std::size_t i = 0; i < 3; ++i) (*look_.colour)[i] = colour_byte(parts[i]);
        return true;
    }

    // Some writers put the same value behind both, so d is heard wherever it stands.
    bool TakeOpacity(std::string_view rest, bool is_dissolve) {
        std::string_view behind = rest;
        if (take_word(behind) == "-halo") rest = behind;
        double value = 0;
        if (take_real(rest, value) != Taken::Number) return false;
        value = std::clamp(value, 0.0, 1.0);
        if (is_dissolve) {
            look_.opacity = value;
        } else if (!has_dissolve_) {
            look_.opacity = 1 - value;
        }
        has_dissolve_ = has_dissolve_ || is_dissolve;
        return true;
    }

    bool TakeTexture(std::string_view rest) {
        const std::string_view name = without_options(rest);
        const std::optional<std::string> path = name_beside(file_.Path(), name);
        if (path) look_.texture = *path;
        return path.has_value();
    }

    const File& file_;
    MeshLook& look_;
    bool has_dissolve_ = false;
};

}  // namespace

bool read_material(const File& file, std::string_view name, MeshLook& look) {
    if (file.Size() > kMostBytes) throw ReadError("it is too large for a list of materials");
    ObjLines lines(file);
    MaterialReader material(file, look);
    bool is_found = false;
    bool is_wanted = false;
    bool is_reported = false;
    std::string_view line;
    while (lines.Next(line)) {
        if (line.find('\0') != line.npos) {
            look = MeshLook();
            lines.Refuse("it holds a NUL byte, so it is no list of materials");
        }
        const std::string_view keyword = take_word(line);
        // "Material #25" is the usual name of a material in some programs' files.
        const std::string_view whole = without_blanks(line);
        line = without_comment(line);
        if (keyword == "newmtl") {
            is_wanted = !is_found && (whole == name || line == name);
            is_found = is_found || is_wanted;
        } else if (is_wanted && !material.Take(keyword, line) && !is_reported) {
            is_reported = true;
            report(file.Path(), "line " + std::to_string(lines.Number()) + ": the " +
                                    std::string(keyword) + " of material " + quoted(name) +
                                    " can't be used");
        }
    }
    return is_found;
}

}  // namespace zol::engine
