#include "tools/zol/layout.h"

#include <algorithm>

#include "tools/zol/number_text.h"

namespace zol::tool {

std::string point_text(const Point& point) {
    std::string text(number_text(point.x));
    for (const double value : {point.y, point.z}) {
        text += ' ';
        text += number_text(value);
    }
    return text;
}

std::string box_text(const Box& box) {
    return point_text(box.lower) + " to " + point_text(box.upper);
}

std::size_t display_width(const std::string& text) {
    const auto continues = [](char c) { return (static_cast<unsigned char>(c) & 0xc0U) == 0x80; };
    return text.size() -
           static_cast<std::size_t>(std::count_if(text.begin(), text.end(), continues));
}

std::string padded(const std::string& text, std::size_t width) {
    const std::size_t taken = display_width(text);
    return taken < width ? text + std::string(width - taken, ' ') : text;
}

void write_line(Output& output, std::string line) {
    const auto is_control = [](char c) {
        return static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
    };
    std::replace_if(line.begin(), line.end(), is_control, '?');
    line.erase(line.find_last_not_of(' ') + 1);
    output.Write(line);
    output.Write('\n');
}

void write_fact(Output& output, std::size_t width, const std::string& label,
                std::string_view text) {
    write_line(output, padded(label, width).append(text));
}

void write_pair(JsonWriter& json, double x, double y) {
    json.BeginList(JsonWriter::Layout::Flat);
    json.Number(x);
    json.Number(y);
    json.EndList();
}

void write_point(JsonWriter& json, const Point& point) {
    json.BeginList(JsonWriter::Layout::Flat);
    json.Number(point.x);
    json.Number(point.y);
    json.Number(point.z);
    json.EndList();
}

void write_box(JsonWriter& json, const Box& box) {
    json.BeginObject(JsonWriter::Layout::Flat);
    json.Key("lower");
    write_point(json, box.lower);
    json.Key("upper");
    write_point(json, box.upper);
    json.EndObject();
}

}  // namespace zol::tool
