// JSON for readers: checked access that names the place of what is wrong.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zol::engine {

class JsonDocument;

struct JsonMember;

/// A value inside a JsonDocument, which outlives it; cheap to copy. Every access of
/// the wrong type throws ReadError with the JSON path, as in
/// "$.schema.fields[2].name is a number, a text is expected".
class JsonValue {
public:
    bool IsNull() const;
    bool IsObject() const;
    bool IsList() const;
    bool IsText() const;
    bool IsNumber() const;
    bool IsBool() const;

    /// The member of an object; nothing when it is absent or null. Of a repeated
    /// key, the first. Looks through all members.
    std::optional<JsonValue> Find(std::string_view key) const;
    /// The member of an object; throws when it is absent or null.
    JsonValue Get(std::string_view key) const;
    /// The members of an object, in their order, nulls and repeated keys included.
    std::vector<JsonMember> Members() const;
    std::size_t NMembers() const;

    /// Items of a list.
    std::size_t Size() const;
    JsonValue At(std::size_t index) const;

    std::string Text() const;
    /// Any number; also the bare tokens NaN and Infinity, where the document allows them.
    double Number() const;
    /// A whole number that fits 64 bits, also when written like 3.0.
    std::int64_t Whole() const;
    bool Bool() const;
    /// A list of numbers.
    std::vector<double> Numbers() const;
    /// A list of exactly `expected` numbers.
    std::vector<double> Numbers(std::size_t expected) const;

    /// "$.elements[2]": where this value stands. Searches the document for it, so
    /// that values need not carry their way from the root; meant for errors.
    std::string Path() const;
    /// Throws ReadError: the path of this value, a blank, `fault`.
    [[noreturn]] void Refuse(std::string_view fault) const;

private:
    friend class JsonDocument;
    JsonValue(const void* value, const void* root) : value_(value), root_(root) {}
    [[noreturn]] void RefuseKind(std::string_view expected) const;

    const void* value_;
    const void* root_;
};

struct JsonMember {
    std::string key;
    JsonValue value;
};

/// A parsed JSON text.
class JsonDocument {
public:
    enum class Dialect {
        Strict,
        /// Also the bare tokens NaN, Inf and Infinity, with or without a minus.
        WithNonFinite
    };

    /// Throws ReadError with the byte offset at which the text stops being JSON in
    /// valid UTF-8 or nests deeper than 200 levels, or when it is 4 GiB long. Offsets
    /// are of the file in which the text stands from byte `text_start` on. A byte-order
    /// mark is skipped. Keeps nothing of `text`.
    JsonDocument(std::string_view text, Dialect dialect, std::uint64_t text_start = 0);
    JsonDocument(JsonDocument&&) noexcept;
    JsonDocument& operator=(JsonDocument&&) noexcept;
    ~JsonDocument();

    JsonValue Root() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace zol::engine
