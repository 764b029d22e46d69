#include "engine/block/text_layout.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "engine/block/span_watcher.h"
#include "engine/formats/number_text.h"
#include "engine/formats/read_error.h"

namespace zol::engine::block {

namespace {

using Kind = AxisReading::Kind;
constexpr std::size_t kNone = AxisReading::kNone;

// Every watcher that this file gets back is one that it made.
const SpanWatcher& as_span_watcher(const std::unique_ptr<RowWatcher>& watcher) {
    return static_cast<const SpanWatcher&>(*watcher);
}

}  // namespace

TextLayout::TextLayout(const std::vector<ColumnRole>& roles, const ModelSpec& spec) : spec_(spec) {
    ChooseAxes(roles);
    SettleCells();
    CheckChoice();
    watched_ = Placing().Columns();
    ChooseConstants(roles);
}

std::size_t TextLayout::ColumnOf(const std::vector<ColumnRole>& roles, Role role, int axis) const {
    const auto found = std::find(roles.begin(), roles.end(), ColumnRole{role, axis});
    return found == roles.end() ? kNone : static_cast<std::size_t>(found - roles.begin());
}

void TextLayout::ChooseAxes(const std::vector<ColumnRole>& roles) {
    for (int axis = 0; axis < 3; ++axis) {
        AxisReading& reading = axes_[static_cast<std::size_t>(axis)];
        const std::size_t lower = ColumnOf(roles, Role::Lower, axis);
        const std::size_t upper = ColumnOf(roles, Role::Upper, axis);
        const std::size_t size = ColumnOf(roles, Role::Size, axis);
        if (const std::size_t centroid = ColumnOf(roles, Role::Centroid, axis); centroid != kNone) {
            reading.kind = Kind::Centroid;
            reading.first = centroid;
            reading.second = size;
        } else if (lower != kNone && upper != kNone) {
            reading.kind = Kind::Edges;
            reading.first = lower;
            reading.second = upper;
        } else if (lower != kNone && size != kNone) {
            reading.kind = Kind::LowerEdge;
            reading.first = lower;
            reading.second = size;
        } else if (const std::size_t index = ColumnOf(roles, Role::Index, axis); index != kNone) {
            reading.kind = Kind::Index;
            reading.first = index;
            reading.second = size;
        }
    }
    const std::size_t number = ColumnOf(roles, Role::CellNumber, 0);
    if (!IsListed() && number != kNone) {
        for (AxisReading& reading : axes_) {
            reading.kind = Kind::CellNumber;
            reading.first = number;
        }
    }
    // A single layer, and cells that are counted, may have their height in a column.
    for (int axis = 0; axis < 3; ++axis) {
        AxisReading& reading = axes_[static_cast<std::size_t>(axis)];
        const bool may_have_size = reading.kind == Kind::Same || reading.kind == Kind::CellNumber;
        if (may_have_size && IsListed()) {
            reading.second = ColumnOf(roles, Role::Size, axis);
        }
    }
}

bool TextLayout::IsListed() const {
    return std::any_of(axes_.begin(), axes_.end(),
                       [](const AxisReading& axis) { return axis.kind != Kind::Same; });
}

// Brings what the sidecar says of counts together, and gives cell numbers their strides.
void TextLayout::SettleCells() {
    if (spec_.extent && !spec_.parent_size && spec_.count) {
        spec_.parent_size.emplace();
        for (std::size_t axis = 0; axis < 3; ++axis) {
            (*spec_.parent_size)[axis] = ((*spec_.extent)[axis + 3] - (*spec_.extent)[axis]) /
                                         static_cast<double>((*spec_.count)[axis]);
        }
    }
    if (spec_.extent && spec_.parent_size) {
        Counts counts{};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const double cells =
                ((*spec_.extent)[axis + 3] - (*spec_.extent)[axis]) / (*spec_.parent_size)[axis];
            if (!(cells < 2147483647.0) ||
                std::fabs(cells - std::round(cells)) > kLatticeTolerance || cells < 0.5) {
                throw ReadError(
                    "block:model.extent is not a whole number of block:model.parentSize "
                    "along " +
                    axis_letter(axis));
            }
            counts[axis] = std::llround(cells);
        }
        if (spec_.count && *spec_.count != counts) {
            throw ReadError("block:model.count and block:model.extent don't agree");
        }
        spec_.count = counts;
    }
    std::int64_t stride = 1;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (axes_[axis].kind != Kind::CellNumber) {
            continue;
        }
        if (!spec_.count) {
            throw ReadError(
                "cell numbers alone place no blocks: add columns for x, y and z, or a "
                "sidecar with block:model.count and block:model.parentSize");
        }
        axes_[axis].first_number = spec_.index_base;
        axes_[axis].divisor = stride;
        // The slowest index is left to run past its count, so that a wrong number shows.
        axes_[axis].modulus = axis == 2 ? std::int64_t{1} << 52 : (*spec_.count)[axis];
        stride *= (*spec_.count)[axis];
    }
}

