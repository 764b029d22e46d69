#include "support/message_text.h"

#include <algorithm>

#include "support/messages.h"

namespace zol::support {

std::string translate_pieces(const std::string& text,
                             const std::function<std::string(const std::string&)>& translate) {
    std::string result;
    std::size_t at = 0;
    while (at < text.size()) {
        if (is_space(text[at])) {
            result += text[at++];
            continue;
        }
        std::size_t end = std::min(text.find_first_of("\t\n", at), text.size());
        while (is_space(text[end - 1])) --end;
        result += translate(text.substr(at, end - at));
        at = end;
    }
    return result;
}

}  // namespace zol::support

std::string msg_Clean(const std::string& text) {
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char next = at + 1 < text.size() ? text[at + 1] : '\0';
        if (text[at] == '#' && next == '#') break;
        const bool escape = text[at] == '\\' && (next == '\\' || next == '#');
        if (escape) ++at;
        result += text[at];
    }
    return result;
}
