#include "support/regex_list.h"

namespace zol::support {

namespace {

std::size_t byte_at(std::string_view text, std::size_t at) {
    return static_cast<unsigned char>(text[at]);
}

void add_range(std::bitset<256>& members, std::size_t first, std::size_t last) {
    for (std::size_t byte = first; byte <= last; ++byte) {
        members.set(byte);
    }
}

// Have a meaning of their own in a list, so each has its place there.
bool is_special(std::size_t byte) {
    return byte == ']' || byte == '[' || byte == '^' || byte == '-';
}

void append_ranges(std::string& text, const std::bitset<256>& members) {
    const auto plain = [&](std::size_t byte) {
        return byte < members.size() && members[byte] && !is_special(byte);
    };
    for (std::size_t first = 0; first < members.size(); ++first) {
        if (!plain(first)) {
            continue;
        }
        std::size_t last = first;
        while (plain(last + 1)) {
            ++last;
        }
        text += static_cast<char>(first);
        if (last > first + 1) {
            text += '-';
        }
        if (last > first) {
            text += static_cast<char>(last);
        }
        first = last;
    }
}

}  // namespace

void append_ordinary(std::string& text, char byte) {
    constexpr std::string_view kSpecial = "\\.*+?[^$";
    if (kSpecial.find(byte) != kSpecial.npos) {
        text += '\\';
    }
    text += byte;
}

std::optional<ByteList> ByteList::Read(std::string_view pattern, std::size_t& at) {
    ByteList list;
    std::size_t next = at + 1;
    const auto is = [&](std::size_t place, char wanted) {
        return place < pattern.size() && pattern[place] == wanted;
    };
    list.inverted = is(next, '^');
    next += list.inverted ? 1 : 0;
    const std::size_t first = next;
    while (next < pattern.size() && (pattern[next] != ']' || next == first)) {
        const std::size_t start = byte_at(pattern, next);
        const auto goes_on = [&](std::size_t dash) {
            return is(dash, '-') && dash + 1 < pattern.size() && pattern[dash + 1] != ']';
        };
        if (goes_on(next + 1)) {
            add_range(list.members, start, byte_at(pattern, next + 2));
            next += 3;
            // A range that goes on, as in "a-c-e", goes on from its end.
            while (goes_on(next)) {
                add_range(list.members, byte_at(pattern, next - 1), byte_at(pattern, next + 1));
                next += 2;
            }
        } else {
            list.members.set(start);
            ++next;
        }
    }
    if (next >= pattern.size()) {
        return std::nullopt;
    }
    at = next + 1;
    return list;
}

void ByteList::FoldCase() {
    for (std::size_t small = 'a'; small <= 'z'; ++small) {
        if (members[small]) {
            members.reset(small);
            members.set(small - 'a' + 'A');
        }
    }
}

std::string ByteList::Text() const {
    std::string text = inverted ? "[^" : "[";
    if (members.none()) {
        // A range that ends below its start.
        return text + "\x02-\x01]";
    }
    if (!inverted && members.count() == 1) {
        std::string single;
        append_ordinary(single, static_cast<char>(members._Find_first()));
        return single;
    }
    if (members[']']) {
        text += ']';
    }
    append_ranges(text, members);
    if (members['[']) {
        // Never followed by a full stop, a colon or an equals sign.
        text += '[';
    }
    // With nothing before it a "^" would invert the list.
    const bool dash_first = text == "[" && members['-'];
    if (dash_first) {
        text += '-';
    }
    if (members['^']) {
        text += '^';
    }
    if (members['-'] && !dash_first) {
        text += '-';
    }
    return text + ']';
}

}  // namespace zol::support
