#include "support/variant_text_tokens.h"

#include <algorithm>

#include "support/ascii.h"

namespace zol::support {

namespace {

constexpr TextFault kEndOfFile{1, "Unexpected End Of File", nullptr};

constexpr bool is_of_number(int c) {
    return is_digit(c) || c == '+' || c == '-' || c == '.' || c == 'e' || c == 'E';
}

}  // namespace

int VariantTokens::NextUnusualChar(bool skip_blanks) {
    // Whatever came before, so that a star in front of a token begins a comment within a
    // line too, but not behind blanks.
    int previous = '\n';
    for (;;) {
        int c = source_.Get();
        if (c == '\n') {
            ++line_;
        } else if (c == '*' && previous == '\n') {
            c = SkipComment();
        }
        if (c == ByteSource::kEnd) {
            is_at_end_ = true;
            Fail(kEndOfFile);
            return 0;
        }
        if (!skip_blanks || !is_blank(c)) {
            return c;
        }
        previous = c;
        if (c == ' ') {
            SkipIndentation();
        }
    }
}

void VariantTokens::SkipIndentation() {
    const char* at = source_.begin();
    while (at != source_.end() && *at == ' ') {
        ++at;
    }
    source_.Skip(at);
}

// Its newline, which is not counted, or the end.
int VariantTokens::SkipComment() {
    int c = source_.Get();
    while (c != '\n' && c != ByteSource::kEnd) {
        c = source_.Get();
    }
    return c;
}

void VariantTokens::ReadQuoted(std::string& text) {
    while (ReadQuotedPiece(text)) {
        int c = source_.Get();
        while (is_blank(c)) {
            line_ += c == '\n' ? 1 : 0;
            c = source_.Get();
        }
        if (c == ByteSource::kEnd) {
            return;
        }
        if (c != '"') {
            source_.Unget();
            return;
        }
    }
}

// False at the end of the source. Its newlines are not counted.
bool VariantTokens::ReadQuotedPiece(std::string& text) {
    for (;;) {
        source_.Fill();
        const char* const end = find_quote_or_backslash(source_.begin(), source_.end());
        text.append(source_.begin(), end);
        source_.Skip(end);
        int c = source_.Get();
        if (c == '"') {
            return true;
        }
        if (c == '\\') {
            c = source_.Get();
        }
        text += static_cast<char>(c == ByteSource::kEnd ? 0xFF : c);
        if (c == ByteSource::kEnd) {
            return false;
        }
    }
}

template <typename Belongs>
void VariantTokens::Gather(Belongs belongs) {
    // Each byte is looked at as a token is: the one behind may begin a comment.
    int c = NextChar(false);
    while (belongs(c)) {
        gathered_ += static_cast<char>(c);
        c = NextChar(false);
    }
    PushBack();
}

// Most numbers are whole in the window, and the byte behind them is of no interest here.
bool VariantTokens::ReadPlainNumber(Number& number) {
    const char* const begin = source_.begin();
    const char* at = begin;
    bool is_whole = is_digit(static_cast<unsigned char>(*(begin - 1)));
    while (at != source_.end() && is_of_number(static_cast<unsigned char>(*at))) {
        is_whole = is_whole && is_digit(static_cast<unsigned char>(*at));
        ++at;
    }
    if (at == source_.end() || *at == '\n' || *at == '*' || *at == 'x') {
        return false;
    }
    number = {{begin - 1, at}, false, is_whole};
    source_.Skip(at);
    return true;
}

VariantTokens::Number VariantTokens::ReadNumber(int first) {
    if (Number number{}; ReadPlainNumber(number)) {
        return number;
    }
    gathered_.clear();
    if (NextChar(false) == 'x') {
        Gather(is_hex_digit);
        return {gathered_, true, false};
    }
    PushBack();
    gathered_ += static_cast<char>(first);
    Gather(is_of_number);
    const bool is_whole = std::all_of(gathered_.begin(), gathered_.end(), [](char c) {
        return is_digit(static_cast<unsigned char>(c));
    });
    return {gathered_, false, is_whole};
}

}  // namespace zol::support
