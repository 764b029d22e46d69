// Drawings for tests: files beside the tests, and small ones written on the spot.
#pragma once

#include <string>
#include <string_view>

#include "engine/formats/dxf/dxf_file.h"
#include "tests/engine/temporary_file.h"

namespace zol::testing_support {

inline std::string sample_drawing(const std::string& name) {
    return std::string(ZOL_SAMPLES) + "/design/" + name;
}

/// Tags written as "0 LINE|8 A|10 1.5": a code, a blank, the value.
inline std::string tags(std::string_view list) {
    std::string text;
    while (!list.empty()) {
        const std::size_t end = list.find('|');
        const std::string_view tag = list.substr(0, end);
        const std::size_t blank = tag.find(' ');
        text += std::string(tag.substr(0, blank)) + '\n';
        if (blank != tag.npos) text += tag.substr(blank + 1);
        text += '\n';
        list.remove_prefix(end == list.npos ? list.size() : end + 1);
    }
    return text;
}

inline std::string section(const std::string& name, const std::string& content) {
    return "0\nSECTION\n2\n" + name + '\n' + content + "0\nENDSEC\n";
}

inline engine::Drawing drawing_of(const std::string& text) {
    const TemporaryFile file(text);
    return engine::read_dxf(engine::File(file.Path()));
}

/// The drawing of these entities, with these blocks and this header.
inline engine::Drawing drawing_of_entities(std::string_view entities, std::string_view blocks = {},
                                           std::string_view header = {}) {
    return drawing_of(section("HEADER", tags(header)) + section("BLOCKS", tags(blocks)) +
                      section("ENTITIES", tags(entities)) + "0\nEOF\n");
}

/// The lines of the text, parted by '|'.
inline std::string lines_of(const engine::Drawing& drawing, std::size_t object) {
    std::string lines;
    for (const std::string& line : drawing.Text(object).lines) {
        lines += (lines.empty() ? "" : "|") + line;
    }
    return lines;
}

}  // namespace zol::testing_support
