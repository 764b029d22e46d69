#include "engine/geometry/stack_volume.h"

#include <algorithm>
#include <tuple>

#include "engine/geometry/vector.h"

namespace zol::engine::geometry {

namespace {

constexpr std::size_t kMostSheets = 64;

/// A line in plan, from left to right.
struct Line {
    double x0;
    double y0;
    double x1;
    double y1;

    double At(double x) const {
        if (x <= x0) return y0;
        if (x >= x1) return y1;
        return y0 + (x - x0) / (x1 - x0) * (y1 - y0);
    }
};

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
    StackIntegral(const std::vector<InsideRule>& rules, double floor, double ceiling)
        : rules_(rules), floor_(floor), ceiling_(ceiling) {}

    double Over(const std::vector<Sheet>& sheets, const PlanBox& box) {
        if (sheets.size() <= kMostSheets) return ByTrapezoids(sheets, box);
        return box.Area() * LengthAt(sheets, (box.x0 + box.x1) / 2, (box.y0 + box.y1) / 2);
    }

private:
    double LengthAt(const std::vector<Sheet>& sheets, double x, double y) {
        stack_.clear();
        for (const Sheet& sheet : sheets) {
            if (covers(sheet, x, y)) {
                stack_.push_back({sheet.HeightAt(x, y), sheet.solid, sheet.facing});
            }
        }
        std::stable_sort(stack_.begin(), stack_.end(),
                         [](const Level& a, const Level& b) { return a.height > b.height; });
        windings_.assign(rules_.size(), 0);
        double length = 0.0;
        double top = ceiling_;
        int solids_inside = 0;
        for (const Level& level : stack_) {
            if (solids_inside > 0) length += top - level.height;
            top = level.height;
            int& winding = windings_[level.solid];
            const InsideRule rule = rules_[level.solid];
            solids_inside -= is_inside(rule, winding) ? 1 : 0;
            winding += level.facing;
            solids_inside += is_inside(rule, winding) ? 1 : 0;
        }
        if (solids_inside > 0) length += top - floor_;
        return length;
    }

    void AddEdges(const Sheet& sheet) {
        const Point* from = &sheet.piece[sheet.piece.Size() - 1];
        for (const Point& to : sheet.piece) {
            AddLine(*from, to);
            from = &to;
        }
    }

    void AddLine(const Point& from, const Point& to) {
        const Line line = from[0] < to[0] ? Line{from[0], from[1], to[0], to[1]}
                                          : Line{to[0], to[1], from[0], from[1]};
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
        for (const Sheet& sheet : sheets) AddEdges(sheet);
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
            if (x0 < x1) volume += OverSlab(sheets, x0, x1);
        }
        return volume;
    }

    /// Between two vertical lines, where no two lines of the plan cross.
    double OverSlab(const std::vector<Sheet>& sheets, double x0, double x1) {
        across_.clear();
        for (const Line& line : lines_) {
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
            volume += area * LengthAt(sheets, x0 + part * (x1 - x0), (low + high) / 2);
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

    const std::vector<InsideRule>& rules_;
    double floor_;
    double ceiling_;
    std::vector<Line> lines_;
    std::vector<double> stops_;
    std::vector<Across> across_;
    std::vector<Level> stack_;
    std::vector<int> windings_;
};

}  // namespace

std::optional<Sheet> make_sheet(const Piece& piece, std::uint32_t solid,
                                std::optional<double> above) {
    // Summed over all corners: one thin corner would spoil the plane.
    const Point& a = piece[0];
    Vector normal{};
    for (std::size_t i = 2; i < piece.Size(); ++i) {
        const Vector turn = cross(minus(piece[i - 1], a), minus(piece[i], a));
        for (std::size_t axis = 0; axis < 3; ++axis) normal[axis] += turn[axis];
    }
    if (normal[2] == 0.0) return std::nullopt;
    Sheet sheet;
    sheet.piece = piece;
    sheet.solid = solid;
    sheet.facing = normal[2] > 0.0 ? 1 : -1;
    if (above) {
        sheet.slope_x = sheet.slope_y = 0.0;
        sheet.base = sheet.least = sheet.greatest = *above;
        return sheet;
    }
    sheet.slope_x = -normal[0] / normal[2];
    sheet.slope_y = -normal[1] / normal[2];
    sheet.base = a[2] - sheet.slope_x * a[0] - sheet.slope_y * a[1];
    std::tie(sheet.least, sheet.greatest) = piece.Range(2);
    return sheet;
}

double stack_volume(const std::vector<Sheet>& sheets, const std::vector<InsideRule>& rules,
                    const Point& lower, const Point& upper) {
    StackIntegral integral(rules, lower[2], upper[2]);
    return integral.Over(sheets, {lower[0], lower[1], upper[0], upper[1]});
}

}  // namespace zol::engine::geometry
