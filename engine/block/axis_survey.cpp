#include "engine/block/axis_survey.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <iterator>
#include <limits>

namespace zol::engine::block {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr int kMostParts = 256;
// Beyond this part of a gap two centroids don't belong to the same steps.
constexpr double kMostSlack = 0.05;
// A model with more parents along an axis is taken for a mistake of the lattice.
constexpr double kMostCells = 2147483647.0;

std::size_t hash_of(const Span& span) {
    // Adding 0.0 makes one zero of the two.
    const auto a = std::bit_cast<std::uint64_t>(span.centroid + 0.0);
    const auto b = std::bit_cast<std::uint64_t>(span.size + 0.0);
    std::uint64_t mixed = (a ^ std::rotl(b, 29)) * 0x9E3779B97F4A7C15U;
    mixed ^= mixed >> 32;
    return static_cast<std::size_t>(mixed * 0xD6E8FEB86659FD93U >> 20);
}

bool is_whole(double value, double tolerance) {
    return std::fabs(value - std::round(value)) <= tolerance;
}

// Lower and upper edge in parents above the lattice's lower corner.
struct Edges {
    double lower;
    double upper;
};

Edges edges_of(const Span& span, const AxisPlan& plan) {
    return {(span.centroid - span.size / 2 - plan.lower) / plan.parent,
            (span.centroid + span.size / 2 - plan.lower) / plan.parent};
}

bool lies_on_parts(const std::vector<Span>& spans, const AxisPlan& plan, int parts) {
    return std::all_of(spans.begin(), spans.end(), [&](const Span& span) {
        const Edges edges = edges_of(span, plan);
        // The tolerance is one of the parent, whatever the part.
        return is_whole(edges.lower * parts, plan.tolerance * parts) &&
               is_whole(edges.upper * parts, plan.tolerance * parts) &&
               std::round(edges.upper * parts) > std::round(edges.lower * parts);
    });
}

bool lies_inside_parents(const std::vector<Span>& spans, const AxisPlan& plan) {
    return std::all_of(spans.begin(), spans.end(), [&](const Span& span) {
        const Edges edges = edges_of(span, plan);
        return edges.upper <= std::floor(edges.lower + plan.tolerance) + 1 + plan.tolerance;
    });
}

// The parent that sizes stand for which were rounded: many blocks of 12.4999 every 12.5
// are of 12.5. Of one size only what the centroids say counts.
double unrounded_parent(const std::vector<Span>& spans, double greatest) {
    std::vector<Span> full;
    std::copy_if(spans.begin(), spans.end(), std::back_inserter(full), [&](const Span& span) {
        return std::fabs(span.size - greatest) <= kLatticeTolerance * greatest;
    });
    const std::optional<double> gap = common_gap(full);
    if (!gap) {
        return greatest;
    }
    // Gaps may be of several parents where blocks are left out.
    const double parent = *gap / std::max(1.0, std::round(*gap / greatest));
    return std::fabs(parent - greatest) <= kLatticeTolerance * greatest ? parent : greatest;
}

// The lattice line at or below all data that full-sized spans lie on.
double lattice_lower(const std::vector<Span>& spans, const SpanSet& bounds, double parent) {
    const auto off_by = [parent](const Span& span) { return std::fabs(span.size - parent); };
    const auto full =
        std::min_element(spans.begin(), spans.end(),
                         [&](const Span& a, const Span& b) { return off_by(a) < off_by(b); });
    if (off_by(*full) > kLatticeTolerance * parent) {
        return bounds.Lower();
    }
    // Half the parent, not half the size that was rounded.
    const double edge = full->centroid - parent / 2;
    const double cells = std::ceil((edge - bounds.Lower()) / parent - kLatticeTolerance);
    return edge - cells * parent;
}

}  // namespace

void SpanSet::AddNew(const Span& span) {
    last_ = span;
    if (overflowed_) {
        Widen(span);
        return;
    }
    if (count_ * 2 >= slots_.size()) {
        Grow();
    }
    const std::size_t slot = SlotOf(span);
    slots_[last_slot_].follower = static_cast<std::uint32_t>(slot);
    last_slot_ = slot;
    if (!slots_[slot].IsEmpty()) {
        return;
    }
    Widen(span);
    slots_[slot].span = span;
    if (++count_ > kMost) {
        overflowed_ = true;
        slots_ = {};
    }
}

// Where a span stands, or belongs.
std::size_t SpanSet::SlotOf(const Span& span) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = hash_of(span) & mask;
    while (!slots_[slot].IsEmpty() && !(slots_[slot].span == span)) {
        slot = (slot + 1) & mask;
    }
    return slot;
}

