// Makes the solids that meshes are measured on, at the coordinates of a survey, as OBJ and
// as binary STL.
//
//   mesh_make FILE.obj|FILE.stl pit|ore TRIANGLES
//
// pit: a terrain of uneven triangles with a stepped pit in it, closed by sides and by a
// bottom of coarser triangles. ore: a wavy slab of 2 to 5 m, dipping 75 degrees, askew to
// every axis. Coordinates are whole millimetres; an STL has floats, which could not tell
// them apart there, and is written from a corner of the area instead.
#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <numbers>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Place = std::array<double, 3>;
/// Millimetres from the corner of the area.
using Point = std::array<std::int64_t, 3>;
using Triangle = std::array<std::int32_t, 3>;

constexpr std::array<std::int64_t, 3> kCorner = {600'000'000, 7'000'000'000, 0};

struct Solid {
    std::vector<Point> points;
    std::vector<Triangle> triangles;

    std::int32_t Add(const Place& place) {
        Point point{};
        for (std::size_t axis = 0; axis < 3; ++axis) point[axis] = std::llround(place[axis] * 1e3);
        points.push_back(point);
        return static_cast<std::int32_t>(points.size() - 1);
    }
};

/// From 0 to 1, the same for the same numbers on every machine.
double noise(int i, int j, unsigned kind) {
    std::uint64_t bits = static_cast<std::uint64_t>(i) * 0x9E3779B97F4A7C15U +
                         static_cast<std::uint64_t>(j) * 0xC2B2AE3D27D4EB4FU + kind;
    bits = (bits ^ bits >> 31U) * 0xBF58476D1CE4E5B9U;
    bits = (bits ^ bits >> 29U) * 0x94D049BB133111EBU;
    return static_cast<double>(bits >> 11U) * 0x1p-53;
}

constexpr double kSide = 2000.0;
constexpr double kBottom = 900.0;

double pit_height(double x, double y) {
    const double terrain = 1540 + 35 * std::sin(x / 310) * std::cos(y / 270) + 6 * std::sin(x / 41);
    const double dx = x - kSide / 2;
    const double dy = y - kSide / 2;
    const double turn = std::atan2(dy, dx);
    const double rim = 750 * (1 + 0.14 * std::sin(3 * turn) + 0.05 * std::cos(7 * turn));
    // Benches: 8 m of berm, then a face of 20 m over the next 14 m, down to a flat floor.
    const double inwards = std::clamp(rim - std::hypot(dx, dy), 0.0, 500.0);
    const double benches = std::floor(inwards / 22);
    const double face = std::clamp((inwards - benches * 22 - 8) / 14, 0.0, 1.0);
    return std::min(terrain, 1600 - 20 * (benches + face));
}

/// Ten cells of the terrain stand over one of the bottom.
constexpr int kCoarser = 10;

Solid pit(double triangles) {
    Solid solid;
    const int coarse = std::max(1, static_cast<int>(std::lround(std::sqrt(triangles / 202))));
    const int fine = coarse * kCoarser;
    const double step = kSide / fine;
    for (int j = 0; j <= fine; ++j) {
        for (int i = 0; i <= fine; ++i) {
            const bool at_side_x = i == 0 || i == fine;
            const bool at_side_y = j == 0 || j == fine;
            const double x = step * (i + (at_side_x ? 0 : noise(i, j, 1) * 0.5 - 0.25));
            const double y = step * (j + (at_side_y ? 0 : noise(i, j, 2) * 0.5 - 0.25));
            solid.Add({x, y, pit_height(x, y)});
        }
    }
    const auto top = [=](int i, int j) { return j * (fine + 1) + i; };
    for (int j = 0; j <= coarse; ++j) {
        for (int i = 0; i <= coarse; ++i) {
            solid.Add({step * kCoarser * i, step * kCoarser * j, kBottom});
        }
    }
    const auto bottom = [=](int i, int j) {
        return (fine + 1) * (fine + 1) + j * (coarse + 1) + i;
    };

    const auto cell = [&](int a, int b, int c, int d, bool other_way) {
        if (other_way) {
            solid.triangles.push_back({a, b, d});
            solid.triangles.push_back({b, c, d});
        } else {
            solid.triangles.push_back({a, b, c});
            solid.triangles.push_back({a, c, d});
        }
    };
    for (int j = 0; j < fine; ++j) {
        for (int i = 0; i < fine; ++i) {
            cell(top(i, j), top(i + 1, j), top(i + 1, j + 1), top(i, j + 1), noise(i, j, 3) < 0.5);
        }
    }
    for (int j = 0; j < coarse; ++j) {
        for (int i = 0; i < coarse; ++i) {
            cell(bottom(i, j), bottom(i, j + 1), bottom(i + 1, j + 1), bottom(i + 1, j), false);
        }
    }
    // A side as seen from outside, from its left end to its right one.
    const auto side = [&](auto top_at, auto bottom_at) {
        for (int panel = 0; panel < coarse; ++panel) {
            const int left = bottom_at(panel);
            const int right = bottom_at(panel + 1);
            const int first = panel * kCoarser;
            for (int k = 0; k < kCoarser; ++k) {
                const int below = k < kCoarser / 2 ? left : right;
                solid.triangles.push_back({below, top_at(first + k + 1), top_at(first + k)});
            }
            solid.triangles.push_back({left, right, top_at(first + kCoarser / 2)});
        }
    };
    side([&](int k) { return top(k, 0); }, [&](int k) { return bottom(k, 0); });
    side([&](int k) { return top(fine, k); }, [&](int k) { return bottom(coarse, k); });
    side([&](int k) { return top(fine - k, fine); },
         [&](int k) { return bottom(coarse - k, coarse); });
    side([&](int k) { return top(0, fine - k); }, [&](int k) { return bottom(0, coarse - k); });
    return solid;
}

Solid ore(double triangles) {
    Solid solid;
    const int down = std::max(2, static_cast<int>(std::lround(std::sqrt(triangles / 8))));
    const int along = 2 * down;
    const double step = 600.0 / down;
    constexpr double kDip = 75 * std::numbers::pi / 180;
    constexpr double kAzimuth = 30 * std::numbers::pi / 180;
    const Place strike = {std::sin(kAzimuth), std::cos(kAzimuth), 0};
    const Place across = {std::cos(kAzimuth), -std::sin(kAzimuth), 0};
    const Place dip = {across[0] * std::cos(kDip), across[1] * std::cos(kDip), -std::sin(kDip)};
    const Place normal = {across[0] * std::sin(kDip), across[1] * std::sin(kDip), std::cos(kDip)};
    for (const double wall : {-0.5, 0.5}) {
        for (int j = 0; j <= down; ++j) {
            for (int i = 0; i <= along; ++i) {
                const double u = step * (i + noise(i, j, 4) * 0.5);
                const double v = step * (j + noise(i, j, 5) * 0.5);
                const double thickness = 3.5 + 1.5 * std::sin(u / 37) * std::cos(v / 29);
                const double off =
                    14 * std::sin(u / 140) + 5 * std::sin(v / 60 + u / 90) + wall * thickness;
                Place place = {500, 300, 1400};
                for (std::size_t axis = 0; axis < 3; ++axis) {
                    place[axis] += u * strike[axis] + v * dip[axis] + off * normal[axis];
                }
                solid.Add(place);
            }
        }
    }
    const auto at = [=](int wall, int i, int j) {
        return (wall * (down + 1) + j) * (along + 1) + i;
    };
    const auto quad = [&](int a, int b, int c, int d) {
        solid.triangles.push_back({a, b, c});
        solid.triangles.push_back({a, c, d});
    };
    // Strike, then down dip, turns against the normal: wall 0 looks along that.
    for (int j = 0; j < down; ++j) {
        for (int i = 0; i < along; ++i) {
            quad(at(0, i, j), at(0, i + 1, j), at(0, i + 1, j + 1), at(0, i, j + 1));
            quad(at(1, i, j), at(1, i, j + 1), at(1, i + 1, j + 1), at(1, i + 1, j));
        }
    }
    for (int i = 0; i < along; ++i) {
        quad(at(0, i + 1, 0), at(0, i, 0), at(1, i, 0), at(1, i + 1, 0));
        quad(at(0, i, down), at(0, i + 1, down), at(1, i + 1, down), at(1, i, down));
    }
    for (int j = 0; j < down; ++j) {
        quad(at(0, 0, j), at(0, 0, j + 1), at(1, 0, j + 1), at(1, 0, j));
        quad(at(0, along, j + 1), at(0, along, j), at(1, along, j), at(1, along, j + 1));
    }
    return solid;
}

void write_obj(const Solid& solid, std::ofstream& file) {
    std::array<char, 128> line{};
    for (const Point& point : solid.points) {
        std::array<long long, 3> at{};
        for (std::size_t axis = 0; axis < 3; ++axis) at[axis] = point[axis] + kCorner[axis];
        const int length = std::snprintf(
            line.data(), line.size(), "v %lld.%03lld %lld.%03lld %lld.%03lld\n", at[0] / 1000,
            at[0] % 1000, at[1] / 1000, at[1] % 1000, at[2] / 1000, at[2] % 1000);
        file.write(line.data(), length);
    }
    for (const Triangle& t : solid.triangles) {
        const int length =
            std::snprintf(line.data(), line.size(), "f %d %d %d\n", t[0] + 1, t[1] + 1, t[2] + 1);
        file.write(line.data(), length);
    }
}

/// Little-endian, like the machines that this is for.
static_assert(std::endian::native == std::endian::little);

void write_stl(const Solid& solid, std::ofstream& file) {
    file << std::string(80, ' ');
    const auto put = [&](const auto& value) {
        file.write(reinterpret_cast<const char*>(&value), sizeof value);
    };
    put(static_cast<std::uint32_t>(solid.triangles.size()));
    for (const Triangle& t : solid.triangles) {
        // A normal of zeros asks the reader to compute it.
        for (int i = 0; i < 3; ++i) put(0.0F);
        for (const std::int32_t corner : t) {
            for (const std::int64_t coordinate : solid.points[static_cast<std::size_t>(corner)]) {
                put(static_cast<float>(static_cast<double>(coordinate) / 1e3));
            }
        }
        put(std::uint16_t{0});
    }
}

}  // namespace

int main(int argc, char** argv) {
    const std::string name = argc == 4 ? argv[1] : "";
    const std::string_view kind = argc == 4 ? argv[2] : "";
    const double triangles = argc == 4 ? std::atof(argv[3]) : 0;
    const bool is_obj = name.find(".obj") != std::string::npos;
    if ((kind != "pit" && kind != "ore") || !(triangles >= 1000 && triangles <= 1e8) ||
        (!is_obj && name.find(".stl") == std::string::npos)) {
        std::fprintf(stderr, "usage: mesh_make FILE.obj|FILE.stl pit|ore TRIANGLES\n");
        return 2;
    }
    const Solid solid = kind == "pit" ? pit(triangles) : ore(triangles);
    std::ofstream file(name, std::ios::binary);
    is_obj ? write_obj(solid, file) : write_stl(solid, file);
    file.close();
    if (!file) {
        std::fprintf(stderr, "mesh_make: can't write %s\n", name.c_str());
        return 1;
    }
    return 0;
}
