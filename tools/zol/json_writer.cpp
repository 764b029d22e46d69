#include "tools/zol/json_writer.h"

#include <cmath>

#include "tools/zol/number_text.h"
#include "tools/zol/utf8.h"

namespace zol::tool {

void JsonWriter::Begin(char bracket, Layout layout) {
    Separate();
    output_.Write(bracket);
    // Whatever stands on one line can't hold what doesn't.
    const bool is_flat = !open_.empty() && open_.back().layout == Layout::Flat;
    open_.push_back({is_flat ? Layout::Flat : layout, false});
}

void JsonWriter::End(char bracket) {
    const Open closed = open_.back();
    open_.pop_back();
    if (closed.has_items && closed.layout == Layout::Tall) NewLine();
    output_.Write(bracket);
    if (open_.empty()) output_.Write('\n');
}

void JsonWriter::Separate() {
    if (after_key_) {
        after_key_ = false;
        return;
    }
    if (open_.empty()) return;
    Open& here = open_.back();
    if (here.has_items) output_.Write(',');
    if (here.layout == Layout::Tall) {
        NewLine();
    } else if (here.has_items) {
        output_.Write(' ');
    }
    here.has_items = true;
}

void JsonWriter::NewLine() {
    output_.Write('\n');
    for (std::size_t i = 0; i < open_.size(); ++i) output_.Write("  ");
}

void JsonWriter::Key(std::string_view name) {
    Separate();
    Quote(name);
    output_.Write(": ");
    after_key_ = true;
}

void JsonWriter::Text(std::string_view text) {
    Separate();
    Quote(text);
}

void JsonWriter::Number(double value) {
    if (!std::isfinite(value)) {
        Null();
        return;
    }
    NumberAsWritten(number_text(value));
}

void JsonWriter::Whole(long long value) {
    NumberAsWritten(whole_text(value));
}

void JsonWriter::NumberAsWritten(std::string_view text) {
    Separate();
    output_.Write(text);
}

void JsonWriter::Bool(bool value) {
    Separate();
    output_.Write(value ? "true" : "false");
}

void JsonWriter::Null() {
    Separate();
    output_.Write("null");
}

void JsonWriter::Quote(std::string_view text) {
    static constexpr char kHex[] = "0123456789abcdef";
    output_.Write('"');
    while (!text.empty()) {
        const std::size_t length = utf8_length(text);
        if (length == 0) {
            output_.Write("\xef\xbf\xbd");
            text.remove_prefix(1);
            continue;
        }
        const char first = text.front();
        if (first == '"' || first == '\\') {
            output_.Write('\\');
            output_.Write(first);
        } else if (static_cast<unsigned char>(first) < 0x20) {
            output_.Write("\\u00");
            output_.Write(kHex[first >> 4]);
            output_.Write(kHex[first & 15]);
        } else {
            output_.Write(text.substr(0, length));
        }
        text.remove_prefix(length);
    }
    output_.Write('"');
}

}  // namespace zol::tool
