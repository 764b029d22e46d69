// From the columns and the sidecar of a table to the geometry of its model.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/block/block_rows.h"
#include "engine/block/header_roles.h"
#include "engine/block/source.h"
#include "engine/block/text_sidecar.h"
#include "engine/formats/table_survey.h"

namespace zol::engine::block {

/// Works in three steps: choose the columns that place blocks, look at their numbers
/// while the table is surveyed, then lay out the model.
class TextLayout {
public:
    /// `roles` by column. Throws ReadError when they and the sidecar place no blocks,
    /// which says what to add.
    TextLayout(const std::vector<ColumnRole>& roles, const ModelSpec& spec);

    /// Columns whose numbers the survey hands to a watcher of MakeWatcher.
    const std::vector<std::size_t>& Watched() const { return watched_; }
    std::unique_ptr<RowWatcher> MakeWatcher() const;

    /// Fills placement, geometry, extent and schemas of `source` for the surveyed
    /// table. Throws ReadError when its blocks make no model, which says why.
    void LayOut(const std::vector<std::unique_ptr<RowWatcher>>& watchers,
                const std::shared_ptr<TextColumns>& columns, Source& source);

private:
    // What is known of one axis once the survey is done. Coordinates are those of the
    // table until ToModel has been applied.
    struct AxisState {
        SpanSet spans;
        AxisPlan plan;
        // Numbers are world coordinates that the model's origin shifts.
        bool in_world = false;
    };
    using States = std::array<AxisState, 3>;

    std::size_t ColumnOf(const std::vector<ColumnRole>& roles, Role role, int axis) const;
    void ChooseAxes(const std::vector<ColumnRole>& roles);
    void ChooseConstants(const std::vector<ColumnRole>& roles);
    void CheckChoice() const;
    bool IsListed() const;
    RowPlacing Placing() const;
    bool TurnsRows() const;
    Placement PlacementAt(const geometry::Coord3D& origin) const;

    void TakeConstants(const std::vector<std::unique_ptr<RowWatcher>>& watchers);
    void SettleCells();
    void SettleSizes(States& states);
    bool LooksLikeIndexes(const States& states) const;
    void Rescale(std::size_t axis, SpanSet& spans, double scale, double offset, double size);
    void PlanAxes(States& states, Source& source);
    void ReportFreeAxes(const States& states, const std::string& file) const;
    void CheckInside(const States& states) const;
    std::array<double, 3> LowerCorner() const;
    void BuildGeometry(const States& states, const std::shared_ptr<TextColumns>& columns,
                       Source& source) const;
    void BuildStatedLattice(const std::shared_ptr<TextColumns>& columns, Source& source) const;
    void DescribeSchemas(const States& states, Source& source) const;

    ModelSpec spec_;
    AxisReadings axes_;
    std::vector<std::size_t> watched_;
    // Places in watched_ of origin x, y, z and count x, y, z; kNone where no column is.
    std::array<std::size_t, 6> constants_{};
};

}  // namespace zol::engine::block
