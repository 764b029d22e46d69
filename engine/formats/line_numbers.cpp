#include "engine/formats/line_numbers.h"

#include "engine/formats/text_lines.h"

namespace zol::engine::line_numbers {

namespace {

template <class Number>
Taken take(std::string_view& rest, Number& value, bool (*read)(std::string_view, Number&)) {
    std::string_view behind = rest;
    const std::string_view word = take_word(behind);
    if (word.empty() || word.front() == '#') {
        rest = {};
        return Taken::Nothing;
    }
    if (!read(word, value)) return Taken::Rubbish;
    rest = behind;
    return Taken::Number;
}

}  // namespace

Taken take_real_with_care(std::string_view& rest, double& value) {
    return take(rest, value, read_real);
}

Taken take_whole_with_care(std::string_view& rest, std::int64_t& value) {
    return take(rest, value, read_whole);
}

}  // namespace zol::engine::line_numbers
