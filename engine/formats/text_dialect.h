// How a delimited text is written: what ends a row, what parts its cells.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zol::engine {

struct TextDialect {
    /// Parts cells; a blank stands for any run of blanks and tabs.
    char delimiter = ',';
    /// Opens and closes a text, at the start of a cell only; 0 for none.
    char quote = '"';
    /// A doubled quote inside a quoted cell stands for one.
    bool double_quote = true;
    /// The character before a quote, or before itself, that takes its meaning away; 0 for none.
    char escape = 0;
    /// Rows that begin with it are passed over; 0 for none.
    char comment = 0;
    /// '\n', with or without '\r' before it, or '\r' alone.
    char row_end = '\n';

    bool ByBlanks() const { return delimiter == ' '; }
};

/// A cell of a row: where its characters stand. Of a quoted cell the quotes are
/// left out, and what is doubled or escaped inside is still to be resolved.
struct TextCell {
    const char* begin = nullptr;
    const char* end = nullptr;
    bool quoted = false;

    std::string_view Raw() const { return {begin, static_cast<std::size_t>(end - begin)}; }
};

/// The cells of one row. Reused from row to row: adding a cell costs three stores.
/// Beyond a million cells, which is more than any table has columns, the rest is
/// dropped.
class CellList {
public:
    void Clear() { size_ = 0; }
    void Add(const char* begin, const char* end, bool quoted) {
        if (size_ == cells_.size() && !Grow()) {
            return;
        }
        cells_[size_++] = {begin, end, quoted};
    }

    std::size_t size() const { return size_; }
    const TextCell& operator[](std::size_t i) const { return cells_[i]; }
    const TextCell* begin() const { return cells_.data(); }
    const TextCell* end() const { return cells_.data() + size_; }

private:
    // False when there are enough.
    bool Grow();

    std::vector<TextCell> cells_;
    std::size_t size_ = 0;
};

/// A cell's text with quotes and escapes resolved; blanks around an unquoted cell
/// don't belong to it.
std::string cell_text(const TextCell& cell, const TextDialect& dialect);

inline bool is_blank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

/// The characters without blanks and tabs at both ends.
inline std::string_view trimmed(std::string_view text) {
    while (!text.empty() && is_blank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && is_blank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

/// '\n', or '\r' when the text has that and no '\n' at all.
char guess_row_end(std::string_view head);

}  // namespace zol::engine
