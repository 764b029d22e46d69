#include "engine/formats/row_reader.h"

#include <algorithm>

#include "engine/formats/special_bytes.h"

namespace zol::engine {

namespace {

bool all_blank(const char* from, const char* to) {
    return std::all_of(from, to, is_blank);
}

}  // namespace

RowReader::RowReader(std::string_view text, const TextDialect& dialect) : dialect_(dialect) {
    Restart(text);
}

void RowReader::Restart(std::string_view text) {
    text_ = text;
    end_ = text.data() + text.size();
    row_ = text.data();
    next_row_ = text.data();
    closed_ = false;
    next_place_ = 0;
    const char quote = dialect_.quote != 0 ? dialect_.quote : dialect_.row_end;
    if (!dialect_.ByBlanks()) {
        find_special_bytes(text, {dialect_.row_end, dialect_.delimiter, quote}, places_);
    }
}

RowReader::Outcome RowReader::Next(CellList& cells) {
    while (next_row_ != end_) {
        row_ = next_row_;
        if (dialect_.comment != 0 && *row_ == dialect_.comment) {
            PassOverRow(row_);
            continue;
        }
        cells.Clear();
        const Outcome outcome = dialect_.ByBlanks() ? ReadByBlanks(cells) : ReadDelimited(cells);
        if (outcome != Outcome::Row || !IsPassedOver(cells)) {
            return outcome;
        }
    }
    return Outcome::End;
}

// Spreadsheets leave rows of nothing but separators, and old ones an end-of-file mark.
bool RowReader::IsPassedOver(const CellList& cells) const {
    // One look tells nearly every row.
    if (cells.size() > 0 && cells[0].begin != cells[0].end && *cells[0].begin > ' ') {
        return false;
    }
    return std::all_of(cells.begin(), cells.end(), [](const TextCell& cell) {
        const bool end_mark = cell.end - cell.begin == 1 && *cell.begin == '\x1a';
        return !cell.quoted && (end_mark || all_blank(cell.begin, cell.end));
    });
}

const char* RowReader::CellEnd(const char* at) const {
    const bool before_row_end = at == end_ || *at == dialect_.row_end;
    return before_row_end && at != row_ && at[-1] == '\r' ? at - 1 : at;
}

void RowReader::PassOverRow(const char* from) {
    if (dialect_.ByBlanks()) {
        next_row_ = std::find(from, end_, dialect_.row_end);
    } else {
        do {
            next_row_ = NextSpecial();
        } while (next_row_ != end_ && *next_row_ != dialect_.row_end);
    }
    closed_ = next_row_ != end_;
    next_row_ += closed_ ? 1 : 0;
}

RowReader::Outcome RowReader::ReadDelimited(CellList& cells) {
    const char* begin = row_;
    for (;;) {
        const char* at = NextSpecial();
        if (at != end_ && dialect_.quote != 0 && *at == dialect_.quote) {
            // A quote opens a text only at the start of its cell; elsewhere it is a character.
            if (!all_blank(begin, at)) {
                continue;
            }
            const char* close = ClosingQuote(at);
            if (close == end_) {
                return Outcome::OpenQuote;
            }
            const char* stop = NextSpecial();
            if (!all_blank(close + 1, stop)) {
                return Outcome::TextBehindQuote;
            }
            cells.Add(at + 1, close, true);
            at = stop;
        } else {
            cells.Add(begin, CellEnd(at), false);
        }
        if (at == end_ || *at == dialect_.row_end) {
            closed_ = at != end_;
            next_row_ = at + (closed_ ? 1 : 0);
            return Outcome::Row;
        }
        begin = at + 1;
    }
}

const char* RowReader::ClosingQuote(const char* from) {
    for (;;) {
        const char* at = NextSpecial();
        if (at == end_) {
            return end_;
        }
        if (*at != dialect_.quote) {
            continue;
        }
        if (dialect_.escape != 0 && dialect_.escape != dialect_.quote) {
            const char* escape = at;
            while (escape - 1 != from && escape[-1] == dialect_.escape) {
                --escape;
            }
            if ((at - escape) % 2 != 0) {
                continue;
            }
        }
        if (dialect_.double_quote && at + 1 != end_ && at[1] == dialect_.quote) {
            NextSpecial();
            continue;
        }
        return at;
    }
}

const char* RowReader::ClosingQuoteAmongBlanks(const char* from) const {
    for (const char* at = std::find(from, end_, dialect_.quote); at != end_;
         at = std::find(at, end_, dialect_.quote)) {
        const bool doubled = dialect_.double_quote && at + 1 != end_ && at[1] == dialect_.quote;
        if (!doubled) {
            return at;
        }
        at += 2;
    }
    return end_;
}

RowReader::Outcome RowReader::ReadByBlanks(CellList& cells) {
    const char* at = row_;
    for (;;) {
        while (at != end_ && is_blank(*at) && *at != dialect_.row_end) {
            ++at;
        }
        if (at == end_ || *at == dialect_.row_end) {
            closed_ = at != end_;
            next_row_ = at + (closed_ ? 1 : 0);
            return Outcome::Row;
        }
        const bool quoted = dialect_.quote != 0 && *at == dialect_.quote;
        const char* begin = quoted ? at + 1 : at;
        const auto ends_cell = [this](char c) { return is_blank(c) || c == dialect_.row_end; };
        const char* stop =
            quoted ? ClosingQuoteAmongBlanks(begin) : std::find_if(begin, end_, ends_cell);
        if (quoted && stop == end_) {
            return Outcome::OpenQuote;
        }
        cells.Add(begin, stop, quoted);
        at = quoted ? stop + 1 : stop;
    }
}

}  // namespace zol::engine
