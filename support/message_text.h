// The shape of a message: the pieces that are translated each by itself, and the white
// space between them that stays.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace zol::support {

/// White space as the "C" locale has it, whatever locale the process has set.
constexpr bool is_space(char byte) {
    return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

/// The text with every piece put through `translate`. A piece begins at a byte that is no
/// white space and ends at the last such byte before a tab, a newline or the end.
std::string translate_pieces(const std::string& text,
                             const std::function<std::string(const std::string&)>& translate);

}  // namespace zol::support
