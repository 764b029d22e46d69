#include "engine/formats/dxf/text_tags.h"

#include <cstring>

#include "engine/formats/read_error.h"
#include "engine/formats/text_lines.h"

namespace zol::engine {

namespace {

constexpr std::size_t kBlock = std::size_t{1} << 18;

std::string_view without_return(std::string_view line) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

}  // namespace

TextTags::TextTags(const File& file) : file_(file) {
    Fill();
    const std::string_view head(at_, static_cast<std::size_t>(filled_ - at_));
    if (head.starts_with("\xEF\xBB\xBF")) at_ += 3;
}

void TextTags::Refuse(const std::string& reason) const {
    throw ReadError("line " + std::to_string(lines_) + ": " + reason);
}

// Reads behind what is left, after that has moved to the front; false at the end of the file.
bool TextTags::Fill() {
    const auto kept = static_cast<std::size_t>(filled_ - at_);
    if (kept > kMostBytesOfTag) {
        lines_ += 2;
        Refuse("it is longer than " + std::to_string(kMostBytesOfTag) + " bytes");
    }
    const std::size_t needed = kept + kBlock + kMargin;
    if (needed > room_) {
        auto larger = std::make_unique_for_overwrite<char[]>(2 * needed);
        if (kept > 0) std::memcpy(larger.get(), at_, kept);
        memory_ = std::move(larger);
        room_ = 2 * needed;
    } else if (kept > 0) {
        std::memmove(memory_.get(), at_, kept);
    }
    at_ = memory_.get();
    char* const to = memory_.get() + kept;
    const std::size_t count = file_.ReadAt(offset_, to, kBlock);
    offset_ += count;
    filled_ = to + count;
    std::memset(to + count, '\n', kMargin);
    return count > 0;
}

bool TextTags::IsBlankToTheEnd() {
    do {
        for (; at_ < filled_; ++at_) {
            if (*at_ != ' ' && *at_ != '\t' && *at_ != '\r' && *at_ != '\n') return false;
        }
    } while (Fill());
    return true;
}

// A tag that the block cuts, the last of a file that has no line end, or one that is odd.
bool TextTags::NextWithCare() {
    bool is_at_end = false;
    for (;;) {
        const char* const code_end = EndOfLine(at_);
        const char* const value = code_end + 1;
        // At the end of the file, the line ends behind it are as good as its own.
        const bool has_value = code_end < filled_ && value < filled_;
        const char* const value_end = has_value ? EndOfLine(value) : filled_;
        if (!is_at_end && (!has_value || value_end >= filled_)) {
            is_at_end = !Fill();
            continue;
        }
        if (at_ >= filled_) return false;
        const std::string_view line =
            without_return({at_, static_cast<std::size_t>(code_end - at_)});
        const std::string_view word = without_blanks(line);
        // Some writers leave blank lines at the end.
        if (word.empty()) {
            ++lines_;
            if (IsBlankToTheEnd()) return false;
            Refuse("a group code is missing");
        }
        std::int64_t code = 0;
        constexpr std::int64_t kLeastCode = -5;
        if (!read_whole(word, code) || code < kLeastCode || code > kMostTagCode) {
            ++lines_;
            Refuse(quoted(line) + " is no group code");
        }
        if (!has_value) {
            ++lines_;
            Refuse("the file ends behind a group code");
        }
        Set(static_cast<int>(code), value, value_end);
        if (at_ > filled_) at_ = filled_;
        return true;
    }
}

}  // namespace zol::engine
