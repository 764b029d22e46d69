#include "engine/block/header_roles.h"

#include <array>
#include <string>

namespace zol::engine::block {

namespace {

struct NamedRole {
    std::string_view name;
    ColumnRole role;
};

// '?' stands for the axis letter.
struct Pattern {
    std::string_view name;
    Role role;
};

constexpr std::array kPatterns = {
    Pattern{"?", Role::Centroid},
    Pattern{"?c", Role::Centroid},
    Pattern{"?cen", Role::Centroid},
    Pattern{"?centre", Role::Centroid},
    Pattern{"?center", Role::Centroid},
    Pattern{"?centroid", Role::Centroid},
    Pattern{"centroid?", Role::Centroid},
    Pattern{"centre?", Role::Centroid},
    Pattern{"center?", Role::Centroid},
    Pattern{"?mid", Role::Centroid},
    Pattern{"mid?", Role::Centroid},
    Pattern{"?world", Role::Centroid},
    Pattern{"d?", Role::Size},
    Pattern{"?inc", Role::Size},
    Pattern{"?size", Role::Size},
    Pattern{"size?", Role::Size},
    Pattern{"dim?", Role::Size},
    Pattern{"?dim", Role::Size},
    Pattern{"?len", Role::Size},
    Pattern{"?length", Role::Size},
    Pattern{"length?", Role::Size},
    Pattern{"i?", Role::Index},
    Pattern{"?min", Role::Lower},
    Pattern{"?lo", Role::Lower},
    Pattern{"?l", Role::Lower},
    Pattern{"?max", Role::Upper},
    Pattern{"?hi", Role::Upper},
    Pattern{"?u", Role::Upper},
    Pattern{"?orig", Role::Origin},
    Pattern{"?morig", Role::Origin},
    Pattern{"?0", Role::Origin},
    Pattern{"n?", Role::Count},
};

constexpr std::array kWords = {
    NamedRole{"east", {Role::Centroid, 0}},    NamedRole{"easting", {Role::Centroid, 0}},
    NamedRole{"north", {Role::Centroid, 1}},   NamedRole{"northing", {Role::Centroid, 1}},
    NamedRole{"elev", {Role::Centroid, 2}},    NamedRole{"elevation", {Role::Centroid, 2}},
    NamedRole{"rl", {Role::Centroid, 2}},      NamedRole{"level", {Role::Centroid, 2}},
    NamedRole{"i", {Role::Index, 0}},          NamedRole{"j", {Role::Index, 1}},
    NamedRole{"k", {Role::Index, 2}},          NamedRole{"ijk", {Role::CellNumber, 0}},
    NamedRole{"id", {Role::CellNumber, 0}},    NamedRole{"block", {Role::CellNumber, 0}},
    NamedRole{"index", {Role::CellNumber, 0}},
};

std::string plain(std::string_view header) {
    std::string name;
    for (const char c : header) {
        if (c == '[' || c == '(') {
            break;
        }
        if (c != ' ' && c != '\t' && c != '_' && c != '"' && c != '\'') {
            // tolower would ask the locale, and Turkish has another small I.
            name += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        }
    }
    return name;
}

bool matches(std::string_view pattern, std::string_view name, char axis) {
    if (pattern.size() != name.size()) {
        return false;
    }
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name[i] != (pattern[i] == '?' ? axis : pattern[i])) {
            return false;
        }
    }
    return true;
}

}  // namespace

ColumnRole role_of_header(std::string_view header) {
    const std::string name = plain(header);
    for (const NamedRole& word : kWords) {
        if (word.name == name) {
            return word.role;
        }
    }
    for (const Pattern& pattern : kPatterns) {
        for (int axis = 0; axis < 3; ++axis) {
            if (matches(pattern.name, name, static_cast<char>('x' + axis))) {
                return {pattern.role, axis};
            }
        }
    }
    return {};
}

bool role_of_word(std::string_view word, ColumnRole& role) {
    constexpr std::array<NamedRole, 15> kRoles = {{{"x", {Role::Centroid, 0}},
                                                   {"y", {Role::Centroid, 1}},
                                                   {"z", {Role::Centroid, 2}},
                                                   {"dx", {Role::Size, 0}},
                                                   {"dy", {Role::Size, 1}},
                                                   {"dz", {Role::Size, 2}},
                                                   {"i", {Role::Index, 0}},
                                                   {"j", {Role::Index, 1}},
                                                   {"k", {Role::Index, 2}},
                                                   {"ijk", {Role::CellNumber, 0}},
                                                   {"xmin", {Role::Lower, 0}},
                                                   {"ymin", {Role::Lower, 1}},
                                                   {"zmin", {Role::Lower, 2}},
                                                   {"volume", {Role::None, 0}},
                                                   {"density", {Role::None, 0}}}};
    for (const NamedRole& known : kRoles) {
        if (known.name == word) {
            role = known.role;
            return true;
        }
    }
    if (word.size() == 4 && word.substr(1) == "max" && word[0] >= 'x' && word[0] <= 'z') {
        role = {Role::Upper, word[0] - 'x'};
        return true;
    }
    return false;
}

}  // namespace zol::engine::block
