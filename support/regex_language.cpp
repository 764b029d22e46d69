#include "support/regex_language.h"

#include <cstddef>
#include <optional>
#include <vector>

#include "support/regex_cost.h"
#include "support/regex_list.h"

namespace zol::support {

namespace {

constexpr const char* kTrailingBackslash = "Trailing backslash";
constexpr const char* kInvalidReference = "Invalid back reference";
constexpr const char* kUnmatchedList = "Unmatched [ or [^";
constexpr const char* kUnmatchedOpen = "Unmatched ( or \\(";
constexpr const char* kUnmatchedClose = "Unmatched ) or \\)";
constexpr const char* kTooBig = "Regular expression too big";

// Bytes of compiled code, in the code of the classic engine: what the limit is told in.
constexpr std::size_t kMostCode = 65536;
constexpr std::size_t kLongestRun = 255;
// Groups within groups, for each of which today's engine takes 700 bytes of the stack.
constexpr std::size_t kDeepestGroup = 200;
// Alternatives and repeats, whose square is its memory.
constexpr std::size_t kMostChoices = 2500;

class Rewriter {
public:
    Rewriter(std::string_view pattern, bool ignore_case, bool wraps_anchors)
        : pattern_(pattern), ignore_case_(ignore_case), wraps_anchors_(wraps_anchors) {}

    EnginePattern Run() {
        while (at_ < pattern_.size() && error_ == nullptr) {
            Step();
            if (code_ > kMostCode || choices_ > kMostChoices || groups_.size() > kDeepestGroup ||
                groups_.back().CostSoFar().IsTooHigh()) {
                Fail(kTooBig);
            }
        }
        if (groups_.size() > 1) {
            Fail(kUnmatchedOpen);
        }
        if (error_ != nullptr) {
            return {{}, error_, false, {}};
        }
        return {std::move(text_), nullptr, groups_unsafe_,
                wraps_anchors_ ? std::move(engine_groups_) : std::vector<std::size_t>()};
    }

    /// The engine copies what "+" repeats, and in the copy an anchor holds only when a
    /// group's mark comes next: the pattern is to be written again with anchors wrapped.
    bool NeedsWrapping() const { return copies_anchors_; }

private:
    // What stands before the place that is being read.
    enum class Before {
        kNothing,  // the start, an opening mark or the alternation mark
        kAnchor,   // a "^" after one of those
        kItem,     // something that a repeat can follow
        kEdge,     // the same, and it takes no byte
    };

    // The pattern as a whole, or a group that is open.
    struct Group {
        std::size_t number = 0;
        // Groups that had been closed when it opened, and those that were closed in the
        // alternatives read so far, a bit a number.
        unsigned closed_before = 0;
        unsigned closed_inside = 0;
        // One of its alternatives refers to a group of another one.
        bool crosses = false;
        PatternCost earlier;  // of the alternatives before the present one
        bool has_earlier = false;
        PatternCost alternative;  // of the present one, up to the last item
        PatternCost item;         // of the last item

        PatternCost CostSoFar() const {
            const PatternCost present = alternative.Then(item);
            return has_earlier ? earlier.Or(present) : present;
        }
        void NextItem(const PatternCost& cost) {
            alternative = alternative.Then(item);
            item = cost;
        }
        void NextAlternative() {
            earlier = CostSoFar();
            has_earlier = true;
            alternative = {};
            item = {};
        }
    };

    void Fail(const char* error) { error_ = error_ == nullptr ? error : error_; }

    bool NextIs(std::string_view text) const { return pattern_.substr(at_, text.size()) == text; }

    void Add(std::string_view text, std::size_t code, Before before = Before::kItem) {
        item_ = text_.size();
        text_ += text;
        code_ += code;
        run_ = 0;
        before_ = before;
        item_crosses_ = false;
    }

    void AddByteOf(std::string_view text, std::size_t code) {
        Add(text, code);
        groups_.back().NextItem(PatternCost::Byte());
    }

    void AddAnchor(std::string_view text, Before before) {
        if (wraps_anchors_) {
            ++engine_group_count_;
            Add("\\(" + std::string(text) + "\\)", 1, before);
        } else {
            Add(text, 1, before);
        }
        groups_.back().NextItem(PatternCost::Anchor());
    }

    void AddOrdinary(char byte) {
        item_ = text_.size();
        append_ordinary(text_, byte);
        run_ = run_ == kLongestRun ? 0 : run_;
        code_ += run_ == 0 ? 3U : 1U;
        ++run_;
        before_ = Before::kItem;
        item_crosses_ = false;
        groups_.back().NextItem(PatternCost::Byte());
    }

    void Step() {
        const char byte = pattern_[at_++];
        switch (byte) {
            case '\\':
                return Escape();
            case '[':
                --at_;
                return List();
            case '.':
                return AddByteOf(".", 1);
            case '^':
                if (before_ == Before::kNothing) {
                    return AddAnchor("^", Before::kAnchor);
                }
                return AddOrdinary(byte);
            case '$':
                if (at_ == pattern_.size() || NextIs("\\)") || NextIs("\\|")) {
                    return AddAnchor("$", Before::kEdge);
                }
                return AddOrdinary(byte);
            case '*':
            case '+':
            case '?':
                if (before_ == Before::kNothing || before_ == Before::kAnchor) {
                    return AddOrdinary(byte);
                }
                --at_;
                return Repeat();
            default:
                return AddOrdinary(byte);
        }
    }

