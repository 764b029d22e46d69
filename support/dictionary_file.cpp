#include "support/dictionary_file.h"

#include <algorithm>
#include <cstdint>

#include "support/err_print.h"
#include "support/message_text.h"
#include "support/open_file.h"

namespace zol::support {

namespace {

/// Lines in turn. The last one is what stands behind the last newline, often nothing.
class Lines {
public:
    explicit Lines(std::string_view content) : rest_(content) {}

    DictionaryLine Next() {
        const std::size_t end = rest_.find('\n');
        is_last_ = end == std::string_view::npos;
        const std::string_view text = rest_.substr(0, end);
        rest_.remove_prefix(is_last_ ? rest_.size() : end + 1);
        return {text, ++number_};
    }

    DictionaryLine NextSignificant() {
        DictionaryLine line = Next();
        while (!is_last_ && is_insignificant(line.text)) line = Next();
        return line;
    }

    /// Whether the line given last is the last one.
    bool IsLast() const { return is_last_; }

private:
    std::string_view rest_;
    std::size_t number_ = 0;
    bool is_last_ = false;
};

std::size_t newlines_in(const std::string& content) {
    return static_cast<std::size_t>(std::count(content.begin(), content.end(), '\n'));
}

}  // namespace

std::optional<std::string> read_dictionary_file(const std::string& path) {
    const OpenFile file(path.c_str(), GENERIC_READ, OPEN_EXISTING);
    if (!file.IsOpen()) return std::nullopt;
    constexpr std::uint32_t kChunk = 1U << 20;
    std::string content;
    std::uint32_t delivered = kChunk;
    while (delivered == kChunk && content.size() <= kMostDictionaryBytes) {
        const std::size_t before = content.size();
        content.resize(before + kChunk);
        delivered = file_Read(file.Handle(), content.data() + before, kChunk);
        content.resize(before + delivered);
    }
    if (content.size() > kMostDictionaryBytes || newlines_in(content) > kMostDictionaryLines) {
        err_Print("dict_Load: %s: more than %zu bytes or %zu lines", path.c_str(),
                  kMostDictionaryBytes, kMostDictionaryLines);
        return std::nullopt;
    }
    return content;
}

bool is_insignificant(std::string_view line) {
    return line.starts_with('#') || std::all_of(line.begin(), line.end(), is_space);
}

DictionaryPairs pairs_of(std::string_view content) {
    DictionaryPairs result;
    Lines lines(content);
    while (true) {
        const DictionaryLine key = lines.NextSignificant();
        if (lines.IsLast()) {
            if (!is_insignificant(key.text)) result.dropped = key;
            return result;
        }
        // The last line is a translation whatever it holds, be it nothing.
        result.pairs.push_back({key, lines.NextSignificant()});
        if (lines.IsLast()) return result;
    }
}

}  // namespace zol::support
