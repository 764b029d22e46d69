// Whether a text is numbers and nothing else, at the speed at which it is read.
//
// Readers of text rasters take "12x" for 12 and "abc" for 0. What this lets pass is what
// they read in full.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zol::engine::grid {

/// How the numbers of a format are written; white space parts them always.
struct NumberStyle {
    /// "1,5" is one and a half.
    bool comma_is_point = false;
    /// "1,5" and "1;5" are two numbers.
    bool comma_parts = false;
    /// Only what fits 32 bits and has neither point nor exponent.
    bool only_whole = false;
    /// The word "null" is a number too.
    bool knows_null = false;
};

/// Takes a text in pieces of any length.
class NumberScan {
public:
    explicit NumberScan(const NumberStyle& style);

    /// False at the first thing that is no number; nothing more is to be fed then.
    bool Feed(std::string_view piece);
    /// Ends the text, and its last number with it.
    bool Finish() { return Feed("\n"); }

    /// Numbers so far: of a failed scan, those ahead of what is none.
    std::uint64_t Count() const { return count_; }
    /// What is no number, as far as it fits a message.
    const std::string& Fault() const { return fault_; }

private:
    bool EndsInNumber(std::string_view before);
    void KeepBegun(std::string_view piece);

    NumberStyle style_;
    const std::uint8_t* kinds_;
    std::uint8_t state_ = 0;
    std::uint64_t count_ = 0;
    /// What the last piece broke off in.
    std::string begun_;
    std::string fault_;
};

/// The number that a text is, all of it; nothing when it is none, or no finite one.
std::optional<double> number_of_text(std::string_view text, const NumberStyle& style);

}  // namespace zol::engine::grid
