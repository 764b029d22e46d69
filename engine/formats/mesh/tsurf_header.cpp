#include "engine/formats/mesh/tsurf_header.h"

#include <algorithm>

#include "engine/formats/diagnostics.h"
#include "engine/formats/mesh/colour_words.h"
#include "engine/formats/mesh/mesh_attributes.h"

namespace zol::engine {

namespace {

// Far beyond real headers.
constexpr std::size_t kMostAttributes = 10000;

// The next word, or what stands between quotes: such a name may hold blanks and begin with one.
std::string_view take_name(std::string_view& rest) {
    const std::size_t begin = rest.find_first_not_of(" \t");
    if (begin == rest.npos || rest[begin] != '"') return take_word(rest);
    rest.remove_prefix(begin + 1);
    const std::size_t end = std::min(rest.find('"'), rest.size());
    const std::string_view name = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return name;
}

}  // namespace

// Throws when there is no room for another attribute.
void TsurfHeader::CheckRoom() const {
    if (mesh_.attributes.size() > kMostAttributes) {
        lines_.Refuse("the headers have more than " + std::to_string(kMostAttributes) + " entries");
    }
}

void TsurfHeader::Read(std::string_view keyword, std::string_view rest) {
    CheckRoom();
    if (keyword == "HEADER") {
        ReadBlock(rest, true);
    } else if (keyword.starts_with("HEADER{")) {
        const char* const brace = keyword.data() + keyword.find('{');
        ReadBlock({brace, static_cast<std::size_t>(rest.data() + rest.size() - brace)}, true);
    } else if (keyword == "PROPERTY_CLASS_HEADER") {
        const std::size_t brace = rest.find('{');
        ReadBlock(brace == rest.npos ? std::string_view() : rest.substr(brace), false);
    } else if (keyword == "GOCAD_ORIGINAL_COORDINATE_SYSTEM") {
        ReadCoordinateSystem();
    } else if (keyword == "PROPERTIES") {
        while (!without_blanks(rest).empty()) {
            CheckRoom();
            add_text("property", take_name(rest), mesh_);
        }
    } else if (keyword == "GEOLOGICAL_FEATURE") {
        add_text("geological_feature", without_blanks(rest), mesh_);
    } else if (keyword == "GEOLOGICAL_TYPE") {
        add_text("geological_type", without_blanks(rest), mesh_);
    }
}

// From the brace to the one that closes it: lines of key:value.
void TsurfHeader::ReadBlock(std::string_view rest, bool is_wanted) {
    const std::uint64_t first_line = lines_.Number();
    std::string_view text = without_blanks(rest);
    while (text.empty()) {
        if (!lines_.Next(text)) lines_.Refuse("the file ends before a { that is expected");
        text = without_blanks(text);
    }
    if (text.front() != '{') lines_.Refuse("a { is expected instead of " + quoted(text));
    text.remove_prefix(1);
    while (true) {
        text = without_blanks(text);
        const bool is_last = text.ends_with('}');
        if (is_last) text.remove_suffix(1);
        if (is_wanted) ReadKey(without_blanks(text));
        if (is_last) return;
        if (!lines_.Next(text)) {
            lines_.Refuse("the file ends before the { of line " + std::to_string(first_line) +
                          " is closed");
        }
    }
}

void TsurfHeader::ReadKey(std::string_view text) {
    CheckRoom();
    const std::size_t colon = text.find(':');
    if (colon == text.npos) return;
    const std::string_view key = without_blanks(text.substr(0, colon));
    const std::string_view value = without_blanks(text.substr(colon + 1));
    if (key == "*solid*color") {
        if (!read_colour(value, look_)) {
            report(path_, "line " + std::to_string(lines_.Number()) + ": the colour " +
                              quoted(value) + " is not known");
        }
    } else if (key == "*solid*transparency") {
        double part = 0;
        if (read_real(value, part)) transparency_ = std::clamp(part, 0.0, 1.0);
    } else if (key == "name") {
        add_text(key, value, mesh_);
    } else {
        add_stated(key, value, mesh_);
    }
}

void TsurfHeader::ReadCoordinateSystem() {
    const std::uint64_t first_line = lines_.Number();
    std::string_view line;
    while (lines_.Next(line)) {
        const std::string_view keyword = take_word(line);
        if (keyword == "END_ORIGINAL_COORDINATE_SYSTEM") return;
        CheckRoom();
        if (keyword == "NAME") {
            add_text("coordinate_system", without_blanks(take_name(line)), mesh_);
        } else if (keyword == "ZPOSITIVE") {
            is_depth_ = is_same_word(take_name(line), "Depth");
        } else if (keyword == "AXIS_UNIT") {
            const std::string_view x = take_name(line);
            std::string units(x);
            bool is_one = true;
            for (int axis = 1; axis < 3; ++axis) {
                const std::string_view unit = take_name(line);
                is_one = is_one && unit == x;
                units.append(" ").append(unit);
            }
            add_text("units", is_one ? x : units, mesh_);
        }
    }
    lines_.Refuse("the file ends inside the coordinate system of line " +
                  std::to_string(first_line));
}

MeshLook TsurfHeader::Look() const {
    MeshLook look = look_;
    if (transparency_) look.opacity = 1 - *transparency_;
    return look;
}

}  // namespace zol::engine
