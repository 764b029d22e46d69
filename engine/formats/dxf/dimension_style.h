// How dimensions of a style look, and how their measures are written.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "engine/formats/dxf/entity.h"
#include "engine/formats/dxf/text_decoder.h"

namespace zol::engine {

struct DimensionStyle {
    std::string name;
    std::string text_style;
    /// Of all lengths below; a measure is not changed by it.
    double scale = 1;
    double arrow_length = 0.18;
    double offset = 0.0625;
    double extension = 0.18;
    double text_height = 0.18;
    double gap = 0.09;
    /// 0 in the line, 1 above, 2 outside, 3 by the Japanese standard, 4 below.
    int text_place = 0;

    double factor = 1;
    double rounding = 0;
    int decimals = 4;
    int angle_decimals = 0;
    /// Bits: 4 drops a zero in front of the point, 8 zeros at the end; of angles 1 and 2.
    int zeros = 0;
    int angle_zeros = 0;
    char point = '.';
    /// Text around the measure, which "<>" stands for; without that, text behind it.
    std::string around;
    /// Of the table of text styles; 0 for none.
    std::uint64_t text_style_handle = 0;

    /// Takes what a row of the table says.
    void TakeRow(const Entity& row);
    /// Takes what the extended data of a dimension say in place of its style.
    void TakeOverrides(std::span<const ExtendedTag> tags, TextDecoder& decoder);

private:
    void Take(int code, double value);
};

enum class MeasureKind : std::uint8_t { Length, Radius, Diameter, Arc, Angle };

/// The measure of a length or of an angle in degrees as the style writes it: "R25", "60°".
std::string measure_text(double measure, MeasureKind kind, const DimensionStyle& style);

}  // namespace zol::engine
