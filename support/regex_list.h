// Lists of bytes in a pattern: "[a-z_]", "[^]-]".
#pragma once

#include <bitset>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace zol::support {

/// Appends a byte that is to match itself, outside of a list.
void append_ordinary(std::string& text, char byte);

struct ByteList {
    std::bitset<256> members;
    bool inverted = false;

    /// Reads the list whose "[" lies at `at`, and moves `at` behind it; nothing when the
    /// list has no end.
    static std::optional<ByteList> Read(std::string_view pattern, std::size_t& at);
    /// Puts capital letters in place of small ones.
    void FoldCase();
    /// The list as an engine reads it that knows of collating elements and classes.
    std::string Text() const;
};

}  // namespace zol::support
