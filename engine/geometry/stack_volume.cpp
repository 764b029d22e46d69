#include "engine/geometry/stack_volume.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

#include "engine/geometry/vector.h"

namespace zol::engine::geometry {

namespace {

constexpr std::size_t kMostSheets = 128;

struct PlanBox {
    double x0;
    double y0;
    double x1;
    double y1;

    double Area() const { return (x1 - x0) * (y1 - y0); }
};

bool covers(const Sheet& sheet, double x, double y) {
    const Piece& piece = sheet.piece;
    const Point* from = &piece[piece.Size() - 1];
    for (const Point& to : piece) {
        const double side =
            (to[0] - (*from)[0]) * (y - (*from)[1]) - (to[1] - (*from)[1]) * (x - (*from)[0]);
        if (sheet.facing > 0 ? side < 0.0 : side > 0.0) return false;
        from = &to;
    }
    return true;
}

class StackIntegral {
public:
    explicit StackIntegral(const SheetsInBox& box)
        : box_(box), floor_(box.lower[2]), ceiling_(box.upper[2]) {}

    double Volume() {
        const PlanBox plan{box_.lower[0], box_.lower[1], box_.upper[0], box_.upper[1]};
        if (box_.Count() <= kMostSheets) return ByTrapezoids(box_.sheets, plan);
        return plan.Area() * LengthAt((plan.x0 + plan.x1) / 2, (plan.y0 + plan.y1) / 2);
    }

private:
    double LengthAt(double x, double y) {
        stack_.clear();
        for (const Sheet& sheet : box_.sheets) {
            if (covers(sheet, x, y)) {
                stack_.push_back({sheet.HeightAt(x, y), sheet.solid, sheet.facing});
            }
        }
        std::stable_sort(stack_.begin(), stack_.end(),
                         [](const Level& a, const Level& b) { return a.height > b.height; });
        AskAtTheCeiling(x, y);
        double length = 0.0;
        double top = ceiling_;
        int solids_inside = 0;
        for (std::size_t i = 0; i < windings_.size(); ++i) solids_inside += IsInside(i) ? 1 : 0;
        for (const Level& level : stack_) {
            if (solids_inside > 0) length += top - level.height;
            top = level.height;
            solids_inside -= IsInside(level.solid) ? 1 : 0;
            windings_[level.solid] += level.facing;
            solids_inside += IsInside(level.solid) ? 1 : 0;
        }
        if (solids_inside > 0) length += top - floor_;
        return length;
    }

    bool IsInside(std::size_t solid) const {
        return is_inside(box_.solids[solid]->Rule(), windings_[solid]);
    }

    /// The windings at the ceiling, from those in the middle of the widest interval: there a
    /// point is on no sheet, however it is rounded.
    void AskAtTheCeiling(double x, double y) {
        double widest = -1.0;
        double middle = 0.0;
        std::size_t above = 0;
        double top = ceiling_;
        for (std::size_t i = 0; i <= stack_.size(); ++i) {
            const double bottom = i < stack_.size() ? stack_[i].height : floor_;
            if (top - bottom > widest) {
                widest = top - bottom;
                middle = bottom + widest / 2;
                above = i;
            }
            top = bottom;
        }
        const Point point = plus(box_.origin, 1.0, {x, y, middle});
        windings_.clear();
        for (const Solid* solid : box_.solids) windings_.push_back(solid->WindingAt(point));
        for (std::size_t i = 0; i < above; ++i) windings_[stack_[i].solid] -= stack_[i].facing;
    }

    void AddEdges(const Sheet& sheet) {
        const Point* from = &sheet.piece[sheet.piece.Size() - 1];
        for (const Point& to : sheet.piece) {
            AddLine(*from, to);
            from = &to;
        }
    }

    void AddLine(const Point& from, const Point& to) {
        AddLine(from[0] < to[0] ? PlanLine{from[0], from[1], to[0], to[1]}
                                : PlanLine{to[0], to[1], from[0], from[1]});
    }

    void AddLine(const PlanLine& line) {
        stops_.push_back(line.x0);
        stops_.push_back(line.x1);
        if (line.x0 < line.x1) lines_.push_back(line);
    }

    /// Whether a sheet has corners on both sides of the plane that `gap` is the height over;
    /// what is as close as rounding does not count, such as the edge of a neighbour.
    template <class Gap>
    static bool IsSplit(const Sheet& sheet, double noise, Gap gap) {
        double least = 0.0;
        double greatest = 0.0;
        for (const Point& corner : sheet.piece) {
            const double here = gap(corner);
            least = std::min(least, here);
            greatest = std::max(greatest, here);
        }
        return least < -noise && greatest > noise;
    }

