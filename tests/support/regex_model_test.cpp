// Matches of random patterns against the plainest matcher there is: all ends that a piece
// of a pattern can reach, by its definition.
#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "support/regex.h"

namespace {

using Places = std::set<std::size_t>;

struct Node {
    enum Kind { kBytes, kAnchor, kRow, kChoice, kGroup, kRepeat } kind;
    std::string text;   // as it stands in the pattern; for kBytes and kAnchor
    std::string bytes;  // what kBytes matches
    char mark = 0;      // of kRepeat
    std::vector<Node> parts;
};

bool is_word(const std::string& text, std::size_t at) {
    return at < text.size() && (text[at] == '_' || text[at] == 'a' || text[at] == 'b');
}

bool holds(const std::string& anchor, const std::string& text, std::size_t at) {
    const bool before = at > 0 && is_word(text, at - 1);
    const bool after = is_word(text, at);
    switch (anchor.back()) {
        case '<':
            return !before && after;
        case '>':
            return before && !after;
        case 'b':
            return before != after;
        case '`':
            return at == 0;
        default:
            return at == text.size();
    }
}

Places ends(const Node& node, const std::string& text, const Places& starts) {
    Places result;
    switch (node.kind) {
        case Node::kBytes:
            for (const std::size_t at : starts) {
                if (at < text.size() && node.bytes.find(text[at]) != std::string::npos) {
                    result.insert(at + 1);
                }
            }
            return result;
        case Node::kAnchor:
            for (const std::size_t at : starts) {
                if (holds(node.text, text, at)) {
                    result.insert(at);
                }
            }
            return result;
        case Node::kRow:
        case Node::kGroup:
            result = starts;
            for (const Node& part : node.parts) {
                result = ends(part, text, result);
            }
            return result;
        case Node::kChoice:
            for (const Node& part : node.parts) {
                result.merge(ends(part, text, starts));
            }
            return result;
        case Node::kRepeat:
            break;
    }
    Places reached = ends(node.parts[0], text, starts);
    for (std::size_t before = 0; node.mark != '?' && reached.size() != before;) {
        before = reached.size();
        reached.merge(ends(node.parts[0], text, reached));
    }
    if (node.mark != '+') {
        reached.insert(starts.begin(), starts.end());
    }
    return reached;
}

std::string written(const Node& node) {
    std::string all = node.kind == Node::kGroup ? "\\(" : node.text;
    for (std::size_t i = 0; i < node.parts.size(); ++i) {
        all += (i > 0 && node.kind == Node::kChoice ? "\\|" : "") + written(node.parts[i]);
    }
    return all + (node.kind == Node::kGroup ? "\\)" : "") +
           (node.kind == Node::kRepeat ? std::string(1, node.mark) : "");
}

class Maker {
public:
    explicit Maker(unsigned seed) : random_(seed) {}

    std::size_t Below(std::size_t limit) { return random_() % limit; }

    Node Piece(int depth) {
        Node choice{Node::kChoice, "", "", 0, {}};
        for (std::size_t alternatives = 1 + Below(5) / 3; alternatives > 0; --alternatives) {
            Node row{Node::kRow, "", "", 0, {}};
            for (std::size_t items = Below(4); items > 0; --items) {
                row.parts.push_back(Item(depth));
            }
            choice.parts.push_back(row);
        }
        return choice;
    }

private:
    Node Item(int depth) {
        static const std::vector<Node> kItems = {
            {Node::kBytes, "a", "a", 0, {}},      {Node::kBytes, "b", "b", 0, {}},
            {Node::kBytes, ".", "ab_- ", 0, {}},  {Node::kBytes, "[^a]", "b_- \n", 0, {}},
            {Node::kBytes, "[b-]", "b-", 0, {}},  {Node::kBytes, "\\w", "ab_", 0, {}},
            {Node::kBytes, "\\W", "- \n", 0, {}}, {Node::kBytes, "[]a-b]", "ab", 0, {}},
            {Node::kAnchor, "\\<", "", 0, {}},    {Node::kAnchor, "\\>", "", 0, {}},
            {Node::kAnchor, "\\b", "", 0, {}},    {Node::kAnchor, "\\`", "", 0, {}},
            {Node::kAnchor, "\\'", "", 0, {}},
        };
        Node item = depth > 0 && Below(3) == 0 ? Node{Node::kGroup, "", "", 0, {Piece(depth - 1)}}
                                               : kItems[Below(Below(2) == 0 ? kItems.size() : 8)];
        for (; Below(3) == 0;) {
            item = Node{Node::kRepeat, "", "", "*+?" [Below(3)], { item }};
        }
        return item;
    }

    std::mt19937 random_;
};

TEST(PatternLanguage, FindsTheLeftmostLongestMatchOfRandomPatterns) {
    int found = 0;
    int refused = 0;
    for (unsigned seed = 0; seed < 5'000; ++seed) {
        Maker maker(seed);
        const Node pattern = maker.Piece(2);
        std::string text;
        for (std::size_t length = maker.Below(9); length > 0; --length) {
            text += "aab_- \n"[maker.Below(7)];
        }
        std::string expected;
        // Longest, of the first place that has any.
        for (std::size_t start = 0; start <= text.size(); ++start) {
            const Places reached = ends(pattern, text, {start});
            if (!reached.empty()) {
                expected = text.substr(start, *reached.rbegin() - start);
                break;
            }
        }
        SCOPED_TRACE("seed " + std::to_string(seed) + " pattern " + written(pattern) + " text " +
                     text);
        std::vector<std::string> groups;
        // Too many anchors in loops within loops.
        if (pat_Substitute("text", written(pattern), R"(\0)", false, false).empty()) {
            ++refused;
            continue;
        }
        ASSERT_EQ(static_cast<std::size_t>(regex_Match(text, written(pattern), false, groups)),
                  expected.size());
        ASSERT_EQ(groups.empty() ? "" : groups[0], expected);
        ASSERT_EQ(pat_Substitute(text, written(pattern), R"(\0)", false, false), text);
        found += expected.empty() ? 0 : 1;
    }
    EXPECT_GT(found, 1'500);
    EXPECT_LT(refused, 50);
}

}  // namespace
