// What all programs that measure meshes share: the mesh as a benchmark reads it, untimed,
// and the points that are asked about.
#pragma once

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "bench/clock.h"

namespace bench {

using Point = std::array<double, 3>;
using Triangle = std::array<std::int32_t, 3>;

struct Mesh {
    std::vector<Point> points;
    std::vector<Triangle> triangles;

    const Point& Corner(std::size_t triangle, std::size_t corner) const {
        return points[static_cast<std::size_t>(triangles[triangle][corner])];
    }
};

/// Reads what mesh_make writes as OBJ: lines of v and of f, nothing else.
inline Mesh read_plain_obj(const char* name) {
    std::ifstream file(name, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    if (text.empty()) fail(std::string("can't read ") + name);
    Mesh mesh;
    const char* at = text.data();
    const char* const end = at + text.size();
    const auto three = [&](auto& numbers) {
        for (auto& number : numbers) {
            const auto [behind, error] = std::from_chars(at + 1, end, number);
            if (error != std::errc()) fail("not as mesh_make writes it");
            at = behind;
        }
        ++at;
    };
    while (at < end) {
        if (*at++ == 'v') {
            three(mesh.points.emplace_back());
        } else {
            three(mesh.triangles.emplace_back());
            for (std::int32_t& corner : mesh.triangles.back()) --corner;
        }
    }
    return mesh;
}

/// Anywhere in the box of the mesh.
inline std::vector<Point> points_in_box(const Mesh& mesh, std::size_t count) {
    Point lower = mesh.points[0];
    Point upper = lower;
    for (const Point& point : mesh.points) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            lower[axis] = std::fmin(lower[axis], point[axis]);
            upper[axis] = std::fmax(upper[axis], point[axis]);
        }
    }
    std::mt19937_64 random(20);
    std::vector<Point> points(count);
    for (Point& point : points) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            // Not by a distribution of the library, which may differ between libraries.
            const double part = static_cast<double>(random() >> 11U) * 0x1p-53;
            point[axis] = lower[axis] + part * (upper[axis] - lower[axis]);
        }
    }
    return points;
}

struct NearPoint {
    Point point;
    bool is_inside;
};

/// A micrometre off the middle of a triangle, to either side, the triangles in random
/// order. What rounding moves such a point is a thousandth of that, so its side is known;
/// the next triangle is far off in comparison.
inline std::vector<NearPoint> points_near_surface(const Mesh& mesh, std::size_t count) {
    std::mt19937_64 random(21);
    std::vector<NearPoint> points(count);
    for (std::size_t i = 0; i < count; ++i) {
        const auto triangle = static_cast<std::size_t>(random() % mesh.triangles.size());
        const Point& a = mesh.Corner(triangle, 0);
        const Point& b = mesh.Corner(triangle, 1);
        const Point& c = mesh.Corner(triangle, 2);
        Point ab{};
        Point ac{};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            ab[axis] = b[axis] - a[axis];
            ac[axis] = c[axis] - a[axis];
        }
        const Point normal = {ab[1] * ac[2] - ab[2] * ac[1], ab[2] * ac[0] - ab[0] * ac[2],
                              ab[0] * ac[1] - ab[1] * ac[0]};
        const double length = std::hypot(normal[0], normal[1], normal[2]);
        points[i].is_inside = i % 2 == 0;
        const double off = (points[i].is_inside ? -1e-6 : 1e-6) / length;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            points[i].point[axis] = a[axis] + (ab[axis] + ac[axis]) / 3 + off * normal[axis];
        }
    }
    return points;
}

/// What a reader or a library says of points: how many are inside, and a sum over which
/// ones, by which two of them are held against each other.
struct Answers {
    std::size_t inside = 0;
    std::uint64_t which = 0;
    /// Of points of known side, those on the other.
    std::size_t wrong = 0;
    double seconds = 0.0;
};

template <class IsInside>
Answers ask(const std::vector<Point>& points, IsInside is_inside) {
    Answers answers;
    answers.seconds = timed([&] {
        std::uint64_t number = 1;
        for (const Point& point : points) {
            number = number * 6364136223846793005U + 1442695040888963407U;
            if (!is_inside(point)) continue;
            ++answers.inside;
            answers.which += number >> 16U;
        }
    });
    return answers;
}

template <class IsInside>
Answers ask(const std::vector<NearPoint>& points, IsInside is_inside) {
    Answers answers;
    answers.seconds = timed([&] {
        for (const NearPoint& near : points) {
            answers.wrong += is_inside(near.point) != near.is_inside ? 1U : 0U;
        }
    });
    return answers;
}

constexpr std::size_t kQuestions = 1'000'000;

inline void print_inside(double first, const Answers& anywhere, const Answers& near) {
    const double each = 1e6 / static_cast<double>(kQuestions);
    std::printf(
        "{\"first_s\": %.4f, \"anywhere_us\": %.4f, \"inside\": %zu, \"which\": \"%016llx\", "
        "\"near_us\": %.4f, \"wrong\": %zu, \"peak_mb\": %.1f}\n",
        first, anywhere.seconds * each, anywhere.inside,
        static_cast<unsigned long long>(anywhere.which), near.seconds * each, near.wrong,
        peak_megabytes());
}

inline void print_fact(double seconds, double answer) {
    std::printf("{\"seconds\": %.5f, \"answer\": %.17g}\n", seconds, answer);
}

/// Six times the volume in extended precision, against a corner of the mesh: what rounding
/// takes from it is less than a millionth of the last place of a double.
inline double volume_of(const Mesh& mesh) {
    const Point& origin = mesh.points[0];
    long double sum = 0;
    long double lost = 0;
    for (std::size_t t = 0; t < mesh.triangles.size(); ++t) {
        std::array<std::array<long double, 3>, 3> at{};
        for (std::size_t i = 0; i < 3; ++i) {
            for (std::size_t axis = 0; axis < 3; ++axis) {
                at[i][axis] = static_cast<long double>(mesh.Corner(t, i)[axis]) - origin[axis];
            }
        }
        const auto& [a, b, c] = at;
        const long double term = a[0] * (b[1] * c[2] - b[2] * c[1]) +
                                 a[1] * (b[2] * c[0] - b[0] * c[2]) +
                                 a[2] * (b[0] * c[1] - b[1] * c[0]);
        const long double added = term - lost;
        const long double next = sum + added;
        lost = (next - sum) - added;
        sum = next;
    }
    return static_cast<double>(sum / 6);
}

inline void print_volume(double seconds, double volume, const Mesh& mesh) {
    const double exact = volume_of(mesh);
    std::printf("{\"seconds\": %.5f, \"volume\": %.17g, \"error\": %.3g}\n", seconds, volume,
                std::fabs(volume - exact) / exact);
}

}  // namespace bench
