#include "engine/geometry/selection.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

#include "engine/geometry/piece.h"
#include "engine/geometry/stack_volume.h"
#include "engine/geometry/vector.h"

namespace zol::engine::geometry {

namespace {

/// The two walls of a box across an axis, in place of a row of them.
class TwoWalls {
public:
    TwoWalls(double lower, double upper) : at_{lower, upper} {}
    static constexpr std::size_t Count() { return 2; }
    double operator[](std::size_t i) const { return at_[i]; }
    std::size_t Above(double value) const {
        return (value >= at_[0] ? 1U : 0U) + (value >= at_[1] ? 1U : 0U);
    }

private:
    std::array<double, 2> at_;
};

/// A box against a local origin, and the pieces of triangles in the prism over its floor.
class LocalBox {
public:
    explicit LocalBox(const Box& box)
        : origin_(Rounded(middle_of(box))),
          lower_(minus(box.lower, origin_)),
          upper_(minus(box.upper, origin_)) {}

    const Point& Origin() const { return origin_; }
    const Point& Lower() const { return lower_; }
    const Point& Upper() const { return upper_; }
    double Height() const { return upper_[2] - lower_[2]; }

    /// Calls `visit(piece, is_over)` for each piece of a triangle in the box, and over it.
    template <class Visit>
    void ForEachPiece(const MeshView& mesh, std::size_t t, Visit visit) const {
        const Piece triangle(minus(mesh.Corner(t, 0), origin_), minus(mesh.Corner(t, 1), origin_),
                             minus(mesh.Corner(t, 2), origin_));
        Across(triangle, 0, [&](const Piece& slab) {
            Across(slab, 1, [&](const Piece& prism) {
                cut_by_walls(prism, 2, TwoWalls(lower_[2], upper_[2]),
                             [&](std::size_t cell, const Piece& piece) { visit(piece, cell > 0); });
            });
        });
    }

    /// Whether a piece that is not over the box is more than a part of its floor.
    bool IsTouchedBy(const Piece& piece) const { return !lies_in(piece, 2, lower_[2]); }

private:
    static Point Rounded(const Point& point) {
        return {std::nearbyint(point[0]), std::nearbyint(point[1]), std::nearbyint(point[2])};
    }

    template <class Visit>
    void Across(const Piece& piece, std::size_t axis, Visit visit) const {
        cut_by_walls(piece, axis, TwoWalls(lower_[axis], upper_[axis]),
                     [&](std::size_t cell, const Piece& part) {
                         if (cell == 0 && !lies_in(part, axis, lower_[axis])) visit(part);
                     });
    }

