// Parts a face of many corners into triangles.
//
// A convex face becomes a fan. Any other is looked at along its normal by Newell's method
// (I. E. Sutherland et al., "A characterization of ten hidden-surface algorithms", 1974),
// that of the plane that fits it best, and its ears are cut off one by one (G. H. Meisters,
// "Polygons have ears", 1975). What could lie in an ear is asked of a tree, so a face of a
// million corners is a matter of seconds, not of days.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "engine/formats/mesh/blocker_tree.h"
#include "engine/formats/mesh/mesh_data.h"

namespace zol::engine {

class PolygonParter {
public:
    enum class Outcome {
        Parted,
        /// The outline crosses itself or goes round more than once: there are triangles, but
        /// none can cover it rightly.
        Crossing,
        /// Given up, for it would take too long; nothing is added.
        TooInvolved
    };

    /// Adds the `corners.size()` - 2 triangles of a face to the list. They turn as the face
    /// does. `corners` are at least three indices of `points`, and may hold a point twice, as
    /// where a slit leads to a hole.
    Outcome Part(std::span<const std::int32_t> corners, const GrowingArray<MeshPoint>& points,
                 GrowingArray<MeshTriangle>& triangles);

private:
    using Corner = std::int32_t;

    bool Flatten(const GrowingArray<MeshPoint>& points);
    bool IsConvex() const;
    Outcome PartByEars();
    void Fan();
    void FreeLarge();
    bool HasCrossingEdges() const;
    int TurnsOfRest() const;
    void PrepareEars();
    int TurnAt(Corner corner) const;
    bool TurnsBack(Corner corner) const;
    // Which ears are cut: those of no area that turn back on themselves; these and such as stand
    // free of all others; these and such as are touched, or have no area.
    enum class Ears { Spikes, Proper, Flat };
    bool IsEar(Corner tip, Ears kind);
    bool Blocks(Corner corner, const std::array<Corner, 3>& ear, Ears kind) const;
    void CutEars(Ears kind);
    void Cut(Corner tip);
    void Settle(Corner corner);
    void Queue(Corner corner);
    void FanRest();
    void Add(Corner a, Corner b, Corner c);

    // Of the call of Part.
    std::span<const std::int32_t> corners_;
    GrowingArray<MeshTriangle>* triangles_ = nullptr;
    std::vector<PlanePoint> flat_;
    std::vector<Corner> before_;
    std::vector<Corner> behind_;
    // Corners to look at, in turn, from queue_begin_ round the end of the list; each is in it
    // once at most.
    std::vector<Corner> queue_;
    std::size_t queue_begin_ = 0;
    std::size_t queued_ = 0;
    std::vector<bool> is_queued_;
    std::vector<bool> is_cut_;
    std::vector<bool> is_blocker_;
    BlockerTree blockers_;
    std::size_t left_ = 0;
    std::int64_t effort_left_ = 0;
};

}  // namespace zol::engine
