#include "engine/geometry/solid.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

#include "engine/geometry/clear_parts.h"
#include "engine/geometry/edge_sides.h"
#include "engine/geometry/edges.h"
#include "engine/geometry/orient_parts.h"
#include "engine/geometry/orientation.h"
#include "engine/geometry/triangle_meet.h"
#include "engine/geometry/volume.h"
#include "engine/geometry/weld.h"

namespace zol::engine::geometry {

namespace {

void turn(Triangle& triangle) {
    std::swap(triangle[1], triangle[2]);
}

/// Leaves out triangles with the same three corners as an earlier one; tells how many.
std::size_t leave_out_doubles(std::vector<Triangle>& triangles) {
    const auto sorted = [](Triangle triangle) {
        std::sort(triangle.begin(), triangle.end());
        return triangle;
    };
    std::vector<std::pair<Triangle, std::size_t>> keys(triangles.size());
    for (std::size_t t = 0; t < keys.size(); ++t) keys[t] = {sorted(triangles[t]), t};
    std::sort(keys.begin(), keys.end());
    std::vector<bool> is_double(triangles.size());
    for (std::size_t i = 1; i < keys.size(); ++i) {
        is_double[keys[i].second] = keys[i].first == keys[i - 1].first;
    }
    std::size_t kept = 0;
    for (std::size_t t = 0; t < triangles.size(); ++t) {
        if (!is_double[t]) triangles[kept++] = triangles[t];
    }
    const std::size_t left_out = triangles.size() - kept;
    triangles.resize(kept);
    return left_out;
}

std::size_t turn_parts(std::vector<Triangle>& triangles, const std::vector<bool>& turns) {
    std::size_t turned = 0;
    for (std::size_t t = 0; t < triangles.size(); ++t) {
        if (!turns[t]) continue;
        turn(triangles[t]);
        ++turned;
    }
    return turned;
}

/// An edge along which more triangles run from one point to the other than back.
struct Excess {
    std::int32_t from;
    std::int32_t to;
    int times;
};

std::vector<Excess> unbalanced_edges(std::size_t n_points, const std::vector<Triangle>& triangles) {
    std::vector<Excess> excesses;
    EdgeSides(n_points, triangles)
        .ForEachEdge([&](std::int32_t lower, std::span<const Side> sides) {
            int upwards = 0;
            for (const Side& side : sides) upwards += side.IsDownwards() ? -1 : 1;
            const std::int32_t upper = sides.front().Upper();
            if (upwards > 0) excesses.push_back({lower, upper, upwards});
            if (upwards < 0) excesses.push_back({upper, lower, -upwards});
        });
    return excesses;
}

std::string counted(std::size_t number, const char* rest) {
    return std::to_string(number) + (number == 1 ? " triangle " : " triangles ") + rest;
}

}  // namespace

Solid::Solid(std::vector<Point> points, std::vector<Triangle> triangles, double floor)
    : points_(std::move(points)), triangles_(std::move(triangles)) {
    if (std::vector<Triangle> welded = welded_triangles(Mesh()); !welded.empty()) {
        triangles_ = std::move(welded);
    }
    std::erase_if(triangles_, repeats_corner);
    CloseUp(points_.size());
    if (!closed_ && !triangles_.empty()) {
        remarks_.emplace_back("is open; it selects what lies vertically below it");
        TurnUpwards();
        ExtendDownTo(floor);
    } else {
        own_triangles_ = triangles_.size();
    }
    LeaveOutFlat();
}

/// Finds out whether the mesh is closed, and mends what keeps it from being a cycle of
/// triangles that face outwards.
void Solid::CloseUp(std::size_t n_points) {
    EdgeFacts facts = edge_facts(n_points, triangles_);
    if (!facts.IsClosed()) {
        std::vector<Triangle> single = triangles_;
        const std::size_t doubles = leave_out_doubles(single);
        if (doubles > 0) {
            remarks_.push_back(counted(doubles, "there more than once; taken once"));
            triangles_ = std::move(single);
            facts = edge_facts(n_points, triangles_);
        }
    }
    closed_ = facts.IsClosed();
    if (!facts.IsCycle() && facts.misdirected.number > 0) {
        if (const auto turns = turns_to_orient(triangles_)) {
            remarks_.push_back(
                counted(turn_parts(triangles_, *turns), "turned to face as their neighbours do"));
            facts = edge_facts(n_points, triangles_);
        }
    }
    if (!closed_) return;
    if (!facts.IsCycle()) {
        rule_ = InsideRule::Odd;
        remarks_.emplace_back("can't be oriented; inside is behind an odd number of sheets");
    } else if (signed_volume(Mesh(), triangles_) < 0.0) {
        std::for_each(triangles_.begin(), triangles_.end(), turn);
    }
}

/// Faces every triangle upwards: all of them together where none would then face down,
/// which keeps those that stand upright as they are joined; else each for itself.
void Solid::TurnUpwards() {
    const auto facing = [&](const Triangle& t) {
        return orient2d<0, 1>(points_[static_cast<std::size_t>(t[0])],
                              points_[static_cast<std::size_t>(t[1])],
                              points_[static_cast<std::size_t>(t[2])]);
    };
    bool up = false;
    bool down = false;
    for (const Triangle& triangle : triangles_) {
        up = up || facing(triangle) > 0;
        down = down || facing(triangle) < 0;
    }
    for (Triangle& triangle : triangles_) {
        if (down && (!up || facing(triangle) < 0)) turn(triangle);
    }
}

/// Makes a body of it whose walls hang under the edges along which more triangles run one
/// way than the other. Where upright triangles close the steps between level ones, those
/// need no walls of their own.
void Solid::ExtendDownTo(double floor) {
    for (const Point& point : points_) floor = std::min(floor, point[2]);
    floor -= 1.0 + 1e-6 * std::fabs(floor);
    const auto first_upright =
        std::stable_partition(triangles_.begin(), triangles_.end(), [&](const Triangle& t) {
            return orient2d<0, 1>(points_[static_cast<std::size_t>(t[0])],
                                  points_[static_cast<std::size_t>(t[1])],
                                  points_[static_cast<std::size_t>(t[2])]) != 0;
        });
    const auto n_facing = static_cast<std::size_t>(first_upright - triangles_.begin());
    std::vector<Excess> border = unbalanced_edges(points_.size(), triangles_);
    const bool is_joined = std::all_of(border.begin(), border.end(),
                                       [](const Excess& excess) { return excess.times == 1; });
    if (!is_joined) {
        triangles_.resize(n_facing);
        border = unbalanced_edges(points_.size(), triangles_);
    }
    own_triangles_ = triangles_.size();

    std::vector<std::int32_t> feet(points_.size(), -1);
    const auto foot_of = [&](std::int32_t point) {
        std::int32_t& foot = feet[static_cast<std::size_t>(point)];
        if (foot < 0) {
            foot = static_cast<std::int32_t>(points_.size());
            const Point head = points_[static_cast<std::size_t>(point)];
            points_.push_back({head[0], head[1], floor});
        }
        return foot;
    };
    for (std::size_t t = 0; t < n_facing; ++t) {
        const Triangle top = triangles_[t];
        triangles_.push_back({foot_of(top[0]), foot_of(top[2]), foot_of(top[1])});
    }
    for (const Excess& excess : border) {
        for (int i = 0; i < excess.times; ++i) {
            triangles_.push_back({excess.to, excess.from, foot_of(excess.from)});
            triangles_.push_back({excess.to, foot_of(excess.from), foot_of(excess.to)});
        }
    }
}

/// Triangles without area help to join a mesh, and bound nothing.
void Solid::LeaveOutFlat() {
    std::size_t kept = 0;
    std::size_t kept_own = 0;
    for (std::size_t t = 0; t < triangles_.size(); ++t) {
        const MeshView mesh = Mesh();
        if (is_degenerate(mesh.Corner(t, 0), mesh.Corner(t, 1), mesh.Corner(t, 2))) continue;
        triangles_[kept++] = triangles_[t];
        if (t < own_triangles_) kept_own = kept;
    }
    if (kept_own < own_triangles_) {
        remarks_.push_back(counted(own_triangles_ - kept_own, "without area left out"));
    }
    triangles_.resize(kept);
    own_triangles_ = kept_own;
}

const PointLocator& Solid::Locator() const {
    if (!locator_) {
        locator_ = std::make_unique<const PointLocator>(Mesh());
    }
    return *locator_;
}

const TriangleTree& Solid::Tree() const {
    if (!tree_) tree_ = std::make_unique<const TriangleTree>(Mesh());
    return *tree_;
}

int Solid::WindingAt(const Point& point) const {
    const PointLocator::Sheets sheets = Locator().SheetsOver(point);
    return rule_ == InsideRule::Odd ? static_cast<int>(sheets.crossings % 2) : sheets.winding;
}

bool Solid::Contains(const Point& point) const {
    return is_inside(rule_, WindingAt(point));
}

void Solid::MarkCrossings(std::vector<Weight>& weights) const {
    const TriangleTree::Groups clear(Tree(), clear_parts(Mesh()));
    Tree().AnyPair(clear, [&](std::uint32_t left, std::uint32_t right) {
        // Walls under a border are upright and of no volume themselves, but what they hang
        // through has the body on one side here and there.
        const bool has_own = left < own_triangles_ || right < own_triangles_;
        const bool is_known = weights[left] == kCrossing && weights[right] == kCrossing;
        if (has_own && !is_known &&
            meet_beyond_shared(points_, triangles_[left], triangles_[right])) {
            weights[left] = kCrossing;
            weights[right] = kCrossing;
        }
        return false;
    });
}

/// Asked at one point, which holds for all of a triangle that meets no other.
Solid::Weight Solid::WeightBySides(std::size_t triangle) const {
    const MeshView mesh = Mesh();
    const Point& a = mesh.Corner(triangle, 0);
    const Point& b = mesh.Corner(triangle, 1);
    const Point& c = mesh.Corner(triangle, 2);
    Point middle{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        middle[axis] = a[axis] + ((b[axis] - a[axis]) + (c[axis] - a[axis])) / 3.0;
    }
    // Rounding has put the middle on one of the sides; on the inner one there is a sheet
    // more over it.
    const bool is_outer = orient3d_moved(a, b, c, middle) > 0;
    const int here = WindingAt(middle);
    const bool outer = is_inside(rule_, is_outer ? here : here - 1);
    const bool inner = is_inside(rule_, is_outer ? here + 1 : here);
    return static_cast<Weight>((inner ? 1 : 0) - (outer ? 1 : 0));
}

const std::vector<Solid::Weight>& Solid::Weights() const {
    if (weights_) return *weights_;
    std::vector<Weight> weights(triangles_.size(), 1);
    MarkCrossings(weights);
    for (std::size_t t = 0; t < triangles_.size(); ++t) {
        if (t >= own_triangles_) {
            weights[t] = 1;
        } else if (weights[t] != kCrossing) {
            weights[t] = WeightBySides(t);
        }
    }
    const auto is_plain = [](Weight weight) { return weight == 1; };
    if (std::all_of(weights.begin(), weights.end(), is_plain)) weights.clear();
    weights_ = std::move(weights);
    return *weights_;
}

}  // namespace zol::engine::geometry
