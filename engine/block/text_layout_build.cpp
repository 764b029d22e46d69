// The last step of TextLayout: geometry and schemas from what is known of each axis.
#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include "engine/block/lattice.h"
#include "engine/block/table_geometry.h"
#include "engine/block/text_layout.h"
#include "engine/formats/number_text.h"
#include "engine/formats/read_error.h"

namespace zol::engine::block {

// The lattice that the sidecar states: a block a cell in a stated order, or, for
// columns that would place blocks but have no row, no block at all.
void TextLayout::BuildStatedLattice(const std::shared_ptr<TextColumns>& columns,
                                    Source& source) const {
    const std::array<double, 3> lower = LowerCorner();
    std::vector<Axis> axes;
    double cells = 1.0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const double parent = spec_.parent_size ? (*spec_.parent_size)[axis] : 1.0;
        axes.push_back(Axis::Regular(lower[axis], parent, (*spec_.count)[axis]));
        cells *= static_cast<double>((*spec_.count)[axis]);
    }
    if (!IsListed() && cells != static_cast<double>(columns->Blocks().Rows())) {
        throw ReadError("the table has " + std::to_string(columns->Blocks().Rows()) +
                        " rows, and its lattice " + number_text(cells) + " cells");
    }
    source.schemas = {lattice_facts(axes[0], axes[1], axes[2])};
    source.extent = source.schemas.front().extent;
    source.placement = PlacementAt(spec_.origin.value_or(geometry::Coord3D()));
    if (IsListed()) {
        source.geometry = std::make_unique<SparseLattice>(
            BlockRows(columns, Placing()), std::array<Axis, 3>{axes[0], axes[1], axes[2]});
    } else {
        source.geometry = std::make_unique<LatticeGeometry>(axes[0], axes[1], axes[2], spec_.order);
    }
}

void TextLayout::BuildGeometry(const States& states, const std::shared_ptr<TextColumns>& columns,
                               Source& source) const {
    BlockRows rows(columns, Placing());
    const bool regular = std::all_of(states.begin(), states.end(), [](const AxisState& state) {
        return state.plan.kind == AxisPlan::Kind::Regular;
    });
    if (regular) {
        std::vector<Axis> axes;
        double cells = 1.0;
        for (const AxisState& state : states) {
            axes.push_back(Axis::Regular(state.plan.lower, state.plan.parent, state.plan.count));
            cells *= static_cast<double>(state.plan.count);
        }
        if (cells > 9e18) {
            throw ReadError("the lattice of the blocks has more cells than can be numbered");
        }
        source.geometry = std::make_unique<SparseLattice>(
            std::move(rows), std::array<Axis, 3>{axes[0], axes[1], axes[2]});
        return;
    }
    std::array<std::optional<EdgeLattice>, 3> lattices;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const AxisPlan& plan = states[axis].plan;
        if (plan.kind != AxisPlan::Kind::Free) {
            const double step = plan.parent / plan.parts;
            lattices[axis] = EdgeLattice{plan.lower, step,
                                         std::min(1.01 * plan.tolerance * plan.parent, step / 2)};
        }
    }
    source.geometry = std::make_unique<ListedBoxes>(std::move(rows), lattices);
}

void TextLayout::DescribeSchemas(const States& states, Source& source) const {
    std::array<double, 6> box{};
    std::array<double, 6> parents_box{};
    SchemaFacts parents;
    SchemaFacts parts;
    const std::array<std::int32_t*, 3> parent_counts{&parents.dimensions.x, &parents.dimensions.y,
                                                     &parents.dimensions.z};
    const std::array<std::int32_t*, 3> part_counts{&parts.dimensions.x, &parts.dimensions.y,
                                                   &parts.dimensions.z};
    Triple least{};
    Triple most{};
    Triple part{};
    bool sub_blocked = false;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const AxisPlan& plan = states[axis].plan;
        const SpanSet& spans = states[axis].spans;
        const bool free = plan.kind == AxisPlan::Kind::Free;
        const double upper = plan.lower + static_cast<double>(plan.count) * plan.parent;
        const bool whole_lattice =
            !free && (spec_.count.has_value() || plan.kind == AxisPlan::Kind::Regular);
        box[axis] = free ? std::min(spans.Lower(), plan.lower) : plan.lower;
        box[axis + 3] = whole_lattice ? upper : spans.Upper();
        parents_box[axis] = box[axis];
        parents_box[axis + 3] = free ? box[axis + 3] : upper;
        least[axis] = free ? spans.LeastSize() : plan.parent;
        most[axis] = free ? spans.GreatestSize() : plan.parent;
        *parent_counts[axis] = free ? 1 : static_cast<std::int32_t>(plan.count);
        part[axis] =
            plan.kind == AxisPlan::Kind::Inside ? spans.LeastSize() : plan.parent / plan.parts;
        *part_counts[axis] = static_cast<std::int32_t>(std::min<std::int64_t>(
            plan.count * plan.parts, std::numeric_limits<std::int32_t>::max()));
        sub_blocked = sub_blocked || plan.kind == AxisPlan::Kind::Fractions ||
                      plan.kind == AxisPlan::Kind::Inside;
    }
    const bool has_free = std::any_of(states.begin(), states.end(), [](const AxisState& state) {
        return state.plan.kind == AxisPlan::Kind::Free;
    });
    source.extent = {box[0], box[1], box[2], box[3], box[4], box[5]};
    parents.extent = {parents_box[0], parents_box[1], parents_box[2],
                      parents_box[3], parents_box[4], parents_box[5]};
    parents.minimum_size = {least[0], least[1], least[2]};
    parents.maximum_size = {most[0], most[1], most[2]};
    source.schemas = {parents};
    if (sub_blocked && !has_free) {
        parts.original = spec_.minimum_size.has_value();
        parts.extent = parents.extent;
        parts.minimum_size = spec_.minimum_size ? geometry::Coord3D((*spec_.minimum_size)[0],
                                                                    (*spec_.minimum_size)[1],
                                                                    (*spec_.minimum_size)[2])
                                                : geometry::Coord3D(part[0], part[1], part[2]);
        parts.maximum_size = parents.maximum_size;
        source.schemas.push_back(parts);
    }
    if (!spec_.schemas.empty()) {
        source.schemas = spec_.schemas;
    }
}

}  // namespace zol::engine::block
