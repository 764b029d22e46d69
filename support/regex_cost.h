// What a pattern costs today's engine, and where it would not end. Along a way that takes
// no byte of the text the engine recurses, keeps every place that can be reached from
// every other, and copies what lies behind an anchor; "+" copies what it repeats.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace zol::support {

/// The weight of the heaviest ways through a piece of a pattern that take no byte.
struct EmptyWay {
    static constexpr std::int32_t kNoWay = -1;

    std::int32_t through = 0;  // from its start to its end
    std::int32_t from_start = 0;
    std::int32_t to_end = 0;
    std::int32_t longest = 0;  // anywhere in it

    static EmptyWay Of(std::int32_t weight) { return {weight, weight, weight, weight}; }
    static EmptyWay Closed() { return {kNoWay, 0, 0, 0}; }

    EmptyWay Then(const EmptyWay& next) const {
        const bool open = through != kNoWay;
        const bool next_open = next.through != kNoWay;
        return {open && next_open ? through + next.through : kNoWay,
                open ? std::max(from_start, through + next.from_start) : from_start,
                next_open ? std::max(next.to_end, next.through + to_end) : next.to_end,
                std::max({longest, next.longest, to_end + next.from_start})};
    }

    /// Alternatives: the heavier way, or both where the engine copies each.
    EmptyWay Or(const EmptyWay& other, bool both) const {
        const bool both_open = std::min(through, other.through) != kNoWay;
        return {both && both_open ? through + other.through : std::max(through, other.through),
                std::max(from_start, other.from_start), std::max(to_end, other.to_end),
                std::max(longest, other.longest)};
    }

    /// Repeated: what can be gone through, or is copied, comes `times` over.
    EmptyWay Looped(std::int32_t times, bool copied) const {
        const std::int32_t around = through == kNoWay && !copied ? 1 : times;
        const std::int32_t start = from_start * around;
        const std::int32_t end = to_end * around;
        return {through == kNoWay ? kNoWay : through * around, start, end,
                std::max({longest, to_end + from_start, start, end})};
    }
};

/// The cost of a piece of a pattern.
struct PatternCost {
    EmptyWay steps;
    EmptyWay anchors;
    // How many ways there are in all, as eighths of the logarithm to base 2.
    EmptyWay choices;
    std::int32_t nodes = 0;
    bool has_anchor = false;
    // In how many ways it can be gone through without a byte: none, one, or more (2).
    std::int32_t empty_ways = 1;

    static PatternCost Byte() {
        return {EmptyWay::Closed(), EmptyWay::Closed(), EmptyWay::Closed(), 1, false, 0};
    }
    static PatternCost Step() {
        return {EmptyWay::Of(1), EmptyWay::Of(0), EmptyWay::Of(0), 1, false, 1};
    }
    static PatternCost Anchor() {
        return {EmptyWay::Of(1), EmptyWay::Of(1), EmptyWay::Of(0), 1, true, 1};
    }
    /// May stand for the empty text, and takes more of the stack than any other step.
    static PatternCost Reference() {
        return {EmptyWay::Of(5), EmptyWay::Of(0), EmptyWay::Of(0), 1, false, 1};
    }

    PatternCost Then(const PatternCost& next) const {
        return {steps.Then(next.steps),        anchors.Then(next.anchors),
                choices.Then(next.choices),    nodes + next.nodes,
                has_anchor || next.has_anchor, std::min(empty_ways * next.empty_ways, 2)};
    }
    PatternCost Or(const PatternCost& other) const {
        EmptyWay either = steps.Or(other.steps, false);
        // One choice more before each of them.
        either.longest = std::max(either.longest, ++either.from_start);
        return {either,
                anchors.Or(other.anchors, true),
                Widened(choices.Or(other.choices, false),
                        SumOfWays(choices.through, other.choices.through)),
                nodes + other.nodes,
                has_anchor || other.has_anchor,
                std::min(empty_ways + other.empty_ways, 2)};
    }
    PatternCost Repeated(bool may_be_none, bool may_be_many) const {
        PatternCost cost = *this;
        if (may_be_many) {
            cost.steps = steps.Looped(1, false);
            // An anchor in a loop is copied for each way around it that takes no byte.
            cost.anchors = anchors.Looped(choices.through > 0 ? 13 : 8, !may_be_none);
            cost.choices = choices.Looped(has_anchor ? 4 : 1, false);
            if (choices.through != EmptyWay::kNoWay) {
                cost.choices = Widened(cost.choices, cost.choices.through + kTwice);
            }
            cost.nodes *= may_be_none ? 1 : 2;
            // Around it once more is another way.
            cost.empty_ways = empty_ways > 0 ? 2 : 0;
        }
        if (may_be_none) {
            cost.steps.through = std::max(cost.steps.through, 0);
            cost.anchors.through = std::max(cost.anchors.through, 0);
            cost.choices = Widened(cost.choices, SumOfWays(cost.choices.through, 0));
            cost.empty_ways = std::min(cost.empty_ways + 1, 2);
        }
        return Step().Then(cost);
    }

    /// Beyond this the engine would overflow a stack of 256 kB, take seconds, or take
    /// hundreds of megabytes.
    bool IsTooHigh() const {
        return steps.longest > 1200 || anchors.longest > 24 || nodes > 100'000 ||
               choices.longest > (has_anchor ? 12 : 28) * kTwice;
    }

private:
    static constexpr std::int32_t kTwice = 8;

    static std::int32_t SumOfWays(std::int32_t one, std::int32_t other) {
        if (std::min(one, other) == EmptyWay::kNoWay) {
            return std::max(one, other);
        }
        const double more = std::exp2(-std::abs(one - other) / double{kTwice});
        return std::max(one, other) +
               static_cast<std::int32_t>(std::lround(kTwice * std::log2(1 + more)));
    }

    static EmptyWay Widened(EmptyWay way, std::int32_t through) {
        way.through = through;
        way.from_start = std::max(way.from_start, through);
        way.to_end = std::max(way.to_end, through);
        way.longest = std::max(way.longest, through);
        return way;
    }
};

}  // namespace zol::support
