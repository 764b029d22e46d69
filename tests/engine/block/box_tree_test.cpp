#include "engine/block/box_tree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <random>
#include <utility>
#include <vector>

namespace zol::engine::block {
namespace {

using geometry::Coord3D;
using geometry::Extent;

/// The rule, block by block.
std::int64_t find_one_by_one(const std::vector<Extent>& boxes, const Coord3D& p) {
    std::int64_t best = -1;
    int best_faces = 4;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        const Extent& box = boxes[i];
        const bool inside = box.x0 <= p.x && p.x <= box.x1 && box.y0 <= p.y && p.y <= box.y1 &&
                            box.z0 <= p.z && p.z <= box.z1;
        const int faces = (p.x == box.x1) + (p.y == box.y1) + (p.z == box.z1);
        if (inside && faces < best_faces) {
            best = static_cast<std::int64_t>(i);
            best_faces = faces;
        }
    }
    return best;
}

struct BoxList {
    explicit BoxList(std::vector<Extent> list) : boxes(std::move(list)) {}

    std::int64_t Find(const Coord3D& p) const { return tree.Find(p, box_of); }

    std::vector<Extent> boxes;
    std::function<Extent(std::int64_t)> box_of = [this](std::int64_t block) {
        return boxes[static_cast<std::size_t>(block)];
    };
    BoxTree tree{static_cast<std::int64_t>(boxes.size()), box_of};
};

/// Parents cut into sub-blocks of a half or a quarter, in random order, some missing.
std::vector<Extent> sub_blocked(std::mt19937& random, const Coord3D& origin, double size) {
    std::vector<Extent> boxes;
    for (int parent = 0; parent < 6 * 5 * 4; ++parent) {
        const int cuts = 1 << (random() % 3);
        const double step = size / cuts;
        for (int child = 0; child < cuts * cuts * cuts; ++child) {
            if (random() % 8 == 0) continue;
            const int ix = (parent % 6) * cuts + child % cuts;
            const int iy = (parent / 6 % 5) * cuts + child / cuts % cuts;
            const int iz = (parent / 30) * cuts + child / cuts / cuts;
            boxes.emplace_back(origin.x + ix * step, origin.y + iy * step, origin.z + iz * step,
                               origin.x + (ix + 1) * step, origin.y + (iy + 1) * step,
                               origin.z + (iz + 1) * step);
        }
    }
    std::shuffle(boxes.begin(), boxes.end(), random);
    return boxes;
}

/// Boxes anywhere in a cube, of any size up to `largest`, so that they overlap.
std::vector<Extent> scattered(std::mt19937& random, std::size_t count, double largest) {
    std::uniform_real_distribution<double> place(-1, 1);
    std::uniform_real_distribution<double> size(0, largest);
    std::vector<Extent> boxes;
    while (boxes.size() < count) {
        const double x = place(random), y = place(random), z = place(random);
        boxes.emplace_back(x, y, z, x + size(random), y + size(random), z + size(random));
    }
    return boxes;
}

/// Corners, face centres, centroids, and points a hair off them on either side.
std::vector<Coord3D> telling_points(std::mt19937& random, const std::vector<Extent>& boxes) {
    const auto on_axis = [&random](double lower, double upper) {
        const double choices[] = {lower,
                                  upper,
                                  0.5 * lower + 0.5 * upper,
                                  std::nextafter(lower, -HUGE_VAL),
                                  std::nextafter(lower, HUGE_VAL),
                                  std::nextafter(upper, -HUGE_VAL),
                                  std::nextafter(upper, HUGE_VAL)};
        return choices[random() % std::size(choices)];
    };
    std::vector<Coord3D> points;
    while (points.size() < 4000) {
        const Extent& box = boxes[random() % boxes.size()];
        points.emplace_back(on_axis(box.x0, box.x1), on_axis(box.y0, box.y1),
                            on_axis(box.z0, box.z1));
    }
    return points;
}

TEST(BoxTree, AgreesWithASearchBlockByBlock) {
    std::mt19937 random(20240611);
    constexpr double kHuge = 1e308;
    const struct {
        const char* name;
        std::vector<Extent> boxes;
    } models[] = {
        {"sub-blocks", sub_blocked(random, {0, 0, 0}, 10)},
        {"sub-blocks of a size that no binary fraction has",
         sub_blocked(random, {0.1, 0.2, 0.3}, 0.7)},
        {"sub-blocks in projected coordinates",
         sub_blocked(random, {512345.5, 7654321.25, -312.5}, 12.5)},
        {"sub-blocks of a millimetre, far away", sub_blocked(random, {5e8, -7e8, 3e8}, 0.001)},
        {"overlapping", scattered(random, 700, 0.5)},
        {"scattered", scattered(random, 5000, 0.02)},
        {"points, lines and sheets",
         {{1, 1, 1, 1, 1, 1}, {0, 1, 1, 2, 1, 1}, {0, 0, 1, 2, 2, 1}, {0, 0, 0, 2, 2, 2}}},
        {"all the same", std::vector<Extent>(50, Extent(0, 0, 0, 1, 1, 1))},
        {"one far away",
         {{0, 0, 0, 1, 1, 1}, {1, 0, 0, 2, 1, 1}, {kHuge, 0, 0, 1.1 * kHuge, 1, 1}}},
        {"as wide as numbers go",
         {{-kHuge, -kHuge, -kHuge, 0, kHuge, kHuge},
          {0, -kHuge, -kHuge, kHuge, kHuge, kHuge},
          {-1.7e308, -1, -1, 1.7e308, 1, 1},
          {-1e-308, -1e-308, -1e-308, 0, 0, 0}}},
    };
    for (const auto& model : models) {
        SCOPED_TRACE(model.name);
        const BoxList list(model.boxes);
        for (const Coord3D& p : telling_points(random, list.boxes)) {
            ASSERT_EQ(list.Find(p), find_one_by_one(list.boxes, p))
                << std::hexfloat << p.x << ' ' << p.y << ' ' << p.z;
        }
    }
}

TEST(BoxTree, EachCountOfBlocksFillsItsLevels) {
    for (const int count : {1, 2, 7, 8, 9, 63, 64, 65, 511, 512, 513, 600}) {
        SCOPED_TRACE(count);
        std::vector<Extent> boxes;
        for (int i = 0; i < count; ++i) boxes.emplace_back(i, 0, 0, i + 1, 1, 1);
        const BoxList row(boxes);
        for (int i = 0; i < count; ++i) EXPECT_EQ(row.Find(Coord3D(i, 0.5, 0.5)), i);
        EXPECT_EQ(row.Find(Coord3D(count, 1, 1)), count - 1) << "upper faces of the last block";
        EXPECT_EQ(row.Find(Coord3D(count + 0.5, 0.5, 0.5)), -1);
    }
}

TEST(BoxTree, IsBuiltFromBoxesInBlockOrder) {
    std::mt19937 random(11);
    const std::vector<Extent> boxes = scattered(random, 1000, 0.1);
    std::int64_t asked = 0;
    const BoxTree tree(1000, [&](std::int64_t block) {
        EXPECT_EQ(block, asked++ % 1000);
        return boxes[static_cast<std::size_t>(block)];
    });
    EXPECT_EQ(asked, 3 * 1000);
}

TEST(BoxTree, WhatIsNotFiniteIsInNoBlock) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const BoxList none({});
    EXPECT_EQ(none.Find(Coord3D(0, 0, 0)), -1);

