// What a match selects of a model's space.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "engine/block/source.h"
#include "engine/geometry/selection.h"
#include "platform/zolGeometryExport.h"

namespace zol::engine::block {

struct MatchRequest {
    /// Names of mesh files, in world coordinates.
    std::vector<std::string> triangulations;
    /// In model coordinates.
    std::optional<zol::geometry::Extent> extent;
    bool exact = false;
};

inline geometry::Box box_of(const zol::geometry::Extent& extent) {
    return {{extent.x0, extent.y0, extent.z0}, {extent.x1, extent.y1, extent.z1}};
}

inline zol::geometry::Extent extent_of(const geometry::Box& box) {
    return {box.lower[0], box.lower[1], box.lower[2], box.upper[0], box.upper[1], box.upper[2]};
}

/// The union of the triangulations, cut by the extent, in model coordinates. Without
/// triangulations the extent alone selects, and without either everything does.
class MatchRegion {
public:
    /// Reads the triangulations. What of them can't be read selects nothing and is told on
    /// the diagnostics channel, as is an extent that holds nothing.
    MatchRegion(const MatchRequest& request, const Source& source);

    bool IsExact() const { return exact_; }
    /// No block can match.
    bool IsEmpty() const { return !has_limits_ || (has_meshes_ && selection_.Solids().empty()); }
    /// False where the extent alone selects.
    bool HasMeshes() const { return has_meshes_; }
    const geometry::Selection& Meshes() const { return selection_; }

    /// The extent; infinite where none was set.
    const geometry::Box& Limits() const { return limits_; }
    /// The part of a block that counts: in an exact match what lies in the extent, else all
    /// of it. Upper ends may lie below lower ones.
    geometry::Box Counted(const geometry::Box& block) const;
    /// Whether the extent holds a point, its upper faces left out as the tie rule has it.
    bool IsWithinLimits(const geometry::Point& point) const;

private:
    void SetLimits(const zol::geometry::Extent& extent, const std::string& model);
    void AddMesh(const std::string& name, const Source& source);

    bool exact_;
    bool has_meshes_;
    bool has_limits_ = true;
    geometry::Box limits_;
    geometry::Selection selection_;
};

}  // namespace zol::engine::block
