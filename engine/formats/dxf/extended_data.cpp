#include "engine/formats/dxf/extended_data.h"

#include <array>
#include <string>

#include "engine/formats/dxf/drawing_data.h"
#include "engine/formats/number_text.h"

namespace zol::engine {

namespace {

// What stands in front of the sign of equality, when it is one word.
std::string_view key_of(std::string_view text) {
    constexpr std::size_t kMostBytesOfKey = 64;
    const std::size_t end = text.find('=');
    if (end == text.npos || end == 0 || end > kMostBytesOfKey) return {};
    const std::string_view key = text.substr(0, end);
    return key.find_first_of(" \t\n") == key.npos ? key : std::string_view();
}

// The place of the own field that a key names, or the number of them.
std::size_t own_field(std::string_view key) {
    if (is_same_word(key, "DESCRIPTION")) key = "DESC";
    std::size_t i = 0;
    while (i < std::size(kOwnFields) && !is_same_word(key, kOwnFields[i])) ++i;
    return i;
}

// Of a longer name the begin counts: it comes again in the names of all its fields.
void cut_application(std::string& name) {
    constexpr std::size_t kMostBytes = 255;
    if (name.size() <= kMostBytes) return;
    std::size_t end = kMostBytes;
    while (end > 0 && (static_cast<unsigned char>(name[end]) >> 6U) == 2) --end;
    name.resize(end);
}

class FieldList {
public:
    void Add(std::string name, std::string value) {
        fields_.push_back({std::move(name), std::move(value)});
    }
    // Behind the one that was added last: the second and third number of a point.
    void Append(const std::string& value) {
        if (!fields_.empty()) fields_.back().value += ' ' + value;
    }
    std::vector<DrawingField> Take() { return std::move(fields_); }

private:
    std::vector<DrawingField> fields_;
};

}  // namespace

std::vector<DrawingField> fields_of_extended(std::span<const ExtendedTag> tags,
                                             TextDecoder& decoder) {
    FieldList fields;
    std::string application;
    int place = 0;
    std::array<bool, std::size(kOwnFields)> has_own{};
    for (const ExtendedTag& tag : tags) {
        if (tag.code == 1001) {
            application = decoder.Decode(tag.text);
            cut_application(application);
            place = 0;
            continue;
        }
        if (tag.code == 1002) continue;
        if (tag.code >= 1020 && tag.code <= 1039) {
            fields.Append(number_text(tag.number));
            continue;
        }
        ++place;
        const std::string numbered = application + '.' + std::to_string(place);
        if (tag.code >= 1010) {
            fields.Add(numbered, number_text(tag.number));
            continue;
        }
        const std::string text = decoder.Decode(tag.text);
        const std::string_view key = tag.code == 1000 ? key_of(text) : std::string_view();
        const std::size_t own = own_field(key);
        if (own < has_own.size() && !has_own[own]) {
            has_own[own] = true;
            fields.Add(std::string(kOwnFields[own]), text.substr(key.size() + 1));
        } else if (!key.empty()) {
            fields.Add(application + '.' + std::string(key), text.substr(key.size() + 1));
        } else {
            fields.Add(numbered, text);
        }
    }
    return fields.Take();
}

}  // namespace zol::engine
