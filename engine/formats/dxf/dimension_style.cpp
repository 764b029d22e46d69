#include "engine/formats/dxf/dimension_style.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "engine/formats/dxf/text_codes.h"

namespace zol::engine {

namespace {

constexpr int kNumberCodes[] = {40, 41, 42, 44, 45, 77, 78, 79, 140, 144, 147, 179, 271, 278};

std::string fixed_text(double value, int decimals, bool drops_first, bool drops_last, char point) {
    // A number of 1e100 has 101 digits.
    std::array<char, 160> digits{};
    decimals = std::clamp(decimals, 0, 8);
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                   std::chars_format::fixed, decimals);
    std::string text(digits.data(), end.ptr);
    if (const std::size_t at = text.find('.'); at != text.npos) {
        if (drops_last) {
            text.erase(text.find_last_not_of('0') + 1);
            if (text.back() == '.') text.pop_back();
        }
        if (drops_first && at < text.size() && text.starts_with("0.")) text.erase(0, 1);
        std::replace(text.begin(), text.end(), '.', point);
    }
    return text.find_first_of("123456789") == text.npos && text.starts_with('-') ? text.substr(1)
                                                                                 : text;
}

}  // namespace

void DimensionStyle::Take(int code, double value) {
    const auto whole = static_cast<int>(std::clamp(value, -1e9, 1e9));
    switch (code) {
        case 40:
            // 0 leaves the scale to the view.
            scale = value > 0 ? value : 1;
            break;
        case 41:
            arrow_length = value;
            break;
        case 42:
            offset = value;
            break;
        case 44:
            extension = value;
            break;
        case 45:
            rounding = value;
            break;
        case 77:
            text_place = whole;
            break;
        case 78:
            zeros = whole;
            break;
        case 79:
            angle_zeros = whole;
            break;
        case 140:
            text_height = value;
            break;
        case 144:
            factor = value == 0 ? 1 : std::fabs(value);
            break;
        case 147:
            gap = value;
            break;
        case 179:
            angle_decimals = whole;
            break;
        case 271:
            decimals = whole;
            break;
        case 278:
            point = whole == ',' || whole == ' ' ? static_cast<char>(whole) : '.';
            break;
        default:
            break;
    }
}

void DimensionStyle::TakeRow(const Entity& row) {
    for (const int code : kNumberCodes) {
        if (row.Has(code)) Take(code, row.Real(code));
    }
    text_style_handle = row.Handle(340);
}

void DimensionStyle::TakeOverrides(std::span<const ExtendedTag> tags, TextDecoder& decoder) {
    bool is_ours = false;
    bool is_inside = false;
    int code = -1;
    for (const ExtendedTag& tag : tags) {
        if (tag.code == 1001) {
            is_ours = tag.text == "ACAD";
            is_inside = false;
        } else if (is_ours && tag.code == 1000 && tag.text == "DSTYLE") {
            is_inside = true;
            code = -1;
        } else if (is_inside && tag.code == 1002) {
            if (tag.text.starts_with('}')) is_inside = false;
        } else if (is_inside && code < 0) {
            code = static_cast<int>(std::clamp(tag.number, -1.0, 1e6));
        } else if (is_inside) {
            if (tag.code >= 1010) Take(code, tag.number);
            if (tag.code == 1000 && code == 3) around = shown_line(decoder.Decode(tag.text));
            code = -1;
        }
    }
}

std::string measure_text(double measure, MeasureKind kind, const DimensionStyle& style) {
    if (kind == MeasureKind::Angle) {
        const int decimals = style.angle_decimals < 0 ? style.decimals : style.angle_decimals;
        return fixed_text(measure, decimals, (style.angle_zeros & 1) != 0,
                          (style.angle_zeros & 2) != 0, style.point) +
               "\xC2\xB0";
    }
    double shown = measure * style.factor;
    if (style.rounding > 0 && shown / style.rounding < 1e15) {
        shown = std::round(shown / style.rounding) * style.rounding;
    }
    std::string text = fixed_text(shown, style.decimals, (style.zeros & 4) != 0,
                                  (style.zeros & 8) != 0, style.point);
    if (!style.around.empty()) {
        const std::size_t at = style.around.find("<>");
        if (at == style.around.npos) return text + style.around;
        return style.around.substr(0, at) + text + style.around.substr(at + 2);
    }
    constexpr const char* kDiameter = "\xE2\x8C\x80";
    if (kind == MeasureKind::Radius) return "R" + text;
    if (kind == MeasureKind::Diameter) return kDiameter + text;
    return text;
}

}  // namespace zol::engine
