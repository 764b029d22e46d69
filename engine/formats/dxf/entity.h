// The values of one entity, or of one row of a table, by their group codes.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/formats/dxf/tag_reader.h"
#include "engine/formats/vector3.h"

namespace zol::engine {

/// A value of extended data: what stands behind the code 1001 of its application.
struct ExtendedTag {
    int code = 0;
    /// Not yet UTF-8.
    std::string text;
    double number = 0;
};

/// One of values that an entity has several of.
struct ListedReal {
    int code = 0;
    double value = 0;
};

class Entity {
public:
    /// Forgets all values. With `lists`, reals of the codes 10 to 59 are also kept in order.
    void Begin(bool lists = false);
    /// Takes the present tag. Of a code that comes twice the first value counts; texts of code 3
    /// are put together. Values of embedded objects are left out.
    void Take(const TagReader& tags);
    /// Takes all tags up to the next of code 0, which is put back.
    void TakeAll(TagReader& tags);

    bool Has(int code) const { return order_[At(code)] >= begin_; }
    /// True when both are there and `code` came behind `other`.
    bool IsBehind(int code, int other) const {
        return Has(other) && order_[At(code)] > order_[At(other)];
    }
    double Real(int code, double fallback = 0) const {
        return Has(code) ? reals_[At(code)] : fallback;
    }
    /// Cut to 32 bits.
    int Whole(int code, int fallback = 0) const;
    /// The codes `code`, `code` + 10 and `code` + 20.
    Vector3 Point(int code) const { return {Real(code), Real(code + 10), Real(code + 20)}; }
    Vector3 Normal() const { return Has(210) || Has(230) ? Point(210) : kZAxis; }
    /// A text of the codes 0 to 9, as it stands in the file.
    std::string_view Text(int code) const {
        return Has(code) ? std::string_view(texts_[At(code)]) : std::string_view();
    }
    /// Of the codes 5 and 320 to 369, outside groups in braces.
    std::uint64_t Handle(int code) const { return Has(code) ? handles_[HandleAt(code)] : 0; }
    /// Of the dictionary of the entity's own records, or 0.
    std::uint64_t Dictionary() const { return dictionary_; }
    std::span<const ListedReal> Listed() const { return listed_; }
    std::span<const ExtendedTag> Extended() const { return extended_; }

private:
    static constexpr int kCodes = 480;
    static constexpr int kFirstHandle = 320;
    static constexpr int kHandles = 50;

    static std::size_t At(int code) { return static_cast<std::size_t>(code); }
    static std::size_t HandleAt(int code) {
        return code == 5 ? kHandles : static_cast<std::size_t>(code - kFirstHandle);
    }
    bool Marks(int code);
    void TakeText(const TagReader& tags, int code);
    void TakeBraces(const TagReader& tags, int code);
    void TakeExtended(const TagReader& tags, int code);

    std::array<double, kCodes> reals_{};
    // When each code came; those before begin_ are of earlier entities.
    std::array<std::uint64_t, kCodes> order_{};
    std::array<std::string, 10> texts_;
    std::array<std::uint64_t, kHandles + 1> handles_{};
    std::uint64_t begin_ = 1;
    std::uint64_t now_ = 1;
    std::uint64_t dictionary_ = 0;
    std::vector<ListedReal> listed_;
    std::vector<ExtendedTag> extended_;
    bool lists_ = false;
    bool is_embedded_ = false;
    bool is_in_braces_ = false;
    bool is_in_dictionary_ = false;
};

}  // namespace zol::engine
