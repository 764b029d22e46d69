#include "engine/grid/raster_text.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/formats/number_text.h"
#include "engine/formats/read_error.h"
#include "engine/grid/number_scan.h"

namespace zol::engine::grid {

namespace {

// As much as GDAL looks at.
constexpr std::size_t kHeaderBytes = 1024;
constexpr std::size_t kPieceBytes = std::size_t{256} << 10;
// GDAL opens no text raster of more.
constexpr double kMostNodes = 10'000'000;
constexpr NumberStyle kHeaderStyle{.comma_is_point = true};

// Of ASCII, whatever locale the process has set.
char lower(char c) {
    return 'A' <= c && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool is_letter(char c) {
    return 'a' <= lower(c) && lower(c) <= 'z';
}

bool is_digit(char c) {
    return '0' <= c && c <= '9';
}

bool equal_words(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lower(x) == lower(y); });
}

std::string read_head(const ReadBytes& read) {
    std::string head(kHeaderBytes, '\0');
    head.resize(read(0, head.data(), head.size()));
    return head;
}

/// Where values start behind a header of words and numbers, as GDAL finds it: with the first
/// line that starts with no letter. Nothing when that is not among the head's bytes.
std::optional<std::size_t> start_of_values(std::string_view head) {
    const auto ends_line = [&](std::size_t at) { return head[at] == '\n' || head[at] == '\r'; };
    for (std::size_t i = 2; i < head.size(); ++i) {
        const bool starts_line = ends_line(i - 1) || ends_line(i - 2);
        const bool is_value = !is_letter(head[i]) || head.substr(i).starts_with("null ");
        if (starts_line && is_value && !ends_line(i)) {
            return i;
        }
    }
    return std::nullopt;
}

/// The words and numbers of a header.
class Fields {
public:
    explicit Fields(std::string_view header) {
        constexpr std::string_view kBlanks = " \t\r\n\v\f";
        std::size_t end = 0;
        for (;;) {
            const std::size_t start = header.find_first_not_of(kBlanks, end);
            if (start == header.npos) {
                return;
            }
            end = std::min(header.find_first_of(kBlanks, start), header.size());
            words_.emplace_back(header.substr(start, end - start));
        }
    }

    /// The word behind the first `name`, in letters of any case; nothing when there is none.
    std::optional<std::string> Find(std::string_view name) const {
        for (std::size_t i = 0; i + 1 < words_.size(); ++i) {
            if (equal_words(words_[i], name)) {
                return words_[i + 1];
            }
        }
        return std::nullopt;
    }

    double Number(std::string_view name) const {
        const std::optional<std::string> text = Find(name);
        if (!text) {
            throw ReadError("its header has no " + std::string(name));
        }
        const std::optional<double> number = number_of_text(*text, kHeaderStyle);
        if (!number) {
            throw ReadError("its header's " + std::string(name) + " is \"" + text->substr(0, 30) +
                            "\", no number");
        }
        return *number;
    }

    void CheckCount(std::string_view name) const {
        const double count = Number(name);
        const std::string text = *Find(name);
        const bool is_whole = std::all_of(text.begin(), text.end(), is_digit);
        if (!is_whole || count < 1 || count > kMostNodes) {
            throw ReadError("its header's " + std::string(name) + " is " + text.substr(0, 30) +
                            "; 1 to 10000000 are read");
        }
    }

