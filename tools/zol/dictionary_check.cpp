#include "tools/zol/dictionary_check.h"

#include <algorithm>
#include <unordered_map>

#include "support/regex_engine.h"
#include "support/regex_list.h"

namespace zol::tool {

namespace {

using support::DictionaryLine;
using support::DictionaryPair;
using Findings = std::vector<Finding>;

bool is_pattern(std::string_view key) {
    return key.find_first_of(support::kPatternBytes) != std::string_view::npos;
}

/// The groups of a pattern that compiles.
int count_of_groups(std::string_view pattern) {
    int count = 0;
    for (std::size_t at = 0; at < pattern.size();) {
        if (pattern[at] == '[') {
            if (!support::ByteList::Read(pattern, at)) break;
        } else if (pattern[at] == '\\') {
            if (pattern.substr(at + 1, 1) == "(") ++count;
            at += 2;
        } else {
            ++at;
        }
    }
    return count;
}

/// The highest group that the translation of a pattern refers to; -1 for none.
int highest_reference(std::string_view translation) {
    int highest = -1;
    for (std::size_t at = 0; at + 1 < translation.size(); ++at) {
        const char digit = translation[at + 1];
        if (translation[at] == '\\' && digit >= '0' && digit <= '9') {
            highest = std::max(highest, digit - '0');
            ++at;
        }
    }
    return highest;
}

/// Of a key without a translation nothing more is said.
void check_literal(const DictionaryPair& pair, Findings& findings) {
    const int reference = highest_reference(pair.translation.text);
    if (reference < 0) return;
    const std::string mark = '\\' + std::to_string(reference);
    findings.push_back({pair.translation.number, "group", pair.key.text,
                        "the key is no pattern, so that " + mark + " is shown as it stands"});
}

void check_pattern(const DictionaryPair& pair, Findings& findings) {
    // Patterns are read up to their first null byte.
    const std::string pattern(pair.key.text.substr(0, pair.key.text.find('\0')));
    const support::CompiledPattern compiled(pattern.c_str(), false);
    if (compiled.Error() != nullptr) {
        findings.push_back({pair.key.number, "pattern", pair.key.text,
                            std::string("the key does not compile: ") + compiled.Error()});
        return;
    }
    const int reference = highest_reference(pair.translation.text);
    const int groups = count_of_groups(pattern);
    if (reference <= groups) return;
    findings.push_back({pair.translation.number, "group", pair.key.text,
                        "the translation refers to group " + std::to_string(reference) +
                            ", and the key has " + std::to_string(groups)});
}

void check_translation(const DictionaryPair& pair, Findings& findings) {
    if (support::is_insignificant(pair.translation.text)) {
        findings.push_back(
            {pair.key.number, "untranslated", pair.key.text, "the key has no translation"});
    } else if (is_pattern(pair.key.text)) {
        check_pattern(pair, findings);
    } else {
        check_literal(pair, findings);
    }
}

/// One line says it for the file, since they all end in the same way.
void check_line_ends(const std::vector<DictionaryPair>& pairs, Findings& findings) {
    for (const DictionaryPair& pair : pairs) {
        for (const DictionaryLine& line : {pair.key, pair.translation}) {
            if (!line.text.ends_with('\r')) continue;
            findings.push_back({line.number, "line end", pair.key.text,
                                "the line ends in a carriage return, which is part of it"});
            return;
        }
    }
}

void check_duplicates(const std::vector<DictionaryPair>& pairs, Findings& findings) {
    std::unordered_map<std::string_view, std::size_t> lines;
    for (const DictionaryPair& pair : pairs) {
        const auto [place, is_new] = lines.try_emplace(pair.key.text, pair.key.number);
        if (is_new) continue;
        findings.push_back({pair.key.number, "duplicate", pair.key.text,
                            "the key stands in line " + std::to_string(place->second)});
    }
}

}  // namespace

std::vector<Finding> check_dictionary(const support::DictionaryPairs& pairs) {
    Findings findings;
    for (const DictionaryPair& pair : pairs.pairs) check_translation(pair, findings);
    if (pairs.dropped) {
        findings.push_back({pairs.dropped->number, "untranslated", pairs.dropped->text,
                            "the key has no translation"});
    }
    check_duplicates(pairs.pairs, findings);
    check_line_ends(pairs.pairs, findings);
    std::stable_sort(findings.begin(), findings.end(),
                     [](const Finding& a, const Finding& b) { return a.line < b.line; });
    return findings;
}

}  // namespace zol::tool
