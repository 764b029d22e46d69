#include "engine/block/unique_names.h"

namespace zol::engine::block {

namespace {

// "_" and any 64-bit number.
constexpr std::size_t kLongestSuffix = 21;

// At most `size` bytes, and no part of a UTF-8 character at the end.
std::string cut(const std::string& text, std::size_t size) {
    if (text.size() <= size) return text;
    const auto continues = [&](std::size_t at) {
        return (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U;
    };
    // Three steps lead out of any character; what takes more is no UTF-8.
    std::size_t end = size;
    while (size - end < 3 && continues(end)) --end;
    return text.substr(0, end);
}

}  // namespace

std::string name_or_ordinal(std::string name, std::size_t ordinal) {
    if (name.empty()) name = "variable " + std::to_string(ordinal);
    return name;
}

UniqueNames::UniqueNames() {
    for (const std::string_view name : kPredefinedNames) taken_.emplace(name);
}

std::string UniqueNames::Take(const std::string& wanted) {
    std::string name = cut(wanted, kLongestName);
    if (taken_.insert(name).second) return name;
    const std::string stem = cut(wanted, kLongestName - kLongestSuffix);
    std::uint64_t& suffix = next_suffix_.try_emplace(stem, 2).first->second;
    // A file may hold "grade_2" of its own before the second "grade".
    do {
        name = stem + "_" + std::to_string(suffix++);
    } while (!taken_.insert(name).second);
    return name;
}

}  // namespace zol::engine::block