    /// The line in which the planes of two sheets cross, as far as it runs in the first.
    void AddCrossing(const Sheet& a, const Sheet& b) {
        if (a.greatest < b.least || b.greatest < a.least) return;
        for (std::size_t axis = 0; axis < 2; ++axis) {
            const auto [from_a, to_a] = a.piece.Range(axis);
            const auto [from_b, to_b] = b.piece.Range(axis);
            if (to_a <= from_b || to_b <= from_a) return;
        }
        const double base = a.base - b.base;
        const double slope_x = a.slope_x - b.slope_x;
        const double slope_y = a.slope_y - b.slope_y;
        const auto gap = [&](const Point& p) { return base + slope_x * p[0] + slope_y * p[1]; };
        const double noise = 1e-12 * (ceiling_ - floor_);
        if (!IsSplit(a, noise, gap) || !IsSplit(b, noise, gap)) return;
        std::array<Point, 2> ends{};
        std::size_t found = 0;
        const Point* from = &a.piece[a.piece.Size() - 1];
        for (const Point& to : a.piece) {
            const double start = gap(*from);
            const double end = gap(to);
            if ((start < 0.0) != (end < 0.0) && found < 2) {
                ends[found++] = plus(*from, start / (start - end), minus(to, *from));
            }
            from = &to;
        }
        if (found == 2) AddLine(ends[0], ends[1]);
    }

    void AddMeetingsOfLines() {
        const std::size_t edges = lines_.size();
        for (std::size_t i = 0; i < edges; ++i) {
            for (std::size_t j = i + 1; j < edges; ++j) {
                const double x0 = std::max(lines_[i].x0, lines_[j].x0);
                const double x1 = std::min(lines_[i].x1, lines_[j].x1);
                if (!(x0 < x1)) continue;
                const double before = lines_[i].At(x0) - lines_[j].At(x0);
                const double behind = lines_[i].At(x1) - lines_[j].At(x1);
                if ((before < 0.0 && behind > 0.0) || (before > 0.0 && behind < 0.0)) {
                    stops_.push_back(x0 + before / (before - behind) * (x1 - x0));
                }
            }
        }
    }

    double ByTrapezoids(const std::vector<Sheet>& sheets, const PlanBox& box) {
        lines_.clear();
        stops_.clear();
        AddLine({box.x0, box.y0, box.x1, box.y0});
        AddLine({box.x0, box.y1, box.x1, box.y1});
        for (const Sheet& sheet : sheets) AddEdges(sheet);
        for (const PlanLine& wall : box_.walls) AddLine(wall);
        for (std::size_t i = 0; i < sheets.size(); ++i) {
            for (std::size_t j = i + 1; j < sheets.size(); ++j) AddCrossing(sheets[i], sheets[j]);
        }
        AddMeetingsOfLines();
        std::sort(stops_.begin(), stops_.end());
        stops_.erase(std::unique(stops_.begin(), stops_.end()), stops_.end());
        double volume = 0.0;
        for (std::size_t i = 1; i < stops_.size(); ++i) {
            const double x0 = std::max(stops_[i - 1], box.x0);
            const double x1 = std::min(stops_[i], box.x1);
            if (x0 < x1) volume += OverSlab(x0, x1);
        }
        return volume;
    }

    /// Between two vertical lines, where no two lines of the plan cross.
    double OverSlab(double x0, double x1) {
        across_.clear();
        for (const PlanLine& line : lines_) {
            if (line.x0 <= x0 && line.x1 >= x1) across_.push_back({line.At(x0), line.At(x1)});
        }
        std::sort(across_.begin(), across_.end(), [](const Across& a, const Across& b) {
            return a.left + a.right < b.left + b.right;
        });
        double volume = 0.0;
        for (std::size_t i = 1; i < across_.size(); ++i) {
            const Across& lower = across_[i - 1];
            const Across& upper = across_[i];
            // Rounding may cross lines that meet at a stop.
            const double left = std::max(upper.left - lower.left, 0.0);
            const double right = std::max(upper.right - lower.right, 0.0);
            const double area = (left + right) / 2 * (x1 - x0);
            if (!(area > 0.0)) continue;
            const double part = (left + 2 * right) / (3 * (left + right));
            const double low = lower.left + part * (lower.right - lower.left);
            const double high = upper.left + part * (upper.right - upper.left);
            volume += area * LengthAt(x0 + part * (x1 - x0), (low + high) / 2);
        }
        return volume;
    }

