// What kind of value stands behind a group code.
#pragma once

#include <cstdint>

namespace zol::engine {

enum class TagType : std::uint8_t {
    Unknown,
    Text,
    Real,
    Byte,
    Whole16,
    Whole32,
    Whole64,
    Bytes,
};

inline constexpr int kMostTagCode = 1071;

struct TagRange {
    int first;
    int last;
    TagType type;
};

inline constexpr TagRange kTagRanges[] = {
    {0, 9, TagType::Text},          {10, 59, TagType::Real},        {60, 79, TagType::Whole16},
    {90, 99, TagType::Whole32},     {100, 109, TagType::Text},      {110, 149, TagType::Real},
    {160, 169, TagType::Whole64},   {170, 179, TagType::Whole16},   {210, 239, TagType::Real},
    {270, 289, TagType::Whole16},   {290, 299, TagType::Byte},      {300, 309, TagType::Text},
    {310, 319, TagType::Bytes},     {320, 369, TagType::Text},      {370, 389, TagType::Whole16},
    {390, 399, TagType::Text},      {400, 409, TagType::Whole16},   {410, 419, TagType::Text},
    {420, 429, TagType::Whole32},   {430, 439, TagType::Text},      {440, 459, TagType::Whole32},
    {460, 469, TagType::Real},      {470, 481, TagType::Text},      {999, 1003, TagType::Text},
    {1004, 1004, TagType::Bytes},   {1005, 1009, TagType::Text},    {1010, 1059, TagType::Real},
    {1060, 1070, TagType::Whole16}, {1071, 1071, TagType::Whole32},
};

constexpr TagType tag_type(int code) {
    for (const TagRange& range : kTagRanges) {
        if (code >= range.first && code <= range.last) return range.type;
    }
    return TagType::Unknown;
}

}  // namespace zol::engine
