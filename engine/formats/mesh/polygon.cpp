#include "engine/formats/mesh/polygon.h"

#include <cmath>
#include <limits>
#include <utility>

namespace zol::engine {

namespace {

// Steps in the tree that a corner may cost, before a face is given up. A plain outline needs
// less than a hundred.
constexpr std::int64_t kEffortPerCorner = 250;

MeshPoint difference(const MeshPoint& a, const MeshPoint& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

// Twice the area of the face, along its normal.
MeshPoint newell_normal(std::span<const std::int32_t> corners,
                        const GrowingArray<MeshPoint>& points) {
    const auto point = [&](std::size_t i) -> const MeshPoint& {
        return points[static_cast<std::size_t>(corners[i])];
    };
    MeshPoint normal{};
    MeshPoint a = difference(point(corners.size() - 1), point(0));
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const MeshPoint b = difference(point(i), point(0));
        normal[0] += a[1] * b[2] - a[2] * b[1];
        normal[1] += a[2] * b[0] - a[0] * b[2];
        normal[2] += a[0] * b[1] - a[1] * b[0];
        a = b;
    }
    return normal;
}

std::size_t greatest_axis(const MeshPoint& vector) {
    std::size_t greatest = 0;
    for (std::size_t axis = 1; axis < 3; ++axis) {
        if (std::fabs(vector[axis]) > std::fabs(vector[greatest])) greatest = axis;
    }
    return greatest;
}

// Less than 0 where the way from a by b to c, which are in line, turns back.
double onwards(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c) {
    return (b[0] - a[0]) * (c[0] - b[0]) + (b[1] - a[1]) * (c[1] - b[1]);
}

}  // namespace

// Moves the corners along the normal onto the plane of the two axes that it runs along least,
// where the face turns left: unlike a turned plane that keeps whole coordinates of upright and
// level faces as they are. False for a face without a normal.
bool PolygonParter::Flatten(std::span<const std::int32_t> corners,
                            const GrowingArray<MeshPoint>& points) {
    const MeshPoint normal = newell_normal(corners, points);
    const std::size_t axis = greatest_axis(normal);
    if (!(std::fabs(normal[axis]) > 0) || !std::isfinite(normal[axis])) return false;
    std::size_t u = (axis + 1) % 3;
    std::size_t v = (axis + 2) % 3;
    if (normal[axis] < 0) std::swap(u, v);
    const double along_u = normal[u] / normal[axis];
    const double along_v = normal[v] / normal[axis];
    const MeshPoint& origin = points[static_cast<std::size_t>(corners[0])];
    flat_.clear();
    for (const std::int32_t corner : corners) {
        const MeshPoint offset = difference(points[static_cast<std::size_t>(corner)], origin);
        flat_.push_back({offset[u] - along_u * offset[axis], offset[v] - along_v * offset[axis]});
    }
    return true;
}

// No turn to the right, and none back on itself.
bool PolygonParter::IsConvex() const {
    PlanePoint a = flat_[flat_.size() - 2];
    PlanePoint b = flat_.back();
    for (const PlanePoint& c : flat_) {
        const int turn = turn_of(a, b, c);
        if (turn < 0 || (turn == 0 && onwards(a, b, c) < 0)) return false;
        a = b;
        b = c;
    }
    return true;
}

int PolygonParter::TurnAt(Corner corner) const {
    const auto at = static_cast<std::size_t>(corner);
    return turn_of(flat_[static_cast<std::size_t>(before_[at])], flat_[at],
                   flat_[static_cast<std::size_t>(behind_[at])]);
}

bool PolygonParter::TurnsBack(Corner corner) const {
    const auto at = static_cast<std::size_t>(corner);
    return onwards(flat_[static_cast<std::size_t>(before_[at])], flat_[at],
                   flat_[static_cast<std::size_t>(behind_[at])]) <= 0;
}

void PolygonParter::PrepareEars() {
    const std::size_t count = flat_.size();
    before_.resize(count);
    behind_.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
        before_[i] = static_cast<Corner>(i == 0 ? count - 1 : i - 1);
        behind_[i] = static_cast<Corner>(i + 1 == count ? 0 : i + 1);
    }
    is_cut_.assign(count, false);
    is_queued_.assign(count, false);
    is_blocker_.assign(count, false);
    std::vector<Corner> blockers;
    for (std::size_t i = 0; i < count; ++i) {
        // In a polygon that does not cross itself a corner that turns left is in no ear unless
        // another corner is that does not.
        if (TurnAt(static_cast<Corner>(i)) > 0) continue;
        is_blocker_[i] = true;
        blockers.push_back(static_cast<Corner>(i));
    }
    blockers_.Build(flat_, std::move(blockers));
    parts_.clear();
    queue_.clear();
    left_ = count;
    effort_left_ = kEffortPerCorner * static_cast<std::int64_t>(count);
}