void SpanSet::Widen(const Span& span) {
    const double lower = span.centroid - span.size / 2;
    const double upper = span.centroid + span.size / 2;
    const bool first = count_ == 0;
    lower_ = first ? lower : std::min(lower_, lower);
    upper_ = first ? upper : std::max(upper_, upper);
    least_size_ = first ? span.size : std::min(least_size_, span.size);
    greatest_size_ = first ? span.size : std::max(greatest_size_, span.size);
}

void SpanSet::Grow() {
    const std::size_t size = std::max<std::size_t>(64, slots_.size() * 2);
    std::vector<Slot> old(size, Slot{{0.0, kNaN}, 0});
    old.swap(slots_);
    last_slot_ = 0;
    for (const Slot& slot : old) {
        if (!slot.IsEmpty()) {
            slots_[SlotOf(slot.span)].span = slot.span;
        }
    }
}

void SpanSet::Merge(const SpanSet& other) {
    if (other.IsEmpty()) {
        return;
    }
    for (const Slot& slot : other.slots_) {
        if (!slot.IsEmpty()) {
            AddNew(slot.span);
        }
    }
    if (other.overflowed_) {
        lower_ = IsEmpty() ? other.lower_ : std::min(lower_, other.lower_);
        upper_ = IsEmpty() ? other.upper_ : std::max(upper_, other.upper_);
        least_size_ = IsEmpty() ? other.least_size_ : std::min(least_size_, other.least_size_);
        greatest_size_ =
            IsEmpty() ? other.greatest_size_ : std::max(greatest_size_, other.greatest_size_);
        overflowed_ = true;
        count_ = std::max(count_, other.count_);
        slots_ = {};
    }
}

SpanSet SpanSet::Shifted(double by) const {
    SpanSet shifted;
    for (const Span& span : Sorted()) {
        shifted.Add({span.centroid + by, span.size});
    }
    if (overflowed_) {
        shifted = *this;
        shifted.lower_ += by;
        shifted.upper_ += by;
        shifted.last_ = Span{0.0, -1.0};
    }
    return shifted;
}

std::vector<Span> SpanSet::Sorted() const {
    std::vector<Span> spans;
    for (const Slot& slot : slots_) {
        if (!slot.IsEmpty()) {
            spans.push_back(slot.span);
        }
    }
    std::sort(spans.begin(), spans.end(), [](const Span& a, const Span& b) {
        return a.centroid != b.centroid ? a.centroid < b.centroid : a.size < b.size;
    });
    return spans;
}

std::optional<double> common_gap(const std::vector<Span>& sorted) {
    double gap = 0.0;
    for (std::size_t i = 1; i < sorted.size(); ++i) {
        const double step = sorted[i].centroid - sorted[i - 1].centroid;
        if (step > 0 && (gap == 0.0 || step < gap)) {
            gap = step;
        }
    }
    if (gap == 0.0) {
        return std::nullopt;
    }
    for (std::size_t i = 1; i < sorted.size(); ++i) {
        const double steps = (sorted[i].centroid - sorted[i - 1].centroid) / gap;
        // The gap was rounded too, which counts once for each step.
        if (!is_whole(steps, std::min(kMostSlack, kLatticeTolerance * std::max(1.0, steps)))) {
            return std::nullopt;
        }
    }
    // Over the whole range the rounding evens out.
    const double range = sorted.back().centroid - sorted.front().centroid;
    return range / std::round(range / gap);
}

AxisPlan plan_axis(const SpanSet& set, const AxisFacts& facts) {
    AxisPlan plan;
    plan.tolerance = facts.tolerance;
    plan.parent = facts.parent.value_or(set.GreatestSize());
    plan.lower = facts.lower.value_or(set.Lower());
    const double cells = (set.Upper() - set.Lower()) / plan.parent;
    if (set.Overflowed() || !(cells < kMostCells)) {
        return plan;
    }
    const std::vector<Span> spans = set.Sorted();
    if (!facts.parent) {
        plan.parent = unrounded_parent(spans, plan.parent);
    }
    plan.lower = facts.lower.value_or(lattice_lower(spans, set, plan.parent));
    plan.count = std::max<std::int64_t>(
        1, std::llround(std::ceil((set.Upper() - plan.lower) / plan.parent - plan.tolerance)));
    if (!lies_inside_parents(spans, plan)) {
        plan.lower = facts.lower.value_or(set.Lower());
        return plan;
    }
    plan.kind = AxisPlan::Kind::Inside;
    for (int parts = 1; parts <= kMostParts; ++parts) {
        if (lies_on_parts(spans, plan, parts)) {
            plan.parts = parts;
            plan.kind = parts == 1 ? AxisPlan::Kind::Regular : AxisPlan::Kind::Fractions;
            break;
        }
    }
    return plan;
}

}  // namespace zol::engine::block
