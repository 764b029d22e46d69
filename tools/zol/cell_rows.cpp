#include "tools/zol/cell_rows.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "tools/zol/exit_codes.h"

namespace zol::tool {

namespace {

constexpr std::size_t kBuffer = 1 << 16;
// A file without line ends is no file of rows, and is not to fill the memory.
constexpr std::size_t kLongestRow = 1 << 20;
constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";
constexpr char kBlank = ' ';

[[noreturn]] void fail(const std::string& file) {
    const int error = errno;
    throw ReadFailure("can't read '" + file + "': " + std::generic_category().message(error));
}

/// Whether a quoted cell is still open at the end.
bool is_in_quotes(std::string_view text) {
    return std::count(text.begin(), text.end(), '"') % 2 != 0;
}

char separator_of(std::string_view row) {
    char separator = kBlank;
    std::ptrdiff_t most = 0;
    for (const char candidate : {',', ';', '\t'}) {
        const auto times = std::count(row.begin(), row.end(), candidate);
        if (times > most) separator = candidate;
        most = std::max(most, times);
    }
    return separator;
}

bool is_blank(char character) {
    return character == ' ' || character == '\t';
}

}  // namespace

CellRows::CellRows(const std::string& file)
    : name_(file), file_(std::fopen(file.c_str(), "rb")), buffer_(kBuffer) {
    if (file_ == nullptr) fail(name_);
}

void CellRows::Refuse(const std::string& fault) const {
    throw ReadFailure(name_ + ": line " + std::to_string(first_line_) + ": " + fault);
}

bool CellRows::Fill() {
    const std::size_t n = std::fread(buffer_.data(), 1, buffer_.size(), file_.get());
    if (n == 0 && std::ferror(file_.get()) != 0) fail(name_);
    unread_ = {buffer_.data(), n};
    return n > 0;
}

bool CellRows::AddLine() {
    bool is_any = false;
    while (!unread_.empty() || Fill()) {
        is_any = true;
        const std::size_t end = unread_.find('\n');
        const std::string_view part = unread_.substr(0, end);
        if (row_.size() + part.size() > kLongestRow) {
            Refuse("the row is longer than " + std::to_string(kLongestRow) + " bytes.");
        }
        if (part.find('\0') != std::string_view::npos) {
            Refuse("there is a byte of 0, which no text has; UTF-16 is not read.");
        }
        row_ += part;
        const bool is_whole = end != std::string_view::npos;
        const std::size_t taken = part.size() + (is_whole ? 1 : 0);
        unread_.remove_prefix(taken);
        bytes_read_ += static_cast<long long>(taken);
        if (is_whole) break;
    }
    if (!is_any) return false;
    ++n_lines_;
    if (n_lines_ == 1 && row_.starts_with(kByteOrderMark)) row_.erase(0, kByteOrderMark.size());
    return true;
}

bool CellRows::Next() {
    do {
        row_.clear();
        first_line_ = n_lines_ + 1;
        if (!AddLine()) return false;
        while (is_in_quotes(row_)) {
            row_ += '\n';
            if (!AddLine()) Refuse("a quote is opened and not closed.");
        }
        if (row_.ends_with('\r')) row_.pop_back();
    } while (std::all_of(row_.begin(), row_.end(), is_blank));
    if (separator_ == '\0') separator_ = separator_of(row_);
    Split();
    return true;
}

void CellRows::Split() {
    std::size_t n = 0;
    std::size_t at = 0;
    while (at != std::string::npos) {
        // Cells of the row before are written over, for the sake of their storage.
        if (n == cells_.size()) cells_.emplace_back();
        at = TakeCell(at, cells_[n++]);
    }
    cells_.resize(n);
}

std::size_t CellRows::TakeCell(std::size_t at, std::string& cell) const {
    cell.clear();
    // A tab may be a blank or what parts cells.
    const auto is_passed = [this](char c) {
        return is_blank(c) && (c != separator_ || c == kBlank);
    };
    while (at < row_.size() && is_passed(row_[at])) ++at;
    bool is_quoted = false;
    std::size_t kept = 0;
    for (; at < row_.size(); ++at) {
        const char c = row_[at];
        if (c == '"') {
            // Two of them in quotes stand for one.
            if (is_quoted && row_.substr(at + 1, 1) == "\"") {
                cell += row_[++at];
            } else {
                is_quoted = !is_quoted;
            }
            kept = cell.size();
            continue;
        }
        if (!is_quoted && (c == separator_ || (separator_ == kBlank && c == '\t'))) break;
        cell += c;
        if (is_quoted || !is_blank(c)) kept = cell.size();
    }
    cell.resize(kept);
    if (at >= row_.size()) return std::string::npos;
    ++at;
    // Several blanks part cells as one does, and those at the end part none.
    if (separator_ != kBlank) return at;
    while (at < row_.size() && is_blank(row_[at])) ++at;
    return at < row_.size() ? at : std::string::npos;
}

}  // namespace zol::tool
