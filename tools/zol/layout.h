// Points and boxes as a person reads them, and as JSON lists.
#pragma once

#include <string>
#include <string_view>

#include "tools/zol/block_model.h"
#include "tools/zol/json_writer.h"
#include "tools/zol/output.h"

namespace zol::tool {

/// "1 2.5 3"
std::string point_text(const Point& point);
/// "1 2.5 3 to 4 5 6"
std::string box_text(const Box& box);
/// `text` and as many blanks as make it `width` characters wide.
std::string padded(const std::string& text, std::size_t width);
/// Characters in a UTF-8 text.
std::size_t display_width(const std::string& text);

/// Writes a line for a terminal: control bytes, which a file's texts may hold and a
/// terminal would obey, come out as '?', and blanks at the end are left out.
void write_line(Output& output, std::string line);
/// Such a line of a label, made `width` characters wide, and a text.
void write_fact(Output& output, std::size_t width, const std::string& label, std::string_view text);

/// [x, y]
void write_pair(JsonWriter& json, double x, double y);
/// [x, y, z]
void write_point(JsonWriter& json, const Point& point);
/// {"lower": [x, y, z], "upper": [x, y, z]}
void write_box(JsonWriter& json, const Box& box);

}  // namespace zol::tool
