// The lines of a text file, read in blocks.
//
// A line ends with LF, CR LF, CR alone, or with the file; a byte-order mark in front of the
// first is none of its text. Lines are views into the block, so nothing is copied.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "engine/formats/file.h"

namespace zol::engine {

class TextLines {
public:
    /// Bytes in front of every line, and behind it, that may be read.
    static constexpr std::size_t kMargin = 16;
    static constexpr std::size_t kMostBytesOfLine = std::size_t{1} << 26;

    /// Reads from byte `offset` of the file on, which must outlive this. Throws ReadError
    /// when the file begins with the mark of UTF-16 or UTF-32.
    explicit TextLines(const File& file, std::uint64_t offset = 0);

    /// Gives the next line without its end; false behind the last. It stands until the next
    /// call, and the byte behind it is never part of a number or a word. Throws ReadError for
    /// a line of more than kMostBytesOfLine bytes.
    bool Next(std::string_view& line) {
        const char* const end = EndOfLine();
        if (end == nullptr) return NextWithCare(line);
        line = {at_, static_cast<std::size_t>(end - at_)};
        PassEnd(end);
        return true;
    }

    /// The number of the line that Next gave last, from 1.
    std::uint64_t Number() const { return number_; }
    /// Where in the file the line behind that one begins. A LF behind a CR is passed.
    std::uint64_t NextOffset() const {
        return filled_offset_ - static_cast<std::uint64_t>(filled_ - at_);
    }

    /// Throws ReadError "line 12: the reason", of the line that Next gave last.
    [[noreturn]] void Refuse(const std::string& reason) const;

private:
    // The end of the line at at_ when it surely is in the block, or null.
    const char* EndOfLine();
    void PassEnd(const char* end) {
        at_ = end + (*end == '\r' && end[1] == '\n' ? 2 : 1);
        ++number_;
    }
    bool NextWithCare(std::string_view& line);
    bool ReadMore();
    void FindFeed(const char* from);
    void FindReturn(const char* from);

    const File& file_;
    std::unique_ptr<char[]> memory_;
    std::size_t room_ = 0;
    // From the next line to the end of what is read.
    const char* at_ = nullptr;
    const char* filled_ = nullptr;
    // The first LF and the first CR at or behind at_, or filled_; they may lie before it
    // when they have not been looked for again.
    const char* feed_ = nullptr;
    const char* return_ = nullptr;
    std::uint64_t filled_offset_ = 0;
    std::uint64_t number_ = 0;
};

inline const char* TextLines::EndOfLine() {
    if (feed_ < at_) FindFeed(at_);
    if (return_ < at_) FindReturn(at_);
    const char* const end = feed_ < return_ ? feed_ : return_;
    // Behind a CR at the end of the block a LF may follow.
    return filled_ - end > 1 ? end : nullptr;
}

/// Takes the next word off the front of `rest`: words are parted by blanks and tabs. Empty
/// when there is none.
inline std::string_view take_word(std::string_view& rest) {
    const auto is_blank = [](char c) { return c == ' ' || c == '\t'; };
    std::size_t begin = 0;
    while (begin < rest.size() && is_blank(rest[begin])) ++begin;
    std::size_t end = begin;
    while (end < rest.size() && !is_blank(rest[end])) ++end;
    const std::string_view word = rest.substr(begin, end - begin);
    rest.remove_prefix(end);
    return word;
}

/// Without blanks and tabs at both ends.
std::string_view without_blanks(std::string_view text);

/// The same without a comment at the end, too: a # that begins the text or has a blank in
/// front of it begins one.
std::string_view without_comment(std::string_view text);

/// True when the texts are the same but for the case of A to Z.
bool is_same_word(std::string_view a, std::string_view b);

/// Reads all of `word` as a finite decimal number, whatever the locale: "+1", "2.", ".5" and
/// "1E02" are some, "nan", "inf", "1e999" and "3.1+e2" are none.
bool read_real(std::string_view word, double& value);

/// Reads all of `word` as a whole number of 64 bits, with a sign or none.
bool read_whole(std::string_view word, std::int64_t& value);

/// A word for a text about a fault: in quotes, cut when it is long, control characters as
/// "\x00".
std::string quoted(std::string_view word);

}  // namespace zol::engine
