// JSON as a stream: what is written is never held.
#pragma once

#include <string_view>
#include <vector>

#include "tools/zol/output.h"

namespace zol::tool {

/// Puts commas and line ends where they belong. The caller opens and closes in
/// pairs, and writes a key before each value in an object.
class JsonWriter {
public:
    enum class Layout {
        /// Each item or member on a line of its own, indented.
        Tall,
        /// All on one line.
        Flat
    };

    explicit JsonWriter(Output& output) : output_(output) {}

    void BeginObject(Layout layout = Layout::Tall) { Begin('{', layout); }
    void EndObject() { End('}'); }
    void BeginList(Layout layout = Layout::Tall) { Begin('[', layout); }
    void EndList() { End(']'); }

    void Key(std::string_view name);
    /// Bytes that are no UTF-8 come out as U+FFFD.
    void Text(std::string_view text);
    /// Shortest form that reads back the same; null for what is not finite.
    void Number(double value);
    void Whole(long long value);
    /// A number as it stands.
    void NumberAsWritten(std::string_view text);
    void Bool(bool value);
    void Null();

private:
    void Begin(char bracket, Layout layout);
    void End(char bracket);
    /// What stands before an item: a comma, a new line.
    void Separate();
    void NewLine();
    void Quote(std::string_view text);

    Output& output_;
    bool after_key_ = false;
    struct Open {
        Layout layout;
        bool has_items;
    };
    /// For each open list or object, outermost first.
    std::vector<Open> open_;
};

}  // namespace zol::tool