    void CheckSize(std::string_view name) const {
        const double size = Number(name);
        if (!(size > 0.0)) {
            throw ReadError("its header's " + std::string(name) + " is " + number_text(size) +
                            "; cells have a size above 0");
        }
    }

private:
    std::vector<std::string> words_;
};

void check_esri_header(const Fields& fields) {
    fields.CheckCount("ncols");
    fields.CheckCount("nrows");
    if (fields.Find("dx") && !fields.Find("cellsize")) {
        fields.CheckSize("dx");
        fields.CheckSize("dy");
    } else {
        fields.CheckSize("cellsize");
    }
    const bool has_corner = fields.Find("xllcorner") && fields.Find("yllcorner");
    const bool has_center = fields.Find("xllcenter") && fields.Find("yllcenter");
    if (!has_corner && !has_center) {
        // GDAL would put it at 0, 0, also when it has one of each kind.
        throw ReadError(
            "its header does not say where it lies; xllcorner and yllcorner, or xllcenter and "
            "yllcenter, do");
    }
    fields.Number(has_corner ? "xllcorner" : "xllcenter");
    fields.Number(has_corner ? "yllcorner" : "yllcenter");
    const std::optional<std::string> missing = fields.Find("NODATA_value");
    // NaN and the infinities may be what is missing.
    if (missing && *missing != "null" && !NumberScan(kHeaderStyle).Feed(*missing + '\n')) {
        fields.Number("NODATA_value");
    }
}

void check_grass_header(const Fields& fields) {
    fields.CheckCount("cols");
    fields.CheckCount("rows");
    // Degrees with minutes, "45:30:00N", are none: GDAL would read 45.
    const bool is_apart = fields.Number("west") < fields.Number("east") &&
                          fields.Number("south") < fields.Number("north");
    if (!is_apart) {
        throw ReadError("its header's west is not less than its east, or its south than its north");
    }
    if (fields.Find("null")) {
        fields.Number("null");
    }
}

bool starts_with_word(std::string_view head, std::string_view word) {
    return equal_words(head.substr(0, word.size()), word);
}

template <std::size_t N>
bool starts_with_any(std::string_view head, const std::array<std::string_view, N>& words) {
    return std::any_of(words.begin(), words.end(),
                       [&](std::string_view word) { return starts_with_word(head, word); });
}

constexpr std::array<std::string_view, 9> kEsriStarts = {
    "ncols", "nrows", "xllcorner", "yllcorner", "xllcenter", "yllcenter", "dx", "dy", "cellsize"};
constexpr std::array<std::string_view, 6> kGrassStarts = {
    "north:", "south:", "east:", "west:", "rows:", "cols:"};

/// The first colon of each line stands behind its word; others are of its number.
std::string without_first_colons(std::string_view header) {
    std::string text(header);
    bool is_first = true;
    for (char& c : text) {
        if (c == '\n' || c == '\r') {
            is_first = true;
        } else if (c == ':' && is_first) {
            is_first = false;
            c = ' ';
        }
    }
    return text;
}

std::size_t behind_esri_header(std::string_view head) {
    const auto start = start_of_values(head);
    if (!start) {
        throw ReadError("no values stand behind its header");
    }
    return *start;
}

std::size_t behind_isg_header(std::string_view head) {
    return std::min(head.find_first_of("\r\n", std::min(head.find("end_of_head"), head.size())),
                    head.size());
}

/// Behind "DSAA": all the rest of it is numbers.
std::size_t behind_surfer_name(std::string_view) {
    return 4;
}

/// Behind lines that start with '/', and one of names where there is one.
std::size_t behind_names(std::string_view head) {
    std::size_t start = 0;
    const auto line_end = [&] { return std::min(head.find_first_of("\r\n", start), head.size()); };
    while (start < head.size() &&
           (head[start] == '/' || head[start] == '\n' || head[start] == '\r')) {
        start = head[start] == '/' ? line_end() : start + 1;
    }
    const std::string_view line = head.substr(start, line_end() - start);
    const bool is_names = std::any_of(line.begin(), line.end(), [](char c) {
        return (is_letter(c) && lower(c) != 'e') || c == '"';
    });
    return is_names ? line_end() : start;
}

struct Format {
    std::string_view name;
    NumberStyle style;
    std::size_t (*start_of_values)(std::string_view head);
    /// Numbers ahead of the values, of those that are counted.
    std::optional<std::uint64_t> ahead;
};

// clang-format off
constexpr std::array kFormats = {
    Format{"AAIGrid",        {.comma_is_point = true}, behind_esri_header, 0},
    Format{"GRASSASCIIGrid", {.comma_is_point = true}, behind_esri_header, 0},
    Format{"ISG",            {},                       behind_isg_header,  0},
    Format{"GSAG",           {},                       behind_surfer_name, 8},
    // Rows of it may leave nodes out, which GDAL looks at itself.
    Format{"XYZ",            {.comma_parts = true},    behind_names,       std::nullopt},
};
// clang-format on

std::string place_of_value(const TextRaster& raster, const Format& format, std::uint64_t count) {
    if (!format.ahead) {
        return "behind " + std::to_string(count) + " numbers stands ";
    }
    if (count < *format.ahead) {
        return "in its header stands ";
    }
    const std::uint64_t cell = count - *format.ahead;
    const auto columns = static_cast<std::uint64_t>(raster.columns);
    return "in column " + std::to_string(cell % columns + 1) + " of row " +
           std::to_string(cell / columns + 1) + " of its values stands ";
}

[[noreturn]] void refuse(const TextRaster& raster, const Format& format, const NumberScan& scan) {
    const bool is_star = scan.Fault() == "*" && format.name == "GRASSASCIIGrid";
    throw ReadError(
        place_of_value(raster, format, scan.Count()) + '"' + scan.Fault() + "\", no " +
        (raster.is_whole ? "whole number of 32 bits" : "number") +
        (is_star ? "; missing nodes are read as the number that a line \"null:\" states" : ""));
}

/// Feeds all from `offset` on, but for the mark of old systems at the end of a file.
bool feed_all(const ReadBytes& read, std::uint64_t offset, NumberScan& scan) {
    constexpr char kEndMark = '\x1a';
    const auto piece = std::make_unique<char[]>(kPieceBytes);
    bool is_marked = false;
    while (const std::size_t count = read(offset, piece.get(), kPieceBytes)) {
        if (is_marked && !scan.Feed({&kEndMark, 1})) {
            return false;
        }
        is_marked = piece[count - 1] == kEndMark;
        if (!scan.Feed({piece.get(), count - (is_marked ? 1 : 0)})) {
            return false;
        }
        offset += count;
    }
    return scan.Finish();
}

}  // namespace