    const BoxList list(
        {{kNaN, 0, 0, 1, 1, 1}, {0, 0, 0, 1, 1, 1}, {-kInfinity, 2, 2, kInfinity, 3, 3}});
    EXPECT_EQ(list.Find(Coord3D(0.5, 0.5, 0.5)), 1);
    EXPECT_EQ(list.Find(Coord3D(1e308, 2.5, 2.5)), 2);
    for (const double bad : {kNaN, kInfinity, -kInfinity}) {
        EXPECT_EQ(list.Find(Coord3D(bad, 2.5, 2.5)), -1);
        EXPECT_EQ(list.Find(Coord3D(0.5, bad, 0.5)), -1);
        EXPECT_EQ(list.Find(Coord3D(0.5, 0.5, bad)), -1);
    }
}

TEST(BoxTree, AsksFewBoxesAndHoldsFewBytes) {
    std::vector<Extent> boxes;
    for (int i = 0; i < 40 * 40 * 40; ++i) {
        const int x = i % 40, y = i / 40 % 40, z = i / 1600;
        boxes.emplace_back(x, y, z, x + 1, y + 1, z + 1);
    }
    std::mt19937 random(7);
    std::shuffle(boxes.begin(), boxes.end(), random);
    const BoxList list(boxes);
    EXPECT_LE(list.tree.MemoryBytes(), boxes.size() * 8);

    std::uniform_real_distribution<double> place(0, 40);
    int asked = 0;
    const auto counting = [&](std::int64_t block) {
        ++asked;
        return boxes[static_cast<std::size_t>(block)];
    };
    constexpr int kSearches = 1000;
    for (int i = 0; i < kSearches; ++i) {
        ASSERT_GE(list.tree.Find(Coord3D(place(random), place(random), place(random)), counting),
                  0);
    }
    EXPECT_LE(asked, kSearches * 32) << "a few leaves of eight for each point";
}

}  // namespace
}  // namespace zol::engine::block
