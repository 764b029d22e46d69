// The words of a text file, wherever its lines end.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "engine/formats/line_numbers.h"
#include "engine/formats/text_lines.h"

namespace zol::engine {

class Words {
public:
    /// From the line behind the one that `lines` gave last.
    explicit Words(TextLines& lines) : lines_(lines) {}

    /// The next word, which stands until the next is asked for; empty behind the last.
    std::string_view Next() {
        std::string_view word = take_word(rest_);
        while (word.empty() && lines_.Next(rest_)) word = take_word(rest_);
        return word;
    }

    /// What is left of the line, without blanks around it; it is passed.
    std::string_view RestOfLine() {
        const std::string_view rest = without_blanks(rest_);
        rest_ = {};
        return rest;
    }

    /// The next word as a finite number. Throws ReadError when it is none.
    double Real() {
        double value = 0.0;
        while (rest_.empty() || take_real(rest_, value) != Taken::Number) PassLineEnd();
        return value;
    }

    /// Bytes of the line behind the last word.
    std::size_t LeftOfLine() const { return rest_.size(); }

    /// Throws ReadError with the line of the last word.
    [[noreturn]] void Refuse(const std::string& reason) const { lines_.Refuse(reason); }

private:
    // For a number that the line does not have.
    void PassLineEnd() {
        const std::string_view word = take_word(rest_);
        if (!word.empty()) Refuse(quoted(word) + " is no number");
        if (!lines_.Next(rest_)) Refuse("the file ends where a number is expected");
    }

    TextLines& lines_;
    std::string_view rest_;
};

}  // namespace zol::engine
