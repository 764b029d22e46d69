#include "engine/formats/dxf/tables.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace zol::engine {

namespace {

// The second text of the application that keeps descriptions of layers.
std::string description_of(const Entity& row, DrawingBuilder& builder) {
    bool is_ours = false;
    int texts = 0;
    for (const ExtendedTag& tag : row.Extended()) {
        if (tag.code == 1001) {
            is_ours = tag.text == "AcAecLayerStandard";
        } else if (is_ours && tag.code == 1000 && ++texts == 2) {
            return builder.Decode(tag.text);
        }
    }
    return {};
}

void read_layer(const Entity& row, DrawingBuilder& builder) {
    constexpr int kFrozen = 1;
    constexpr int kLocked = 4;
    DrawingLayer& layer = builder.Data().layers[builder.Layer(row.Text(2))];
    // Of rows of one name the first counts.
    if (layer.is_declared) return;
    layer.is_declared = true;
    const int colour = row.Whole(62, kColourOfNothing);
    layer.is_off = colour < 0;
    const int index = colour < 0 && colour > -256 ? -colour : colour;
    layer.colour = index >= 1 && index <= 255 ? index : kColourOfNothing;
    if (row.Has(420)) layer.true_colour = builder.TrueColour(row);
    const int flags = row.Whole(70);
    layer.is_frozen = (flags & kFrozen) != 0;
    layer.is_locked = (flags & kLocked) != 0;
    if (row.Has(6)) {
        const std::uint16_t line_type = builder.LineType(row.Text(6));
        layer.line_type = line_type < kLineByBlock ? line_type : 0;
    }
    layer.line_weight = std::clamp(row.Whole(370, kWeightOfNothing), -3, 1000);
    layer.description = description_of(row, builder);
}

void read_row(std::string_view table, const Entity& row, DrawingBuilder& builder) {
    if (table == "LAYER") {
        read_layer(row, builder);
    } else if (table == "LTYPE") {
        if (row.Has(2)) builder.LineType(row.Text(2));
    } else if (table == "STYLE") {
        builder.AddTextStyle(row.Handle(5), row.Text(2), row.Text(3));
    } else if (table == "DIMSTYLE") {
        builder.AddDimensionStyle(row);
    }
}

bool is_read(std::string_view table) {
    return table == "LAYER" || table == "LTYPE" || table == "STYLE" || table == "DIMSTYLE";
}

}  // namespace

void read_header(TagReader& tags, DrawingBuilder& builder) {
    std::string variable;
    while (tags.Next()) {
        if (tags.Begins("ENDSEC")) return;
        if (tags.Code() == 9) {
            variable = without_blanks(tags.Text());
        } else if (variable == "$ACADVER" && tags.Code() == 1) {
            builder.Decoder().SetVersion(tags.Text());
        } else if (variable == "$DWGCODEPAGE" && tags.Code() == 3) {
            builder.Decoder().SetCodePage(tags.Text());
        }
    }
    tags.Refuse("the file ends inside the section HEADER");
}

void read_tables(TagReader& tags, Entity& row, DrawingBuilder& builder) {
    while (tags.Next()) {
        if (tags.Code() != 0) continue;
        if (tags.Begins("ENDSEC")) return;
        const std::string name(tags.Text());
        if (!is_read(name)) continue;
        row.Begin();
        row.TakeAll(tags);
        read_row(name, row, builder);
    }
    tags.Refuse("the file ends inside the section TABLES");
}

}  // namespace zol::engine
