// The text of a dictionary file: pairs of a key and a translation, a line each.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zol::support {

/// A key that holds one of these bytes is a pattern.
constexpr std::string_view kPatternBytes = "$^.*+?[]\\";

struct DictionaryLine {
    std::string_view text;   ///< without the newline
    std::size_t number = 0;  ///< from 1
};

struct DictionaryPair {
    DictionaryLine key;
    DictionaryLine translation;
};

struct DictionaryPairs {
    std::vector<DictionaryPair> pairs;  ///< in the order of the file
    /// The key that the file ends with, in a line without a newline. It counts for nothing.
    std::optional<DictionaryLine> dropped;
};

/// A file of more bytes or lines is none of ours, and would take the memory of the process.
constexpr std::size_t kMostDictionaryBytes = std::size_t{64} << 20;
constexpr std::size_t kMostDictionaryLines = std::size_t{1} << 22;

/// The bytes of the file. Nothing when it does not open, and, with a line through
/// err_Print, when it is beyond the limits.
std::optional<std::string> read_dictionary_file(const std::string& path);

/// A line that stands for nothing: empty, white space alone, or a comment.
bool is_insignificant(std::string_view line);

/// The pairs of a file's content, which the result refers to.
DictionaryPairs pairs_of(std::string_view content);

}  // namespace zol::support
