// A run of texts in which the same few usually come again.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/formats/packed_numbers.h"

namespace zol::engine {

/// Texts of one block of rows: each different text once, and a small number a row.
class PackedTexts {
public:
    /// `index` is below the count of texts; the view lives as long as this record.
    std::string_view At(std::size_t index) const;

    std::size_t Bytes() const {
        return codes_.Bytes() + letters_.capacity() + ends_.capacity() * 4;
    }

private:
    friend class TextPacker;
    PackedNumbers codes_;
    std::string letters_;
    // Where each different text ends in letters_.
    std::vector<std::uint32_t> ends_;
};

class TextPacker {
public:
    void Add(std::string text);
    /// Packs what was added and starts anew.
    PackedTexts Finish();

private:
    std::unordered_map<std::string, std::int64_t> codes_of_;
    NumberPacker codes_;
    PackedTexts packed_;
};

}  // namespace zol::engine