void check_text_header(const ReadBytes& read) {
    const std::string head = read_head(read);
    const std::string header = head.substr(0, start_of_values(head).value_or(head.size()));
    if (starts_with_any(head, kEsriStarts)) {
        check_esri_header(Fields(header));
    } else if (starts_with_any(head, kGrassStarts)) {
        check_grass_header(Fields(without_first_colons(header)));
    }
}

void check_text_values(const ReadBytes& read, const TextRaster& raster) {
    const auto* const format =
        std::find_if(kFormats.begin(), kFormats.end(),
                     [&](const Format& known) { return known.name == raster.format; });
    if (format == kFormats.end()) {
        return;
    }
    const std::string head = read_head(read);
    NumberStyle style = format->style;
    style.only_whole = raster.is_whole && format->name != "XYZ";
    style.knows_null =
        format->name == "AAIGrid" && Fields(head).Find("NODATA_value").value_or("") == "null";
    NumberScan scan(style);
    if (!feed_all(read, format->start_of_values(head), scan)) {
        refuse(raster, *format, scan);
    }
    if (!format->ahead) {
        return;
    }
    const auto nodes =
        static_cast<std::uint64_t>(raster.columns) * static_cast<std::uint64_t>(raster.rows);
    if (scan.Count() != nodes + *format->ahead) {
        const std::uint64_t values = scan.Count() - std::min(scan.Count(), *format->ahead);
        throw ReadError("it holds " + std::to_string(values) + " values, but its header says " +
                        std::to_string(raster.columns) + " x " + std::to_string(raster.rows) +
                        ", which are " + std::to_string(nodes));
    }
}

}  // namespace zol::engine::grid