    struct Level {
        double height;
        std::uint32_t solid;
        std::int32_t facing;
    };
    /// Where a line runs between two vertical ones.
    struct Across {
        double left;
        double right;
    };

    const SheetsInBox& box_;
    double floor_;
    double ceiling_;
    std::vector<PlanLine> lines_;
    std::vector<double> stops_;
    std::vector<Across> across_;
    std::vector<Level> stack_;
    std::vector<int> windings_;
};

/// The line of an upright piece in plan.
PlanLine line_of(const Piece& piece) {
    // Where it runs along y, the ends are told apart by that.
    const auto goes_before = [](const Point& a, const Point& b) {
        return a[0] < b[0] || (a[0] == b[0] && a[1] < b[1]);
    };
    const auto [first, last] = std::minmax_element(piece.begin(), piece.end(), goes_before);
    return {(*first)[0], (*first)[1], (*last)[0], (*last)[1]};
}

/// Makes `line` longer by one that lies on it and meets it; false when `other` does not.
bool join(PlanLine& line, const PlanLine& other, double noise) {
    const double x = line.x1 - line.x0;
    const double y = line.y1 - line.y0;
    const double length = std::hypot(x, y);
    if (!(length > 0.0)) return false;
    const auto across = [&](double at_x, double at_y) {
        return std::fabs((at_x - line.x0) * y - (at_y - line.y0) * x) / length;
    };
    const auto along = [&](double at_x, double at_y) {
        return ((at_x - line.x0) * x + (at_y - line.y0) * y) / length;
    };
    if (across(other.x0, other.y0) > noise || across(other.x1, other.y1) > noise) return false;
    const double from = along(other.x0, other.y0);
    const double to = along(other.x1, other.y1);
    if (std::max(from, to) < -noise || std::min(from, to) > length + noise) return false;
    // Both run from left to right, but for those along y, of which noise may turn one round.
    const PlanLine old = line;
    if (std::min(from, to) < 0.0) {
        std::tie(line.x0, line.y0) =
            from < to ? std::pair(other.x0, other.y0) : std::pair(other.x1, other.y1);
    }
    if (std::max(from, to) > length) {
        std::tie(line.x1, line.y1) =
            from < to ? std::pair(other.x1, other.y1) : std::pair(other.x0, other.y0);
    }
    if (line.x0 > line.x1) line = old;
    return true;
}

/// Summed over all corners: one thin corner would spoil the plane.
Vector normal_of(const Piece& piece) {
    const Point& a = piece[0];
    Vector normal{};
    for (std::size_t i = 2; i < piece.Size(); ++i) {
        const Vector turn = cross(minus(piece[i - 1], a), minus(piece[i], a));
        for (std::size_t axis = 0; axis < 3; ++axis) normal[axis] += turn[axis];
    }
    return normal;
}

Sheet sheet_of(const Piece& piece, const Vector& normal, std::uint32_t solid) {
    Sheet sheet{};
    sheet.piece = piece;
    sheet.solid = solid;
    sheet.facing = normal[2] > 0.0 ? 1 : -1;
    sheet.slope_x = -normal[0] / normal[2];
    sheet.slope_y = -normal[1] / normal[2];
    sheet.base = piece[0][2] - sheet.slope_x * piece[0][0] - sheet.slope_y * piece[0][1];
    std::tie(sheet.least, sheet.greatest) = piece.Range(2);
    return sheet;
}

}  // namespace

void SheetsInBox::Add(const Piece& piece, std::uint32_t solid) {
    const Vector normal = normal_of(piece);
    // What cutting makes of an upright triangle is so but for rounding.
    constexpr double kUpright = 1e-11;
    if (std::fabs(normal[2]) > kUpright * (std::fabs(normal[0]) + std::fabs(normal[1]))) {
        sheets.push_back(sheet_of(piece, normal, solid));
        return;
    }
    const double noise = 1e-12 * (upper[0] - lower[0] + upper[1] - lower[1]);
    const PlanLine line = line_of(piece);
    const bool is_joined = std::any_of(walls.begin(), walls.end(),
                                       [&](PlanLine& wall) { return join(wall, line, noise); });
    if (!is_joined) walls.push_back(line);
}

double stack_volume(const SheetsInBox& box) {
    return StackIntegral(box).Volume();
}

}  // namespace zol::engine::geometry
