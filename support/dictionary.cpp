#include "support/dictionary.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>

#include "support/environment.h"
#include "support/messages.h"
#include "support/os.h"
#include "support/regex.h"
#include "support/untranslated.h"

namespace zol::support {

namespace {

/// How many bytes the two agree on, given that `from` of them are settled.
std::size_t agreement(std::string_view fixed, std::string_view neighbour, std::size_t from) {
    while (from < fixed.size() && from < neighbour.size() && fixed[from] == neighbour[from]) {
        ++from;
    }
    return from;
}

/// How deep the trie has to lead for the key at `index`, whose bytes before the first
/// pattern byte are `fixed`. The next key is compared from where the previous one parted,
/// not from the start.
std::size_t depth_for(const std::vector<DictionaryPair>& pairs, std::size_t index,
                      std::string_view fixed) {
    std::size_t depth = 0;
    if (index > 0) depth = agreement(fixed, pairs[index - 1].key.text, depth);
    if (index + 1 < pairs.size()) depth = agreement(fixed, pairs[index + 1].key.text, depth);
    return depth < fixed.size() ? depth + 1 : depth;
}

/// A node, and how many bytes of the key lead to it.
struct Place {
    std::size_t node;
    std::size_t depth;
};

/// The node behind these bytes, made where it is missing and there may be one more.
Place place_for(std::vector<DictionaryNode>& nodes, std::string_view path) {
    Place place{0, 0};
    for (; place.depth < path.size(); ++place.depth) {
        const auto byte = static_cast<unsigned char>(path[place.depth]);
        std::int32_t next = nodes[place.node].next[byte];
        if (next < 0) {
            if (nodes.size() >= kMostDictionaryNodes) break;
            next = static_cast<std::int32_t>(nodes.size());
            nodes.emplace_back();
            nodes[place.node].next[byte] = next;
        }
        place.node = static_cast<std::size_t>(next);
    }
    return place;
}

/// The translation of `rest` by the first entry that stands for all of it.
std::optional<std::string> translation_of(const std::vector<DictionaryEntry>& entries,
                                          std::string_view rest) {
    if (entries.empty()) return std::nullopt;
    const std::string text(rest);
    for (const DictionaryEntry& entry : entries) {
        if (!entry.isPattern) {
            if (text == entry.tail) return entry.translation;
            continue;
        }
        // Behind the last byte of a text every pattern is a hit, of which nothing remains:
        // no match and a match of nothing have the same length.
        const std::int32_t length = regex_Match(text, entry.tail, false);
        if (static_cast<std::size_t>(length) == text.size()) {
            return pat_Substitute(text, entry.tail, entry.translation, false, false);
        }
    }
    return std::nullopt;
}

/// The translation of a text without trailing blanks. Shorter ways come before longer ones.
std::optional<std::string> found(const Dictionary& dictionary, std::string_view text) {
    std::int32_t node = 0;
    for (std::size_t at = 0; node >= 0; ++at) {
        const DictionaryNode& here = dictionary.nodes[static_cast<std::size_t>(node)];
        if (auto translation = translation_of(here.entries, text.substr(at))) return translation;
        if (at == text.size()) break;
        node = here.next[static_cast<unsigned char>(text[at])];
    }
    return std::nullopt;
}

}  // namespace

Dictionary dictionary_of(std::vector<DictionaryPair> pairs) {
    std::sort(pairs.begin(), pairs.end(), [](const DictionaryPair& a, const DictionaryPair& b) {
        return std::tie(a.key.text, a.translation.text) < std::tie(b.key.text, b.translation.text);
    });
    Dictionary dictionary;
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        const std::string_view key = pairs[i].key.text;
        const std::size_t mark = key.find_first_of(kPatternBytes);
        const std::string_view fixed = key.substr(0, mark);
        const std::size_t depth = depth_for(pairs, i, fixed);
        const Place place = place_for(dictionary.nodes, fixed.substr(0, depth));
        dictionary.nodes[place.node].entries.push_back({mark != std::string_view::npos,
                                                        std::string(key.substr(place.depth)),
                                                        std::string(pairs[i].translation.text)});
    }
    return dictionary;
}

std::optional<std::string> dictionary_path(const std::string& language) {
    constexpr const char* kFolder = "OSTREL_FLIB";
    const char* root = env_Get("OSTREL");
    if (env_Get(kFolder) == nullptr && root != nullptr) {
        // Not by env_Set, which refuses long texts.
        os::set_environment_value(kFolder, (std::string(root) + "/bin/flib").c_str());
    }
    const char* folder = env_Get(kFolder);
    if (folder == nullptr) return std::nullopt;
    return std::string(folder) + "/" + language + "_dictionary";
}

}  // namespace zol::support

using zol::support::Dictionary;

void dict_Load(Dictionary& dictionary, const std::string& language) {
    dictionary = {};
    const auto path = zol::support::dictionary_path(language);
    const auto content = path ? zol::support::read_dictionary_file(*path) : std::nullopt;
    if (content) {
        dictionary = zol::support::dictionary_of(zol::support::pairs_of(*content).pairs);
    }
}

std::string dict_Lookup(const Dictionary& dictionary, const std::string& text) {
    static const bool saves_untranslated = env_Get("SAVE_UNTRANSLATED") != nullptr;
    const std::string_view whole = text;
    const std::size_t end = whole.find_last_not_of(' ') + 1;  // 0 when all are blanks
    if (end == 0) return text;
    if (auto translation = zol::support::found(dictionary, whole.substr(0, end))) {
        return translation->append(whole.substr(end));
    }
    if (saves_untranslated) zol::support::save_untranslated(text);
    return msg_Clean(text);
}
