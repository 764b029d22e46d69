// The second step of TextLayout: sizes and lattices from the spans that the survey saw.
#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "engine/block/text_layout.h"
#include "engine/formats/diagnostics.h"
#include "engine/formats/number_text.h"
#include "engine/formats/read_error.h"

namespace zol::engine::block {

namespace {

using Kind = AxisReading::Kind;
constexpr std::size_t kNone = AxisReading::kNone;
constexpr double kTurnedTolerance = 1e-2;

bool are_indexes(const std::vector<Span>& spans) {
    const bool whole = std::all_of(spans.begin(), spans.end(), [](const Span& span) {
        return span.centroid == std::floor(span.centroid);
    });
    const double least = spans.front().centroid;
    return whole && (least == 0 || least == 1);
}

}  // namespace

std::array<double, 3> TextLayout::LowerCorner() const {
    std::array<double, 3> lower{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        lower[axis] = spec_.extent ? (*spec_.extent)[axis] : 0.0;
    }
    return lower;
}

bool TextLayout::LooksLikeIndexes(const States& states) const {
    bool stepped_by_one = false;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (axes_[axis].kind == Kind::Same) {
            continue;
        }
        if (axes_[axis].kind != Kind::Centroid || axes_[axis].second != kNone ||
            states[axis].spans.Overflowed()) {
            return false;
        }
        const std::vector<Span> spans = states[axis].spans.Sorted();
        const std::optional<double> gap = common_gap(spans);
        if (!are_indexes(spans) || gap.value_or(1.0) != 1.0) {
            return false;
        }
        stepped_by_one = stepped_by_one || gap.has_value();
    }
    return stepped_by_one;
}

// Gives every span of an axis its size and its place in model coordinates.
void TextLayout::Rescale(std::size_t axis, SpanSet& spans, double scale, double offset,
                         double size) {
    AxisReading& reading = axes_[axis];
    reading.scale = scale;
    reading.offset = offset;
    reading.fixed_size = size;
    SpanSet placed;
    for (const Span& span : spans.Sorted()) {
        placed.Add({span.centroid * scale + offset, size});
    }
    spans = placed;
}

void TextLayout::SettleSizes(States& states) {
    const bool unit_blocks = !spec_.parent_size && LooksLikeIndexes(states);
    const std::array<double, 3> lower = LowerCorner();
    for (std::size_t axis = 0; axis < 3; ++axis) {
        AxisReading& reading = axes_[axis];
        SpanSet& spans = states[axis].spans;
        const bool has_size_column = reading.second != kNone;
        double parent = spec_.parent_size ? (*spec_.parent_size)[axis] : 1.0;
        if (has_size_column && (reading.IsIndex() || reading.kind == Kind::Same)) {
            if (spans.GreatestSize() - spans.LeastSize() >
                kLatticeTolerance * spans.GreatestSize()) {
                throw ReadError("cells are counted along " + axis_letter(axis) +
                                ", but their sizes differ; add a column of centroids");
            }
            parent = spec_.parent_size ? parent : spans.GreatestSize();
            reading.second = kNone;
        }
        states[axis].in_world = !spec_.local && !TurnsRows() && !reading.IsIndex() &&
                                reading.kind != Kind::Same && !unit_blocks;
        if (!has_size_column && reading.kind != Kind::Same && spans.Overflowed()) {
            throw ReadError("the centroids along " + axis_letter(axis) +
                            " lie on no lattice; add size columns, or a sidecar with the rotation");
        }
        if (reading.kind == Kind::Same) {
            spans = {};
            spans.Add({0.0, 0.0});
            Rescale(axis, spans, 0.0, lower[axis] + parent / 2, parent);
        } else if (reading.IsIndex() || unit_blocks) {
            const double least = spans.Sorted().front().centroid;
            const bool from_one = unit_blocks && least == 1.0;
            // Cell numbers have their base taken off already.
            const double base = reading.kind == Kind::CellNumber ? 0.0
                                : from_one                       ? 1.0
                                           : static_cast<double>(spec_.index_base);
            Rescale(axis, spans, parent, lower[axis] + (0.5 - base) * parent, parent);
        } else if (!has_size_column && spec_.parent_size) {
            Rescale(axis, spans, 1.0, 0.0, parent);
        } else if (!has_size_column) {
            const std::vector<Span> sorted = spans.Sorted();
            const std::optional<double> gap = common_gap(sorted);
            if (!gap && sorted.size() == 1) {
                throw ReadError("all blocks have the same " + axis_letter(axis) +
                                ", which leaves their size open; add a column d" +
                                axis_letter(axis) + ", or a sidecar with block:model.parentSize");
            }
            if (!gap) {
                throw ReadError("the centroids along " + axis_letter(axis) +
                                " have no common spacing; add size columns, or a sidecar with "
                                "block:model.parentSize or the rotation");
            }
            Rescale(axis, spans, 1.0, 0.0, *gap);
        }
    }
}