    void Escape() {
        if (at_ == pattern_.size()) {
            return Fail(kTrailingBackslash);
        }
        const std::string_view both = pattern_.substr(at_ - 1, 2);
        const char byte = pattern_[at_++];
        switch (byte) {
            case '(':
                return Open();
            case ')':
                return Close();
            case '|':
                return Alternate();
            case 'w':
            case 'W':
                return AddByteOf(both, 1);
            case '<':
            case '>':
            case 'b':
            case 'B':
            case '`':
            case '\'':
                return AddAnchor(both, Before::kEdge);
            default:
                return byte >= '1' && byte <= '9' ? Refer(static_cast<std::size_t>(byte - '0'))
                                                  : AddOrdinary(byte);
        }
    }

    void List() {
        std::optional<ByteList> list = ByteList::Read(pattern_, at_);
        if (!list) {
            return Fail(kUnmatchedList);
        }
        if (ignore_case_) {
            list->FoldCase();
        }
        // The operation, the length of its map, and the map up to its last member.
        std::size_t map = 32;
        while (map > 0 && (list->members >> ((map - 1) * 8)).none()) {
            --map;
        }
        AddByteOf(list->Text(), 2 + map);
    }

    // A row of repeats is one: what may be left out stays so, what may come again too.
    void Repeat() {
        bool may_be_none = false;
        bool may_be_many = false;
        for (; at_ < pattern_.size(); ++at_) {
            const char mark = pattern_[at_];
            if (mark != '*' && mark != '+' && mark != '?') {
                break;
            }
            may_be_none = may_be_none || mark != '+';
            may_be_many = may_be_many || mark != '?';
        }
        code_ += (may_be_none ? 3U : 6U) + (may_be_many ? 3U : 0U);
        // The byte that is repeated leaves the run that it ended.
        code_ += run_ > 1 ? 2U : 0U;
        run_ = 0;
        if (before_ == Before::kEdge) {
            // The engine takes a repeat behind these for an ordinary byte. What takes no
            // byte matches as well once as often, and always when it may be left out.
            if (may_be_none) {
                text_.resize(item_);
                groups_.back().item = {};
                engine_group_count_ -= wraps_anchors_ ? 1 : 0;
            }
            before_ = Before::kItem;
            item_ = text_.size();
            return;
        }
        if (may_be_many && item_crosses_) {
            return Fail(kInvalidReference);
        }
        ++choices_;
        PatternCost& cost = groups_.back().item;
        groups_unsafe_ = groups_unsafe_ || (may_be_many && cost.empty_ways > 1);
        copies_anchors_ = copies_anchors_ || (!may_be_none && cost.anchors.longest > 0);
        cost = cost.Repeated(may_be_none, may_be_many);
        text_ += may_be_none ? (may_be_many ? '*' : '?') : '+';
    }

    void Open() {
        Add("\\(", 3, Before::kNothing);
        Group group;
        engine_groups_.push_back(++engine_group_count_);
        group.number = engine_groups_.size();
        group.closed_before = closed_;
        groups_.push_back(group);
    }

    void Close() {
        if (groups_.size() == 1) {
            return Fail(kUnmatchedClose);
        }
        const Group group = groups_.back();
        groups_.pop_back();
        closed_ |= group.closed_inside | Bit(group.number);
        ever_closed_ |= Bit(group.number);
        groups_.back().crosses = groups_.back().crosses || group.crosses;
        Add("\\)", 3);
        item_crosses_ = group.crosses;
        const PatternCost mark = PatternCost::Step();
        groups_.back().NextItem(mark.Then(group.CostSoFar()).Then(mark));
    }

    void Alternate() {
        groups_.back().closed_inside |= closed_;
        closed_ = groups_.back().closed_before;
        ++choices_;
        groups_.back().NextAlternative();
        Add("\\|", 6, Before::kNothing);
    }

    void Refer(std::size_t number) {
        if ((closed_ & Bit(number)) != 0) {
            const std::size_t engine_number = engine_groups_[number - 1];
            if (engine_number > 9) {
                return Fail(kInvalidReference);
            }
            Add(std::string{'\\', static_cast<char>('0' + engine_number)}, 2);
            return groups_.back().NextItem(PatternCost::Reference());
        }
        if ((ever_closed_ & Bit(number)) == 0) {
            return Fail(kInvalidReference);
        }
        // A group of another alternative has no text, unless both are repeated together.
        // The engine would refuse the pattern.
        auto alternatives = groups_.rbegin();
        while ((alternatives->closed_inside & Bit(number)) == 0) {
            ++alternatives;
        }
        alternatives->crosses = true;
        AddByteOf(ByteList{}.Text(), 2);
    }

    // None for the groups that no reference can name.
    static unsigned Bit(std::size_t number) { return number <= 9 ? 1U << number : 0U; }

    std::string_view pattern_;
    bool ignore_case_;
    bool wraps_anchors_;
    std::size_t at_ = 0;
    std::string text_;
    const char* error_ = nullptr;
    Before before_ = Before::kNothing;
    std::size_t item_ = 0;  // where the last item begins in text_
    bool item_crosses_ = false;
    std::size_t code_ = 1;
    std::size_t run_ = 0;  // ordinary bytes in one run of code
    std::size_t choices_ = 0;
    bool groups_unsafe_ = false;
    bool copies_anchors_ = false;
    std::size_t engine_group_count_ = 0;
    std::vector<std::size_t> engine_groups_;
    std::vector<Group> groups_ = std::vector<Group>(1);
    unsigned closed_ = 0;
    unsigned ever_closed_ = 0;
};

}  // namespace

EnginePattern engine_pattern(std::string_view pattern, bool ignore_case) {
    Rewriter rewriter(pattern, ignore_case, false);
    EnginePattern written = rewriter.Run();
    return rewriter.NeedsWrapping() ? Rewriter(pattern, ignore_case, true).Run() : written;
}

}  // namespace zol::support