void TextLayout::CheckChoice() const {
    if (!IsListed()) {
        if (!spec_.count) {
            throw ReadError(
                "no column gives the place of a block: x, y, z (or xc, easting, "
                "centroid_x and so on) are looked for in the header; a sidecar can name "
                "them, or state block:model.count for rows in cell order");
        }
        return;
    }
    for (std::size_t axis = 0; axis < 2; ++axis) {
        if (axes_[axis].kind == Kind::Same) {
            throw ReadError("no column gives the place of a block along " + axis_letter(axis));
        }
    }
    if (!spec_.IsRotated() || spec_.local) {
        return;
    }
    const bool all_indexes = std::all_of(axes_.begin(), axes_.end(),
                                         [](const AxisReading& axis) { return axis.IsIndex(); });
    if (all_indexes) {
        return;
    }
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const AxisReading& reading = axes_[axis];
        if (reading.kind != Kind::Centroid) {
            throw ReadError("a rotated model needs centroid columns for x, y and z");
        }
        if (reading.second == kNone && !spec_.parent_size) {
            throw ReadError("a rotated model needs size columns, or block:model.parentSize");
        }
    }
    if (!spec_.origin) {
        throw ReadError("a rotated model needs block:model.origin");
    }
}

bool TextLayout::TurnsRows() const {
    return spec_.IsRotated() && !spec_.local && axes_[0].kind == Kind::Centroid;
}

RowPlacing TextLayout::Placing() const {
    AxisReadings axes = axes_;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (axes[axis].second == kNone && axes[axis].fixed_size == 0.0 && spec_.parent_size) {
            axes[axis].fixed_size = (*spec_.parent_size)[axis];
        }
    }
    if (!TurnsRows()) {
        return {axes, nullptr};
    }
    const Placement placement = PlacementAt(*spec_.origin);
    return {axes, &placement};
}

Placement TextLayout::PlacementAt(const geometry::Coord3D& origin) const {
    return spec_.rotation ? Placement::FromRotation(origin, *spec_.rotation)
           : spec_.angles ? Placement::FromAngles(origin, *spec_.angles)
                          : Placement(origin);
}

void TextLayout::ChooseConstants(const std::vector<ColumnRole>& roles) {
    constants_.fill(kNone);
    const auto choose = [&](Role role, std::size_t first) {
        for (int axis = 0; axis < 3; ++axis) {
            if (ColumnOf(roles, role, axis) == kNone) {
                return;
            }
        }
        for (int axis = 0; axis < 3; ++axis) {
            constants_[first + static_cast<std::size_t>(axis)] = watched_.size();
            watched_.push_back(ColumnOf(roles, role, axis));
        }
    };
    if (!spec_.origin && IsListed()) {
        choose(Role::Origin, 0);
    }
    if (!spec_.count && IsListed()) {
        choose(Role::Count, 3);
    }
}

std::unique_ptr<RowWatcher> TextLayout::MakeWatcher() const {
    return std::make_unique<SpanWatcher>(Placing(), constants_);
}

void TextLayout::TakeConstants(const std::vector<std::unique_ptr<RowWatcher>>& watchers) {
    const SpanWatcher* first = nullptr;
    for (const auto& watcher : watchers) {
        const SpanWatcher& seen = as_span_watcher(watcher);
        if (!seen.SawRows()) {
            continue;
        }
        first = first == nullptr ? &seen : first;
        for (std::size_t i = 0; i < constants_.size(); ++i) {
            if (constants_[i] != kNone && seen.ConstantValue(i) != first->ConstantValue(i)) {
                throw ReadError(
                    "the columns of the model's origin or counts are not the same in "
                    "every row");
            }
        }
    }
    if (first != nullptr && constants_[0] != kNone) {
        spec_.origin = {first->ConstantValue(0), first->ConstantValue(1), first->ConstantValue(2)};
    }
    if (first != nullptr && constants_[3] != kNone) {
        Counts counts{};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const double count = first->ConstantValue(3 + axis);
            if (!(count >= 1 && count < 2147483647.0 && count == std::floor(count))) {
                throw ReadError("the column of the count along " + axis_letter(axis) +
                                " holds no count");
            }
            counts[axis] = static_cast<std::int64_t>(count);
        }
        spec_.count = counts;
    }
}

void TextLayout::LayOut(const std::vector<std::unique_ptr<RowWatcher>>& watchers,
                        const std::shared_ptr<TextColumns>& columns, Source& source) {
    source.stratigraphic = spec_.layered;
    const bool empty = columns->Blocks().Rows() == 0;
    if (empty && !spec_.count) {
        throw ReadError("the table has no rows, and no sidecar states the model's extent");
    }
    if (!IsListed() || empty) {
        BuildStatedLattice(columns, source);
        return;
    }
    TakeConstants(watchers);
    States states;
    for (const auto& watcher : watchers) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            states[axis].spans.Merge(as_span_watcher(watcher).SpansSeen()[axis]);
        }
    }
    SettleSizes(states);
    PlanAxes(states, source);
    ReportFreeAxes(states, columns->Blocks().SourceFile().Path());
    CheckInside(states);
    BuildGeometry(states, columns, source);
    DescribeSchemas(states, source);
}

}  // namespace zol::engine::block
