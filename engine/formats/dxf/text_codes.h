// The codes inside texts: `%%d` of single lines, `\P` and its like of texts of many lines.
#pragma once

#include <string>
#include <string_view>

namespace zol::engine {

/// A single line of text as it is shown: `%%d %%p %%c %%% %%nnn` and caret pairs replaced,
/// underlining and its like dropped. What is no code stays.
std::string shown_line(std::string_view text);

struct ShownText {
    /// Lines parted by LF, none behind the last.
    std::string lines;
    /// The font that the first letter is in; empty where the text names none.
    std::string font;
};

/// A text of many lines as it is shown, without its formatting. A fraction is written with a
/// slash, a column break begins a line.
ShownText shown_text(std::string_view text);

}  // namespace zol::engine