void TextLayout::PlanAxes(States& states, Source& source) {
    const std::array<double, 3> lower = LowerCorner();
    std::array<double, 3> origin{};
    if (spec_.origin) {
        origin = {spec_.origin->x, spec_.origin->y, spec_.origin->z};
    }
    for (std::size_t axis = 0; axis < 3; ++axis) {
        AxisState& state = states[axis];
        AxisFacts facts;
        if (spec_.parent_size) {
            facts.parent = (*spec_.parent_size)[axis];
            // World coordinates of a turned model come rounded to a centimetre or so,
            // which its stated lattice is to put right.
            facts.tolerance = TurnsRows() ? kTurnedTolerance : kLatticeTolerance;
        }
        const bool lower_is_known = spec_.extent || spec_.origin || spec_.count;
        if (state.in_world && (spec_.origin || spec_.extent)) {
            facts.lower = origin[axis] + lower[axis];
        } else if (!state.in_world && (lower_is_known || axes_[axis].IsIndex())) {
            facts.lower = lower[axis];
        }
        state.plan = plan_axis(state.spans, facts);
        if (state.in_world) {
            if (!spec_.origin) {
                origin[axis] = state.plan.lower - lower[axis];
            }
            axes_[axis].offset = -origin[axis];
            state.spans = state.spans.Shifted(-origin[axis]);
            state.plan.lower -= origin[axis];
        }
        if (spec_.count) {
            state.plan.count = (*spec_.count)[axis];
        }
    }
    source.placement = PlacementAt({origin[0], origin[1], origin[2]});
}

// Sizes that vary freely are a way to model; one size on no lattice is more often a mistake.
void TextLayout::ReportFreeAxes(const States& states, const std::string& file) const {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const SpanSet& spans = states[axis].spans;
        const bool one_size =
            spans.GreatestSize() - spans.LeastSize() <= kLatticeTolerance * spans.GreatestSize();
        const bool is_free = states[axis].plan.kind == AxisPlan::Kind::Free;
        if (is_free && (one_size || spec_.parent_size || spec_.origin || spec_.extent)) {
            report(file, "the blocks fit no lattice of " + number_text(states[axis].plan.parent) +
                             " from " + number_text(states[axis].plan.lower) + " along " +
                             axis_letter(axis) + "; they are taken as boxes without one");
        }
    }
}

void TextLayout::CheckInside(const States& states) const {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const AxisState& state = states[axis];
        const double slack = state.plan.tolerance * state.plan.parent;
        const double upper =
            state.plan.lower + static_cast<double>(state.plan.count) * state.plan.parent;
        if (state.spans.Lower() < state.plan.lower - slack ||
            (state.plan.kind != AxisPlan::Kind::Free && state.spans.Upper() > upper + slack)) {
            throw ReadError("blocks span " + number_text(state.spans.Lower()) + " to " +
                            number_text(state.spans.Upper()) + " along " + axis_letter(axis) +
                            " of the model, which is stated to span " +
                            number_text(state.plan.lower) + " to " + number_text(upper));
        }
    }
}

}  // namespace zol::engine::block
