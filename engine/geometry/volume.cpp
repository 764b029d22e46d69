#include "engine/geometry/volume.h"

#include <algorithm>
#include <cmath>

#include "engine/geometry/local_origin.h"
#include "engine/geometry/vector.h"

namespace zol::engine::geometry {

namespace {

constexpr std::size_t kChunk = 4096;

/// A running sum that keeps what rounding takes from it.
class CompensatedSum {
public:
    void Add(double term) {
        const double sum = sum_ + term;
        lost_ += std::fabs(sum_) >= std::fabs(term) ? (sum_ - sum) + term : (term - sum) + sum_;
        sum_ = sum;
    }
    double Total() const { return sum_ + lost_; }

private:
    double sum_ = 0.0;
    double lost_ = 0.0;
};

/// Sums `term_of` over the triangles, chunk by chunk.
template <class TermOf>
double summed(std::span<const Triangle> triangles, TermOf term_of) {
    CompensatedSum total;
    for (std::size_t start = 0; start < triangles.size(); start += kChunk) {
        CompensatedSum chunk;
        for (const Triangle& triangle :
             triangles.subspan(start, std::min(kChunk, triangles.size() - start))) {
            chunk.Add(term_of(triangle));
        }
        total.Add(chunk.Total());
    }
    return total.Total();
}

}  // namespace

double signed_volume(const MeshView& mesh, std::span<const Triangle> triangles) {
    const Point origin = local_origin(mesh.points);
    const auto corner = [&](std::int32_t index) {
        return minus(mesh.points[static_cast<std::size_t>(index)], origin);
    };
    return summed(triangles,
                  [&](const Triangle& triangle) {
                      return dot(corner(triangle[0]),
                                 cross(corner(triangle[1]), corner(triangle[2])));
                  }) /
           6.0;
}

double surface_area(const MeshView& mesh) {
    const auto corner = [&](std::int32_t index) -> const Point& {
        return mesh.points[static_cast<std::size_t>(index)];
    };
    return summed(mesh.triangles,
                  [&](const Triangle& triangle) {
                      const Point& a = corner(triangle[0]);
                      const Point normal =
                          cross(minus(corner(triangle[1]), a), minus(corner(triangle[2]), a));
                      return std::hypot(normal[0], normal[1], normal[2]);
                  }) /
           2.0;
}

}  // namespace zol::engine::geometry
