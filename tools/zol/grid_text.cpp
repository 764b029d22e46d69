#include "tools/zol/grid_text.h"

#include "tools/zol/layout.h"
#include "tools/zol/number_text.h"

namespace zol::tool {

std::string pair_text(double x, double y) {
    std::string text(coordinate_text(x));
    text += ' ';
    text += coordinate_text(y);
    return text;
}

std::string index_text(const NodeIndex& node) {
    return "(" + std::to_string(node.i) + ", " + std::to_string(node.j) + ")";
}

std::string extent_text(const Lattice& nodes) {
    return pair_text(nodes.first_x, nodes.first_y) + " to " + pair_text(nodes.last_x, nodes.last_y);
}

void write_index(JsonWriter& json, const NodeIndex& node) {
    json.BeginList(JsonWriter::Layout::Flat);
    json.Whole(node.i);
    json.Whole(node.j);
    json.EndList();
}

void write_extent(JsonWriter& json, const Lattice& nodes) {
    json.BeginObject(JsonWriter::Layout::Flat);
    json.Key("lower");
    write_pair(json, nodes.first_x, nodes.first_y);
    json.Key("upper");
    write_pair(json, nodes.last_x, nodes.last_y);
    json.EndObject();
}

}  // namespace zol::tool
