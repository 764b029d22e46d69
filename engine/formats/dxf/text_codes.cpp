#include "engine/formats/dxf/text_codes.h"

#include <cstddef>
#include <cstdint>

#include "engine/formats/dxf/text_decoder.h"

namespace zol::engine {

namespace {

constexpr const char* kNoBreakSpace = "\xC2\xA0";

char small(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

// What a caret pair stands for is control characters, the caret itself has a blank behind it.
std::size_t take_caret(std::string_view rest, std::string& to) {
    if (rest.size() < 2) {
        to += '^';
        return 1;
    }
    switch (rest[1]) {
        case 'J':
            to += '\n';
            return 2;
        case 'I':
            to += '\t';
            return 2;
        case 'M':
            return 2;
        case ' ':
            to += '^';
            return 2;
        default:
            to += '^';
            return 1;
    }
}

// Takes a code that begins with two percent signs; the number of bytes it has.
std::size_t take_percent(std::string_view rest, std::string& to) {
    if (rest.size() < 3 || rest[1] != '%') {
        to += '%';
        return 1;
    }
    switch (small(rest[2])) {
        case 'd':
            append_utf8(0xB0, to);
            return 3;
        case 'p':
            append_utf8(0xB1, to);
            return 3;
        case 'c':
            append_utf8(0x2300, to);
            return 3;
        case '%':
            to += '%';
            return 3;
        case 'u':
        case 'o':
        case 'k':
            return 3;
        default:
            break;
    }
    if (rest.size() >= 5 && is_digit(rest[2]) && is_digit(rest[3]) && is_digit(rest[4])) {
        append_utf8(static_cast<std::uint32_t>((rest[2] - '0') * 100 + (rest[3] - '0') * 10 +
                                               (rest[4] - '0')),
                    to);
        return 5;
    }
    to += "%%";
    return 2;
}

class MultilineText {
public:
    explicit MultilineText(std::string_view text) : rest_(text) {}

    ShownText Read() {
        while (!rest_.empty()) {
            const char c = rest_.front();
            if (c == '\\') {
                TakeCode();
            } else if (c == '{' || c == '}') {
                Pass(1);
            } else if (c == '^') {
                Pass(take_caret(rest_, shown_.lines));
            } else if (c == '%') {
                Pass(take_percent(rest_, shown_.lines));
            } else {
                shown_.lines += c;
                Pass(1);
            }
        }
        return std::move(shown_);
    }

private:
    void Pass(std::size_t count) { rest_.remove_prefix(count); }

    void TakeCode() {
        if (rest_.size() < 2) {
            shown_.lines += '\\';
            Pass(1);
            return;
        }
        const char code = rest_[1];
        Pass(2);
        switch (code) {
            case 'P':
            case 'N':
            case 'X':
                shown_.lines += '\n';
                break;
            case '~':
                shown_.lines += kNoBreakSpace;
                break;
            case 'L':
            case 'l':
            case 'O':
            case 'o':
            case 'K':
            case 'k':
                break;
            case 'f':
            case 'F':
                TakeFont(Argument());
                break;
            case 'H':
            case 'W':
            case 'Q':
            case 'T':
            case 'A':
            case 'C':
            case 'c':
            case 'p':
                Argument();
                break;
            case 'S':
                TakeStack();
                break;
            default:
                // A backslash, a brace, or what nobody gave a meaning.
                shown_.lines += code;
        }
    }

    // Up to the semicolon that ends it.
    std::string_view Argument() {
        const std::size_t end = rest_.find(';');
        const std::string_view argument = rest_.substr(0, end);
        Pass(end == rest_.npos ? rest_.size() : end + 1);
        return argument;
    }

    void TakeFont(std::string_view argument) {
        if (shown_.font.empty() && shown_.lines.empty()) {
            shown_.font = argument.substr(0, argument.find('|'));
        }
    }

    // Upper and lower part; one of them alone is a raised or lowered text.
    void TakeStack() {
        std::string upper;
        std::string lower;
        bool is_lower = false;
        bool is_over = false;
        while (!rest_.empty() && !is_over) {
            char c = rest_.front();
            Pass(1);
            if (c == ';') {
                is_over = true;
            } else if (!is_lower && (c == '/' || c == '#' || c == '^')) {
                is_lower = true;
                // The caret has a blank behind it that is none of the text.
                if (c == '^' && rest_.starts_with(' ')) Pass(1);
            } else {
                if (c == '\\' && !rest_.empty()) {
                    c = rest_.front();
                    Pass(1);
                }
                (is_lower ? lower : upper) += c;
            }
        }
        shown_.lines += upper;
        if (!upper.empty() && !lower.empty()) shown_.lines += '/';
        shown_.lines += lower;
    }

    std::string_view rest_;
    ShownText shown_;
};

}  // namespace

std::string shown_line(std::string_view text) {
    std::string shown;
    while (!text.empty()) {
        std::size_t taken = 1;
        if (text.front() == '%') {
            taken = take_percent(text, shown);
        } else if (text.front() == '^') {
            taken = take_caret(text, shown);
        } else {
            shown += text.front();
        }
        text.remove_prefix(taken);
    }
    return shown;
}

ShownText shown_text(std::string_view text) {
    return MultilineText(text).Read();
}

}  // namespace zol::engine
