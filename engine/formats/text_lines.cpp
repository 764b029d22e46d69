#include "engine/formats/text_lines.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

#include "engine/formats/number_text.h"
#include "engine/formats/read_error.h"

namespace zol::engine {

namespace {

constexpr std::size_t kBlock = std::size_t{1} << 18;

void refuse_wide_text(std::string_view head) {
    // That of UTF-32 begins with the mark of UTF-16.
    if (head.starts_with(std::string_view("\xFF\xFE\0\0", 4)) ||
        head.starts_with(std::string_view("\0\0\xFE\xFF", 4))) {
        throw ReadError("the text is UTF-32; save it as UTF-8");
    }
    if (head.starts_with("\xFF\xFE") || head.starts_with("\xFE\xFF")) {
        throw ReadError("the text is UTF-16; save it as UTF-8");
    }
}

}  // namespace

TextLines::TextLines(const File& file, std::uint64_t offset) : file_(file), filled_offset_(offset) {
    ReadMore();
    if (offset != 0) return;
    const std::string_view head(at_, static_cast<std::size_t>(filled_ - at_));
    refuse_wide_text(head);
    if (head.starts_with("\xEF\xBB\xBF")) at_ += 3;
}

void TextLines::FindFeed(const char* from) {
    const void* const found = std::memchr(from, '\n', static_cast<std::size_t>(filled_ - from));
    feed_ = found == nullptr ? filled_ : static_cast<const char*>(found);
}

void TextLines::FindReturn(const char* from) {
    const void* const found = std::memchr(from, '\r', static_cast<std::size_t>(filled_ - from));
    return_ = found == nullptr ? filled_ : static_cast<const char*>(found);
}

// Reads behind what is there, after that has moved to the front; false at the end of the file.
bool TextLines::ReadMore() {
    const auto kept = static_cast<std::size_t>(filled_ - at_);
    if (kept > kMostBytesOfLine) {
        ++number_;
        Refuse("it is longer than " + std::to_string(kMostBytesOfLine) + " bytes");
    }
    const std::size_t needed = kMargin + kept + kBlock + kMargin;
    if (needed > room_) {
        auto larger = std::make_unique_for_overwrite<char[]>(2 * needed);
        std::memset(larger.get(), '\n', kMargin);
        if (kept > 0) std::memcpy(larger.get() + kMargin, at_, kept);
        memory_ = std::move(larger);
        room_ = 2 * needed;
    } else if (kept > 0 && at_ != memory_.get() + kMargin) {
        std::memmove(memory_.get() + kMargin, at_, kept);
    }
    at_ = memory_.get() + kMargin;
    char* const to = memory_.get() + kMargin + kept;
    const std::size_t count = file_.ReadAt(filled_offset_, to, kBlock);
    filled_ = to + count;
    filled_offset_ += count;
    // A line that the file ends has a line end behind it too.
    std::memset(to + count, '\n', kMargin);
    // The last byte before may be a line end that waited for what follows it.
    const char* const unseen = kept > 0 ? to - 1 : to;
    FindFeed(unseen);
    FindReturn(unseen);
    return count > 0;
}

bool TextLines::NextWithCare(std::string_view& line) {
    while (ReadMore()) {
        if (const char* const end = EndOfLine(); end != nullptr) {
            line = {at_, static_cast<std::size_t>(end - at_)};
            PassEnd(end);
            return true;
        }
    }
    if (at_ == filled_) return false;
    const char* const end = std::min(feed_, return_);
    line = {at_, static_cast<std::size_t>(end - at_)};
    at_ = std::min(end + 1, filled_);
    ++number_;
    return true;
}

void TextLines::Refuse(const std::string& reason) const {
    throw ReadError("line " + std::to_string(number_) + ": " + reason);
}

std::string_view without_blanks(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(" \t");
    if (begin == text.npos) return {};
    return text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

std::string_view without_comment(std::string_view text) {
    for (std::size_t at = text.find('#'); at != text.npos; at = text.find('#', at + 1)) {
        if (at > 0 && text[at - 1] != ' ' && text[at - 1] != '\t') continue;
        text = text.substr(0, at);
        break;
    }
    return without_blanks(text);
}

bool is_same_word(std::string_view a, std::string_view b) {
    const auto small = [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](char x, char y) { return small(x) == small(y); });
}

bool read_real(std::string_view word, double& value) {
    double read = 0;
    if (!parse_number(word, read) || !std::isfinite(read)) return false;
    value = read;
    return true;
}

bool read_whole(std::string_view word, std::int64_t& value) {
    if (word.starts_with('+')) {
        word.remove_prefix(1);
        if (word.starts_with('-')) return false;
    }
    const auto end = std::from_chars(word.data(), word.data() + word.size(), value);
    return end.ec == std::errc() && end.ptr == word.data() + word.size();
}

std::string quoted(std::string_view word) {
    constexpr std::size_t kMost = 40;
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text = "\"";
    for (const char c : word.substr(0, kMost)) {
        const auto code = static_cast<unsigned char>(c);
        if (code >= 0x20 && code != 0x7F) {
            text += c;
        } else {
            text += "\\x";
            text += kDigits[code >> 4];
            text += kDigits[code & 15];
        }
    }
    return text + (word.size() > kMost ? "...\"" : "\"");
}

}  // namespace zol::engine
