#include "tools/zol/relief/caption.h"

#include <charconv>
#include <iterator>

#include "tools/zol/relief/shading.h"
#include "tools/zol/utf8.h"

namespace zol::tool {

namespace {

/// Few digits, for a reader and not for a computation.
std::string short_text(double value) {
    constexpr int kDigits = 7;
    char text[32];
    const auto end =
        std::to_chars(std::begin(text), std::end(text), value, std::chars_format::general, kDigits);
    return {text, end.ptr};
}

std::string by(const std::string& east, const std::string& north) {
    return east + " x " + north;
}

std::string nodes_line(const PictureFacts& facts) {
    const Lattice& nodes = facts.nodes;
    const GridStatistics& found = facts.statistics;
    std::string line = by(std::to_string(nodes.width), std::to_string(nodes.height)) +
                       " nodes, spacing " + by(short_text(nodes.dx), short_text(nodes.dy)) +
                       ". Values " + short_text(found.Minimum()) + " to " +
                       short_text(found.Maximum());
    if (found.NMasked() > 0) line += ", " + std::to_string(found.NMasked()) + " masked";
    return line + ".";
}

std::string relief_line(const Thumbnail& surface, const MapScale& scale, double exaggeration) {
    std::string line = "Too few nodes for a relief: colours only.";
    if (exaggeration > 0) {
        line = "Lit from the north-west (azimuth " + short_text(kLightAzimuth) + ", altitude " +
               short_text(kLightAltitude) + " degrees), vertical exaggeration " +
               short_text(exaggeration) + " in the units of the file.";
    }
    if (surface.columns_each > 1 || surface.rows_each > 1) {
        line += " Drawn from means of " +
                by(std::to_string(surface.columns_each), std::to_string(surface.rows_each)) +
                " nodes.";
    }
    if (!scale.is_equal) line += " East and north are not to one scale.";
    return line;
}

/// Bytes that are no UTF-8, or that a page can't show, as '?'.
std::string printable(const std::string& name) {
    std::string text;
    for (std::size_t at = 0; at < name.size();) {
        const std::size_t length = utf8_length(std::string_view(name).substr(at));
        const auto first = static_cast<unsigned char>(name[at]);
        const bool is_shown = length > 0 && first >= 0x20 && first != 0x7f;
        text += is_shown ? name.substr(at, length) : "?";
        at += length > 0 ? length : 1;
    }
    return text;
}

}  // namespace

std::vector<std::string> caption_of(const Thumbnail& surface, const MapScale& scale,
                                    const PictureFacts& facts, double exaggeration,
                                    const ColourLimits& limits) {
    std::vector<std::string> lines{nodes_line(facts), relief_line(surface, scale, exaggeration)};
    if (limits.leaves_out) {
        lines.push_back("Colours run from " + short_text(limits.low) + " to " +
                        short_text(limits.high) +
                        "; the 1 % of the map beyond at either end has the colours of the ends.");
    }
    return lines;
}

std::vector<std::string> wrapped(const std::vector<std::string>& lines, double width,
                                 const TextStyle& style, Canvas& canvas) {
    std::vector<std::string> result;
    for (const std::string& line : lines) {
        std::string part;
        for (std::size_t at = 0; at < line.size();) {
            const std::size_t end = std::min(line.find(' ', at), line.size());
            const std::string word = line.substr(at, end - at);
            std::string longer = part;
            if (!part.empty()) longer += ' ';
            longer += word;
            if (!part.empty() && canvas.WidthOf(longer, style) > width) {
                result.push_back(part);
                part = word;
            } else {
                part = longer;
            }
            at = end + 1;
        }
        result.push_back(part);
    }
    return result;
}

std::string title_of(const std::string& name, double width, const TextStyle& style,
                     Canvas& canvas) {
    std::string text = printable(name);
    if (canvas.WidthOf(text, style) <= width) return text;
    while (!text.empty() && canvas.WidthOf("..." + text, style) > width) {
        text.erase(0, utf8_length(text));
    }
    return "..." + text;
}

}  // namespace zol::tool