    Point origin_;
    Point lower_;
    Point upper_;
};

bool touches(const Solid& solid, const Box& box, const LocalBox& local) {
    return solid.Tree().AnyInBox(box, [&](std::uint32_t t) {
        bool touched = false;
        if (solid.WeightOf(t) == 0) return touched;
        local.ForEachPiece(solid.Mesh(), t, [&](const Piece& piece, bool is_over) {
            touched = touched || (!is_over && local.IsTouchedBy(piece));
        });
        return touched;
    });
}

template <class Visit>
void for_each_triangle_over_floor(const Solid& solid, const Box& box, Visit visit) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    solid.Tree().AnyInBox({box.lower, {box.upper[0], box.upper[1], kInfinity}},
                          [&](std::uint32_t t) {
                              visit(t);
                              return false;
                          });
}

struct Share {
    double volume = 0.0;
    /// The volume is none, since in the box or over it the surface crosses itself.
    bool crossing = false;
};

/// Of a box that the solid touches.
Share share_of(const Solid& solid, const Box& box, const LocalBox& local) {
    Share share;
    double volume6 = 0.0;
    double area2_over = 0.0;
    for_each_triangle_over_floor(solid, box, [&](std::uint32_t t) {
        const Solid::Weight weight = solid.WeightOf(t);
        if (weight == 0) return;
        local.ForEachPiece(solid.Mesh(), t, [&](const Piece& piece, bool is_over) {
            const Piece::Sums sums = piece.Above(local.Lower()[2]);
            share.crossing = share.crossing || weight == Solid::kCrossing;
            (is_over ? area2_over : volume6) += weight * (is_over ? sums.area2 : sums.volume6);
        });
    });
    share.volume = volume6 / 6.0 + area2_over / 2.0 * local.Height();
    return share;
}

SheetsInBox sheets_in(const std::vector<const Solid*>& solids, const Box& box,
                      const LocalBox& local) {
    SheetsInBox sheets{solids, {}, {}, local.Origin(), local.Lower(), local.Upper()};
    for (std::uint32_t number = 0; number < solids.size(); ++number) {
        const Solid& solid = *solids[number];
        solid.Tree().AnyInBox(box, [&](std::uint32_t t) {
            local.ForEachPiece(solid.Mesh(), t, [&](const Piece& piece, bool is_over) {
                if (!is_over) sheets.Add(piece, number);
            });
            return false;
        });
    }
    return sheets;
}

// A box is halved so often at most, which leaves less than a millionth of it.
constexpr int kMostHalvings = 21;

/// The volume of the union in a box, which is halved as long as it has many sheets: the
/// parts that one solid takes whole, or none touches, then need no stack.
double union_in(const std::vector<const Solid*>& solids, const Box& box, int halvings) {
    const LocalBox local(box);
    std::vector<const Solid*> touching;
    for (const Solid* solid : solids) {
        if (touches(*solid, box, local)) {
            touching.push_back(solid);
        } else if (solid->Contains(middle_of(box))) {
            return volume_of(box);
        }
    }
    if (touching.empty()) return 0.0;
    const SheetsInBox sheets = sheets_in(touching, box, local);
    if (sheets.Count() <= kFewSheets || halvings == kMostHalvings) {
        return stack_volume(sheets);
    }
    // Walls stand as close in the lower half as in the upper.
    const std::size_t axes = sheets.walls.size() > sheets.sheets.size() ? 2 : 3;
    std::size_t longest = 0;
    for (std::size_t axis = 1; axis < axes; ++axis) {
        if (box.upper[axis] - box.lower[axis] > box.upper[longest] - box.lower[longest]) {
            longest = axis;
        }
    }
    Box lower = box;
    Box upper = box;
    lower.upper[longest] = upper.lower[longest] = middle_of(box)[longest];
    return union_in(touching, lower, halvings + 1) + union_in(touching, upper, halvings + 1);
}

/// Where one solid alone, which does not cross itself here or above, is partly in the box, its
/// triangles add up to the volume.
double volume_in(const std::vector<const Solid*>& solids, const Box& box) {
    const double whole = volume_of(box);
    const LocalBox local(box);
    std::vector<const Solid*> partly;
    double volume = 0.0;
    bool crossing = false;
    for (const Solid* solid : solids) {
        if (!touches(*solid, box, local)) {
            if (solid->Contains(middle_of(box))) return whole;
            continue;
        }
        const Share share = share_of(*solid, box, local);
        if (!share.crossing) {
            const double part = without_slivers(share.volume, whole);
            if (part == whole) return whole;
            if (part == 0.0) continue;
            volume = part;
        }
        crossing = crossing || share.crossing;
        partly.push_back(solid);
    }
    if (partly.empty()) return 0.0;
    return partly.size() == 1 && !crossing ? volume : union_in(partly, box, 0);
}

}  // namespace

bool Selection::Contains(const Point& point) const {
    return std::any_of(solids_.begin(), solids_.end(),
                       [&](const auto& solid) { return solid->Contains(point); });
}

double Selection::VolumeIn(const Box& box) const {
    std::vector<const Solid*> solids;
    for (const auto& solid : solids_) solids.push_back(solid.get());
    return without_slivers(volume_in(solids, box), volume_of(box));
}

Box Selection::ExtentIn(const Box& box) const {
    const LocalBox local(box);
    Box extent{box.upper, box.lower};
    const auto stretch_to = [&](const Point& point) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const double at = std::clamp(point[axis], box.lower[axis], box.upper[axis]);
            extent.lower[axis] = std::min(extent.lower[axis], at);
            extent.upper[axis] = std::max(extent.upper[axis], at);
        }
    };
    const Point middle = middle_of(box);
    for (const auto& solid : solids_) {
        if (!touches(*solid, box, local)) {
            if (solid->Contains(middle)) return box;
            continue;
        }
        solid->Tree().AnyInBox(box, [&](std::uint32_t t) {
            if (solid->WeightOf(t) == 0) return false;
            local.ForEachPiece(solid->Mesh(), t, [&](const Piece& piece, bool is_over) {
                if (is_over || !local.IsTouchedBy(piece)) return;
                for (const Point& corner : piece) stretch_to(plus(corner, 1.0, local.Origin()));
            });
            return false;
        });
        for (unsigned number = 0; number < 8; ++number) {
            Point corner{};
            Point just_inside{};
            for (std::size_t axis = 0; axis < 3; ++axis) {
                corner[axis] = (number >> axis & 1U) != 0 ? box.upper[axis] : box.lower[axis];
                // What the box has at its corner, which a face in its wall must not decide.
                just_inside[axis] = corner[axis] + kSliver * (middle[axis] - corner[axis]);
            }
            if (solid->Contains(just_inside)) stretch_to(corner);
        }
    }
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (!(extent.lower[axis] <= extent.upper[axis])) return box;
    }
    return extent;
}

}  // namespace zol::engine::geometry
