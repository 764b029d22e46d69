#include <limits>

#include "engine/formats/mesh/ply_body.h"

namespace zol::engine {

PlyWords::PlyWords(const File& file, const PlyHeader& header)
    : file_(file), header_(header), lines_(file), words_(lines_) {
    std::string_view line;
    while (lines_.NextOffset() < header.body && lines_.Next(line)) {
    }
}

double PlyWords::AnyNumber(PlyType) {
    const std::string_view word = words_.Next();
    if (word.empty()) words_.Refuse("the file ends where a number is expected");
    double value = 0.0;
    return read_real(word, value) ? value : std::numeric_limits<double>::quiet_NaN();
}

void PlyWords::Skip(PlyType, std::uint64_t numbers) {
    for (; numbers > 0; --numbers) {
        if (words_.Next().empty()) words_.Refuse("the file ends where a number is expected");
    }
}

bool PlyWords::HasLineForEachElement() {
    if (has_line_for_each_) return *has_line_for_each_;
    std::uint64_t elements = 0;
    for (const PlyElement& element : header_.elements) elements += element.count;
    std::uint64_t lines = 0;
    TextLines body(file_, header_.body);
    for (std::string_view line; body.Next(line);) lines += without_blanks(line).empty() ? 0U : 1U;
    has_line_for_each_ = lines == elements;
    return *has_line_for_each_;
}

}  // namespace zol::engine
