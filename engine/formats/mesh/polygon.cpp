#include "engine/formats/mesh/polygon.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zol::engine {

namespace {

// Steps in the tree that a corner may cost, before a face is given up. A plain outline needs
// less than a hundred.
constexpr std::int64_t kEffortPerCorner = 250;

MeshPoint difference(const MeshPoint& a, const MeshPoint& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

struct Normal {
    // As long as twice the area of the face.
    MeshPoint vector{};
    // What its terms add up to without their signs.
    double terms = 0;
};

Normal newell_normal(std::span<const std::int32_t> corners, const GrowingArray<MeshPoint>& points) {
    const auto point = [&](std::size_t i) -> const MeshPoint& {
        return points[static_cast<std::size_t>(corners[i])];
    };
    Normal normal;
    MeshPoint a = difference(point(corners.size() - 1), point(0));
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const MeshPoint b = difference(point(i), point(0));
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const std::size_t u = (axis + 1) % 3;
            const std::size_t v = (axis + 2) % 3;
            const double left = a[u] * b[v];
            const double right = a[v] * b[u];
            normal.vector[axis] += left - right;
            normal.terms += std::fabs(left) + std::fabs(right);
        }
        a = b;
    }
    return normal;
}

// Whether the corners lie on a line, or on one place.
bool are_in_line(std::span<const std::int32_t> corners, const GrowingArray<MeshPoint>& points) {
    constexpr double kRounding = 1e-9;
    const auto offset = [&](std::int32_t corner) {
        return difference(points[static_cast<std::size_t>(corner)],
                          points[static_cast<std::size_t>(corners[0])]);
    };
    MeshPoint far{};
    double length = 0;
    for (const std::int32_t corner : corners) {
        const MeshPoint to = offset(corner);
        const double square = to[0] * to[0] + to[1] * to[1] + to[2] * to[2];
        if (square <= length) continue;
        length = square;
        far = to;
    }
    return std::all_of(corners.begin(), corners.end(), [&](std::int32_t corner) {
        const MeshPoint to = offset(corner);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const std::size_t u = (axis + 1) % 3;
            const std::size_t v = (axis + 2) % 3;
            if (std::fabs(far[u] * to[v] - far[v] * to[u]) > kRounding * length) return false;
        }
        return true;
    });
}

std::size_t greatest_axis(const MeshPoint& vector) {
    std::size_t greatest = 0;
    for (std::size_t axis = 1; axis < 3; ++axis) {
        if (std::fabs(vector[axis]) > std::fabs(vector[greatest])) greatest = axis;
    }
    return greatest;
}

// Less than 0 where the way from a by b to c, which are in line, turns back; 0 where two of
// them are one place.
double onwards(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c) {
    return (b[0] - a[0]) * (c[0] - b[0]) + (b[1] - a[1]) * (c[1] - b[1]);
}

bool goes_up(const PlanePoint& a, const PlanePoint& b) {
    return b[1] > a[1] || (b[1] == a[1] && b[0] > a[0]);
}

// 1 where the way from a by b to c turns left through the direction of the first axis, -1 where
// it turns right through it. `turn` is that of the corner, which does not turn back. Around an
// outline these add up to how often it goes round.
int rounds_at(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c, int turn) {
    const bool is_up = goes_up(b, c);
    if (goes_up(a, b) == is_up) return 0;
    if (turn == 0 && c[0] <= b[0]) return 0;
    if (turn != 0 && (turn > 0) != is_up) return 0;
    return is_up ? 1 : -1;
}

}  // namespace

// Moves the corners along the normal onto the plane of the two axes that it runs along least,
// where the face turns left: unlike a turned plane that keeps whole coordinates of upright and
// level faces as they are. False for a face without a normal, or one that is but rounding.
bool PolygonParter::Flatten(const GrowingArray<MeshPoint>& points) {
    constexpr double kRounding = 1e-12;
    const auto& [normal, terms] = newell_normal(corners_, points);
    const std::size_t axis = greatest_axis(normal);
    if (!(std::fabs(normal[axis]) > kRounding * terms)) return false;
    std::size_t u = (axis + 1) % 3;
    std::size_t v = (axis + 2) % 3;
    if (normal[axis] < 0) std::swap(u, v);
    const double along_u = normal[u] / normal[axis];
    const double along_v = normal[v] / normal[axis];
    const MeshPoint& origin = points[static_cast<std::size_t>(corners_[0])];
    flat_.clear();
    flat_.reserve(corners_.size());
    for (const std::int32_t corner : corners_) {
        const MeshPoint offset = difference(points[static_cast<std::size_t>(corner)], origin);
        flat_.push_back({offset[u] - along_u * offset[axis], offset[v] - along_v * offset[axis]});
    }
    return true;
}

// No turn to the right, none back on itself, no place twice in a row, and once round: a star of
// five tips drawn without lifting the pen turns left at each of them.
bool PolygonParter::IsConvex() const {
    PlanePoint a = flat_[flat_.size() - 2];
    PlanePoint b = flat_.back();
    int rounds = 0;
    for (const PlanePoint& c : flat_) {
        const int turn = turn_of(a, b, c);
        if (turn < 0 || (turn == 0 && onwards(a, b, c) <= 0)) return false;
        rounds += rounds_at(a, b, c, turn);
        a = b;
        b = c;
    }
    return rounds == 1;
}

