// A run of texts in which the same few usually come again.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
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

/// Collects texts by the letters that stand for them in a file.
class TextPacker {
public:
    /// Adds the text that `letters` stand for; `text_of()` says which, and is asked
    /// once for the same letters.
    template <class TextOf>
    void Add(std::string_view letters, TextOf text_of) {
        const auto known = codes_of_.find(letters);
        const std::int64_t code =
            known != codes_of_.end() ? known->second : AddNew(letters, text_of());
        codes_.Add({code, 0, true});
    }
    /// Packs what was added and starts anew.
    PackedTexts Finish();

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const {
            return std::hash<std::string_view>{}(text);
        }
    };

    std::int64_t AddNew(std::string_view letters, const std::string& text);

    std::unordered_map<std::string, std::int64_t, Hash, std::equal_to<>> codes_of_;
    NumberPacker codes_;
    PackedTexts packed_;
};

}  // namespace zol::engine
