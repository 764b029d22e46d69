#include "engine/formats/mesh/ply_header.h"

#include <algorithm>
#include <array>
#include <utility>

#include "engine/formats/read_error.h"
#include "engine/formats/text_lines.h"

namespace zol::engine {

namespace {

constexpr std::size_t kLongestHeader = std::size_t{1} << 20;
// Far beyond real files; names are looked for one by one.
constexpr std::size_t kMostElements = 1000;
constexpr std::size_t kMostProperties = 1000;

struct TypeName {
    std::string_view name;
    PlyType type;
};

constexpr std::array kTypeNames = {
    TypeName{"char", PlyType::Int8},      TypeName{"int8", PlyType::Int8},
    TypeName{"uchar", PlyType::Uint8},    TypeName{"uint8", PlyType::Uint8},
    TypeName{"short", PlyType::Int16},    TypeName{"int16", PlyType::Int16},
    TypeName{"ushort", PlyType::Uint16},  TypeName{"uint16", PlyType::Uint16},
    TypeName{"int", PlyType::Int32},      TypeName{"int32", PlyType::Int32},
    TypeName{"uint", PlyType::Uint32},    TypeName{"uint32", PlyType::Uint32},
    TypeName{"float", PlyType::Float32},  TypeName{"float32", PlyType::Float32},
    TypeName{"double", PlyType::Float64}, TypeName{"float64", PlyType::Float64},
};

constexpr std::array<std::pair<std::string_view, PlyHeader::Format>, 3> kFormats = {{
    {"ascii", PlyHeader::Format::Text},
    {"binary_little_endian", PlyHeader::Format::LittleEndian},
    {"binary_big_endian", PlyHeader::Format::BigEndian},
}};

/// Lines by the end that the first of them has: the byte behind "end_header" may be one of
/// the body that looks like a line end.
class HeaderLines {
public:
    explicit HeaderLines(const File& file) {
        text_.resize(
            static_cast<std::size_t>(std::min<std::uint64_t>(file.Size(), kLongestHeader)));
        text_.resize(file.ReadAt(0, text_.data(), text_.size()));
        if (text_.starts_with("\xEF\xBB\xBF")) at_ = 3;
        const std::size_t end = text_.find_first_of("\r\n", at_);
        ends_with_return_ = end != text_.npos && text_[end] == '\r' &&
                            (end + 1 == text_.size() || text_[end + 1] != '\n');
    }

    std::string_view Next() {
        const std::size_t end = ends_with_return_ ? text_.find('\r', at_) : text_.find('\n', at_);
        ++number_;
        if (end == text_.npos) {
            Refuse(text_.size() < kLongestHeader ? "the file ends inside the header"
                                                 : "the header is too long");
        }
        std::string_view line(&text_[at_], end - at_);
        at_ = end + 1;
        if (line.ends_with('\r')) line.remove_suffix(1);
        return without_blanks(line);
    }

    std::uint64_t Offset() const { return at_; }
    [[noreturn]] void Refuse(const std::string& reason) const {
        throw ReadError("line " + std::to_string(number_) + ": " + reason);
    }

private:
    std::string text_;
    std::size_t at_ = 0;
    bool ends_with_return_ = false;
    std::uint64_t number_ = 0;
};

PlyType read_type(HeaderLines& lines, std::string_view word) {
    for (const TypeName& type : kTypeNames) {
        if (type.name == word) return type.type;
    }
    lines.Refuse(quoted(word) + " is no type of a number");
}

PlyProperty read_property(HeaderLines& lines, std::string_view rest) {
    PlyProperty property{};
    std::string_view word = take_word(rest);
    if (word == "list") {
        property.count_type = read_type(lines, take_word(rest));
        if (!is_whole(*property.count_type)) {
            lines.Refuse("the type of a count is one of whole numbers");
        }
        word = take_word(rest);
    }
    property.type = read_type(lines, word);
    property.name = without_blanks(rest);
    if (property.name.empty()) lines.Refuse("the property has no name");
    return property;
}

PlyElement read_element(HeaderLines& lines, std::string_view rest) {
    PlyElement element{};
    element.name = take_word(rest);
    std::int64_t count = 0;
    const std::string_view word = take_word(rest);
    if (!read_whole(word, count) || count < 0) {
        lines.Refuse(quoted(word) + " is no number of elements");
    }
    element.count = static_cast<std::uint64_t>(count);
    return element;
}

PlyHeader::Format read_format(HeaderLines& lines, std::string_view rest) {
    const std::string_view name = take_word(rest);
    const auto* const format = std::find_if(kFormats.begin(), kFormats.end(),
                                            [&](const auto& row) { return row.first == name; });
    if (format == kFormats.end()) lines.Refuse(quoted(name) + " is no format of PLY files");
    if (const std::string_view version = take_word(rest); version != "1.0") {
        lines.Refuse("the version is " + quoted(version) + ", 1.0 is expected");
    }
    return format->second;
}

}  // namespace

std::size_t size_of(PlyType type) {
    constexpr std::array<std::size_t, 8> kSizes = {1, 1, 2, 2, 4, 4, 4, 8};
    return kSizes[static_cast<std::size_t>(type)];
}

std::size_t PlyElement::Find(std::string_view property) const {
    const auto found = std::find_if(properties.begin(), properties.end(),
                                    [&](const PlyProperty& p) { return p.name == property; });
    return static_cast<std::size_t>(found - properties.begin());
}

std::size_t PlyHeader::Find(std::string_view element) const {
    const auto found = std::find_if(elements.begin(), elements.end(),
                                    [&](const PlyElement& e) { return e.name == element; });
    return static_cast<std::size_t>(found - elements.begin());
}

bool is_ply(std::string_view head) {
    if (head.starts_with("\xEF\xBB\xBF")) head.remove_prefix(3);
    constexpr std::string_view kMagic = "ply";
    return head.starts_with(kMagic) && head.size() > kMagic.size() &&
           std::string_view(" \t\r\n").find(head[kMagic.size()]) != head.npos;
}

PlyHeader read_ply_header(const File& file) {
    HeaderLines lines(file);
    if (lines.Next() != "ply") lines.Refuse("a PLY file begins with \"ply\"");
    PlyHeader header;
    bool has_format = false;
    for (;;) {
        std::string_view rest = lines.Next();
        const std::string_view word = take_word(rest);
        if (word == "end_header") break;
        if (word == "format") {
            header.format = read_format(lines, rest);
            has_format = true;
        } else if (word == "element") {
            if (header.elements.size() == kMostElements)
                lines.Refuse("there are too many elements");
            PlyElement element = read_element(lines, rest);
            if (header.Find(element.name) != header.elements.size()) {
                lines.Refuse("element " + quoted(element.name) + " is there twice");
            }
            header.elements.push_back(std::move(element));
        } else if (word == "property") {
            if (header.elements.empty()) lines.Refuse("a property stands in front of the elements");
            std::vector<PlyProperty>& properties = header.elements.back().properties;
            if (properties.size() == kMostProperties) {
                lines.Refuse("the element has too many properties");
            }
            properties.push_back(read_property(lines, rest));
        } else if (word == "comment" || word == "obj_info") {
            header.comments.emplace_back(without_blanks(rest));
        } else if (!word.empty()) {
            lines.Refuse(quoted(word) + " is no word of the header");
        }
    }
    if (!has_format) lines.Refuse("the header states no format");
    header.body = lines.Offset();
    return header;
}

}  // namespace zol::engine