// Whether two edges cross, each with both ends clearly on either side of the other. All pairs
// are looked at, so only when there are few.
bool PolygonParter::HasCrossingEdges() const {
    constexpr std::size_t kFew = 64;
    const std::size_t count = flat_.size();
    if (count > kFew) return false;
    const auto parts = [](const PlanePoint& a, const PlanePoint& b, const PlanePoint& c,
                          const PlanePoint& d) { return turn_of(a, b, c) * turn_of(a, b, d) < 0; };
    for (std::size_t i = 0; i + 2 < count; ++i) {
        const PlanePoint& a = flat_[i];
        const PlanePoint& b = flat_[i + 1];
        for (std::size_t k = i + 2; k < count; ++k) {
            const PlanePoint& c = flat_[k];
            const PlanePoint& d = flat_[(k + 1) % count];
            if (parts(a, b, c, d) && parts(c, d, a, b)) return true;
        }
    }
    return false;
}

// How often the outline goes round when its spikes are cut; 1 for any that does not cross
// itself.
int PolygonParter::TurnsOfRest() const {
    std::size_t first = 0;
    while (is_cut_[first]) ++first;
    int rounds = 0;
    std::size_t at = first;
    do {
        const auto before = static_cast<std::size_t>(before_[at]);
        const auto behind = static_cast<std::size_t>(behind_[at]);
        rounds +=
            rounds_at(flat_[before], flat_[at], flat_[behind], TurnAt(static_cast<Corner>(at)));
        at = behind;
    } while (at != first);
    return rounds;
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
    queue_.resize(count);
    queue_begin_ = 0;
    queued_ = 0;
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
    queue_[(queue_begin_ + queued_) % queue_.size()] = corner;
    ++queued_;
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
    Add(before, tip, behind);
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
    while (queued_ > 0 && left_ > 3 && effort_left_ > 0) {
        const Corner corner = queue_[queue_begin_];
        queue_begin_ = (queue_begin_ + 1) % queue_.size();
        --queued_;
        is_queued_[static_cast<std::size_t>(corner)] = false;
        if (!is_cut_[static_cast<std::size_t>(corner)] && IsEar(corner, kind)) Cut(corner);
    }
    queued_ = 0;
    is_queued_.assign(flat_.size(), false);
}

void PolygonParter::FanRest() {
    std::size_t first = 0;
    while (is_cut_[first]) ++first;
    Corner at = behind_[first];
    for (; left_ > 2; --left_) {
        const Corner next = behind_[static_cast<std::size_t>(at)];
        Add(static_cast<Corner>(first), at, next);
        at = next;
    }
}

void PolygonParter::Add(Corner a, Corner b, Corner c) {
    triangles_->Add({corners_[static_cast<std::size_t>(a)], corners_[static_cast<std::size_t>(b)],
                     corners_[static_cast<std::size_t>(c)]});
}

void PolygonParter::Fan() {
    for (std::size_t i = 2; i < corners_.size(); ++i) {
        triangles_->Add({corners_[0], corners_[i - 1], corners_[i]});
    }
}

PolygonParter::Outcome PolygonParter::PartByEars() {
    const std::size_t first_triangle = triangles_->Size();
    PrepareEars();
    // Spikes have no area to either side, and would lend theirs to an ear beside them.
    CutEars(Ears::Spikes);
    const bool goes_round_once = left_ == 3 || TurnsOfRest() == 1;
    // A polygon that touches itself may have ears left that touch something, and others again
    // when these are cut.
    for (std::size_t last = 0; left_ > 3 && left_ != last;) {
        last = left_;
        CutEars(Ears::Proper);
        CutEars(Ears::Flat);
    }
    if (effort_left_ <= 0) {
        triangles_->SetSize(first_triangle);
        return Outcome::TooInvolved;
    }
    const bool is_crossing = left_ > 3 || !goes_round_once || HasCrossingEdges();
    FanRest();
    return is_crossing ? Outcome::Crossing : Outcome::Parted;
}

// What one face of very many corners took is not kept for the next of a few.
void PolygonParter::FreeLarge() {
    constexpr std::size_t kKept = 65536;
    if (corners_.size() > kKept) *this = PolygonParter();
}

PolygonParter::Outcome PolygonParter::Part(std::span<const std::int32_t> corners,
                                           const GrowingArray<MeshPoint>& points,
                                           GrowingArray<MeshTriangle>& triangles) {
    corners_ = corners;
    triangles_ = &triangles;
    Outcome outcome = Outcome::Parted;
    const bool is_triangle = corners.size() == 3;
    const bool is_flat = is_triangle || Flatten(points);
    if (is_triangle || !is_flat || IsConvex()) {
        Fan();
        if (!is_flat && !are_in_line(corners, points)) outcome = Outcome::Crossing;
    } else {
        outcome = PartByEars();
    }
    FreeLarge();
    return outcome;
}

}  // namespace zol::engine