// Whether a corner that may be in the way is in the ear, given by the corner before the tip,
// the tip, and the one behind.
bool PolygonParter::Blocks(Corner corner, const std::array<Corner, 3>& ear, Ears kind) const {
    if (corner == ear[0] || corner == ear[1] || corner == ear[2]) return false;
    const auto point = [&](Corner at) -> const PlanePoint& {
        return flat_[static_cast<std::size_t>(at)];
    };
    std::array<int, 3> sides{};
    for (std::size_t i = 0; i < 3; ++i) {
        sides[i] = turn_of(point(ear[i]), point(ear[(i + 1) % 3]), point(corner));
        if (sides[i] < 0) return false;
    }
    if (sides[0] > 0 && sides[1] > 0) {
        // Inside, or on the cut.
        return sides[2] > 0 || kind == Ears::Proper;
    }
    // On the border: the outline touches itself there, and is in the way when it goes inside.
    const auto goes_inside = [&](Corner to) {
        for (std::size_t i = 0; i < 3; ++i) {
            if (sides[i] == 0 && turn_of(point(ear[i]), point(ear[(i + 1) % 3]), point(to)) <= 0) {
                return false;
            }
        }
        return true;
    };
    return goes_inside(before_[static_cast<std::size_t>(corner)]) ||
           goes_inside(behind_[static_cast<std::size_t>(corner)]);
}

bool PolygonParter::IsEar(Corner tip, Ears kind) {
    const auto at = static_cast<std::size_t>(tip);
    const int turn = TurnAt(tip);
    --effort_left_;
    if (turn == 0) return kind == Ears::Flat || TurnsBack(tip);
    if (turn < 0 || kind == Ears::Spikes) return false;
    const std::array<Corner, 3> ear = {before_[at], tip, behind_[at]};
    const std::array<PlanePoint, 3> triangle = {flat_[static_cast<std::size_t>(ear[0])], flat_[at],
                                                flat_[static_cast<std::size_t>(ear[2])]};
    return !blockers_.AnyIn(triangle, effort_left_,
                            [&](Corner corner) { return Blocks(corner, ear, kind); });
}

void PolygonParter::Queue(Corner corner) {
    const auto at = static_cast<std::size_t>(corner);
    if (is_queued_[at] || is_cut_[at]) return;
    is_queued_[at] = true;
    queue_.push_back(corner);
}

// What a corner is after one beside it has gone.
void PolygonParter::Settle(Corner corner) {
    const auto at = static_cast<std::size_t>(corner);
    if (is_blocker_[at] && TurnAt(corner) > 0) {
        is_blocker_[at] = false;
        blockers_.Remove(corner);
    }
    Queue(corner);
}

void PolygonParter::Cut(Corner tip) {
    const auto at = static_cast<std::size_t>(tip);
    const Corner before = before_[at];
    const Corner behind = behind_[at];
    parts_.push_back({before, tip, behind});
    behind_[static_cast<std::size_t>(before)] = behind;
    before_[static_cast<std::size_t>(behind)] = before;
    is_cut_[at] = true;
    --left_;
    if (is_blocker_[at]) {
        is_blocker_[at] = false;
        blockers_.Remove(tip);
    }
    Settle(before);
    Settle(behind);
}

// Cutting an ear makes no others but beside it, so each corner is asked a few times only.
void PolygonParter::CutEars(Ears kind) {
    for (std::size_t i = 0; i < flat_.size(); ++i) Queue(static_cast<Corner>(i));
    for (std::size_t next = 0; next < queue_.size() && left_ > 3 && effort_left_ > 0; ++next) {
        const Corner corner = queue_[next];
        is_queued_[static_cast<std::size_t>(corner)] = false;
        if (!is_cut_[static_cast<std::size_t>(corner)] && IsEar(corner, kind)) Cut(corner);
    }
    queue_.clear();
    is_queued_.assign(flat_.size(), false);
}

void PolygonParter::FanRest() {
    std::size_t first = 0;
    while (is_cut_[first]) ++first;
    Corner at = behind_[first];
    for (; left_ > 2; --left_) {
        const Corner next = behind_[static_cast<std::size_t>(at)];
        parts_.push_back({static_cast<Corner>(first), at, next});
        at = next;
    }
}

PolygonParter::Outcome PolygonParter::Part(std::span<const std::int32_t> corners,
                                           const GrowingArray<MeshPoint>& points,
                                           GrowingArray<MeshTriangle>& triangles) {
    if (corners.size() == 3 || !Flatten(corners, points) || IsConvex()) {
        for (std::size_t i = 2; i < corners.size(); ++i) {
            triangles.Add({corners[0], corners[i - 1], corners[i]});
        }
        return Outcome::Parted;
    }
    PrepareEars();
    // Spikes have no area to either side, and would lend theirs to an ear beside them.
    CutEars(Ears::Spikes);
    // A polygon that touches itself may have ears left that touch something, and others again
    // when these are cut.
    for (std::size_t last = 0; left_ > 3 && left_ != last;) {
        last = left_;
        CutEars(Ears::Proper);
        CutEars(Ears::Flat);
    }
    if (effort_left_ <= 0) return Outcome::TooInvolved;
    const bool is_crossing = left_ > 3;
    FanRest();
    for (const auto& [a, b, c] : parts_) {
        triangles.Add({corners[static_cast<std::size_t>(a)], corners[static_cast<std::size_t>(b)],
                       corners[static_cast<std::size_t>(c)]});
    }
    return is_crossing ? Outcome::Crossing : Outcome::Parted;
}

}  // namespace zol::engine
