#include "engine/formats/text_dialect.h"

namespace zol::engine {

bool CellList::Grow() {
    constexpr std::size_t kMost = std::size_t{1} << 20;
    if (cells_.size() >= kMost) {
        return false;
    }
    cells_.resize(cells_.empty() ? 32 : 2 * cells_.size());
    return true;
}

std::string cell_text(const TextCell& cell, const TextDialect& dialect) {
    if (!cell.quoted) {
        return std::string(trimmed(cell.Raw()));
    }
    std::string text;
    const std::string_view raw = cell.Raw();
    text.reserve(raw.size());
    for (std::size_t i = 0; i < raw.size(); ++i) {
        const bool pair = i + 1 < raw.size();
        const bool doubled =
            pair && dialect.double_quote && raw[i] == dialect.quote && raw[i + 1] == dialect.quote;
        const bool escaped = pair && dialect.escape != 0 && raw[i] == dialect.escape &&
                             (raw[i + 1] == dialect.quote || raw[i + 1] == dialect.escape);
        if (doubled || escaped) {
            ++i;
        }
        text += raw[i];
    }
    return text;
}

char guess_row_end(std::string_view head) {
    const bool has_line_feed = head.find('\n') != std::string_view::npos;
    return !has_line_feed && head.find('\r') != std::string_view::npos ? '\r' : '\n';
}

}  // namespace zol::engine
