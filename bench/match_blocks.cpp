// Blocks of a regular lattice over the box of a solid: which of them are in it by their
// centres, and how much of each is. In one line of JSON: processor seconds of one thread,
// reading the mesh left out.
//
//   match_blocks centres|exact|lone MESH.obj BLOCKS      by this project's geometry
//   match_blocks points|columns MESH.obj BLOCKS          by Embree: a ray for each of some
//                                                        centres, or for each column
//   match_blocks flat MODEL.omf MESH.obj centres|exact   through the flat library
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "api/zolExportedApi_ReadOnly.h"
#include "bench/embree_rays.h"
#include "bench/mesh_points.h"
#include "engine/geometry/block_selection.h"
#include "engine/geometry/volume.h"

namespace {

namespace geometry = zol::engine::geometry;

// Beyond what any lattice here comes to.
constexpr std::size_t kMost = std::size_t{1} << 31U;

struct Lattice {
    geometry::Walls walls;
    geometry::PointGrid centres;

    /// About as many blocks as asked for, alike in number along each axis, in a box that
    /// holds the mesh with some room.
    Lattice(const bench::Mesh& mesh, double blocks) {
        const auto count = static_cast<std::size_t>(std::lround(std::cbrt(blocks)));
        geometry::Ticks* const middles[] = {&centres.x, &centres.y, &centres.z};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            double least = mesh.points[0][axis];
            double most = least;
            for (const bench::Point& point : mesh.points) {
                least = std::min(least, point[axis]);
                most = std::max(most, point[axis]);
            }
            const double step = (most - least + 2) / static_cast<double>(count);
            std::vector<double> at;
            std::vector<double> between;
            for (std::size_t i = 0; i <= count; ++i) {
                at.push_back(least - 1 + step * static_cast<double>(i));
                if (i > 0) between.push_back(at[i - 1] + (at[i] - at[i - 1]) / 2);
            }
            walls[axis] = geometry::Ticks(std::move(at));
            *middles[axis] = geometry::Ticks(std::move(between));
        }
    }

    double Blocks() const { return static_cast<double>(centres.Columns() * centres.z.Count()); }
    geometry::Point Centre(std::size_t i, std::size_t j, std::size_t k) const {
        return {centres.x[i], centres.y[j], centres.z[k]};
    }
    /// Of neighbouring blocks of a column, as their walls have been rounded.
    long double Volume(std::size_t column, std::size_t first, std::size_t end) const {
        const std::size_t i = column % centres.x.Count();
        const std::size_t j = column / centres.x.Count();
        return static_cast<long double>(walls[0][i + 1] - walls[0][i]) *
               static_cast<long double>(walls[1][j + 1] - walls[1][j]) *
               static_cast<long double>(walls[2][end] - walls[2][first]);
    }
};

std::unique_ptr<const geometry::Solid> solid_of(const bench::Mesh& mesh) {
    return std::make_unique<const geometry::Solid>(mesh.points, mesh.triangles, -1e6);
}

void by_centres(const bench::Mesh& mesh, const Lattice& lattice) {
    geometry::Selection selection;
    const double make = bench::timed([&] { selection.Add(solid_of(mesh)); });
    std::uint64_t inside = 0;
    const double seconds = bench::timed([&] {
        const auto columns = geometry::select_by_centres(selection, lattice.centres, kMost);
        for (std::size_t column = 0; column < lattice.centres.Columns(); ++column) {
            for (const auto& stretch : columns->Of(column)) inside += stretch.end - stretch.first;
        }
    });
    std::printf(
        "{\"blocks\": %.0f, \"inside\": %llu, \"make_s\": %.4f, \"seconds\": %.5f, "
        "\"block_ns\": %.3f, \"peak_mb\": %.0f}\n",
        lattice.Blocks(), static_cast<unsigned long long>(inside), make, seconds,
        seconds * 1e9 / lattice.Blocks(), bench::peak_megabytes());
}

/// The tiles add up to the solid: how far they are from that, in relation.
void by_volume(const bench::Mesh& mesh, const Lattice& lattice) {
    geometry::Selection selection;
    selection.Add(solid_of(mesh));
    // What is built once for a solid is timed by itself.
    const double prepare = bench::timed([&] { selection.Solids()[0]->Weights(); });
    std::uint64_t partial = 0;
    long double sum = 0;
    const double seconds = bench::timed([&] {
        const auto columns = geometry::select_by_volume(selection, lattice.walls, kMost);
        for (std::size_t column = 0; column < lattice.centres.Columns(); ++column) {
            for (const auto& stretch : columns->Of(column)) {
                const bool is_whole = stretch.volume == geometry::Stretch::kWhole;
                if (!is_whole) ++partial;
                sum += is_whole ? lattice.Volume(column, stretch.first, stretch.end)
                                : static_cast<long double>(stretch.volume);
            }
        }
    });
    const double volume = geometry::signed_volume(selection.Solids()[0]->Mesh(),
                                                  std::span<const bench::Triangle>(mesh.triangles));
    std::printf(
        "{\"blocks\": %.0f, \"partial\": %llu, \"prepare_s\": %.4f, \"seconds\": %.4f, "
        "\"partial_us\": %.4f, \"error\": %.2g, \"peak_mb\": %.0f}\n",
        lattice.Blocks(), static_cast<unsigned long long>(partial), prepare, seconds,
        seconds * 1e6 / static_cast<double>(partial),
        static_cast<double>(std::fabs(sum / static_cast<long double>(volume) - 1)),
        bench::peak_megabytes());
}

/// Boxes of the lattice's size round corners of the mesh, one at a time.
void lone_boxes(const bench::Mesh& mesh, const Lattice& lattice) {
    constexpr int kBoxes = 100'000;
    geometry::Selection selection;
    selection.Add(solid_of(mesh));
    std::mt19937_64 random(3);
    std::vector<geometry::Box> boxes;
    for (int i = 0; i < kBoxes; ++i) {
        const bench::Point& corner = mesh.points[random() % mesh.points.size()];
        geometry::Box box{};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const double step = lattice.walls[axis][1] - lattice.walls[axis][0];
            box.lower[axis] = corner[axis] - step / 3;
            box.upper[axis] = box.lower[axis] + step;
        }
        boxes.push_back(box);
    }
    selection.VolumeIn(boxes[0]);
    double sum = 0;
    const double seconds = bench::timed([&] {
        for (const geometry::Box& box : boxes) sum += selection.VolumeIn(box);
    });
    std::printf("{\"boxes\": %d, \"box_us\": %.3f, \"sum\": %.6f}\n", kBoxes,
                seconds * 1e6 / kBoxes, sum);
}

void embree_points(const bench::Mesh& mesh, const Lattice& lattice) {
    constexpr int kPoints = 1'000'000;
    const bench::Rays rays(mesh);
    std::uint64_t inside = 0;
    // Columns here and there, each of them upwards, as a walk over blocks asks.
    const std::size_t layers = lattice.centres.z.Count();
    const std::size_t columns = std::min(lattice.centres.Columns(), kPoints / layers);
    const std::size_t step = lattice.centres.Columns() / columns;
    const double seconds = bench::timed([&] {
        for (std::size_t n = 0; n < columns; ++n) {
            const std::size_t column = n * step;
            for (std::size_t k = 0; k < layers; ++k) {
                inside += rays.IsInside(lattice.Centre(column % lattice.centres.x.Count(),
                                                       column / lattice.centres.x.Count(), k))
                              ? 1U
                              : 0U;
            }
        }
    });
    std::printf("{\"points\": %zu, \"inside\": %llu, \"block_ns\": %.3f}\n", columns * layers,
                static_cast<unsigned long long>(inside),
                seconds * 1e9 / static_cast<double>(columns * layers));
}

void embree_columns(const bench::Mesh& mesh, const Lattice& lattice) {
    const bench::Rays rays(mesh);
    std::uint64_t inside = 0;
    const double seconds = bench::timed([&] {
        std::vector<double> heights;
        for (std::size_t j = 0; j < lattice.centres.y.Count(); ++j) {
            for (std::size_t i = 0; i < lattice.centres.x.Count(); ++i) {
                bench::Point from = lattice.Centre(i, j, 0);
                from[2] = lattice.walls[2][0];
                rays.FindCrossings(from, heights);
                for (std::size_t n = 0; n + 1 < heights.size(); n += 2) {
                    inside += lattice.centres.z.NotBelow(heights[n + 1]) -
                              lattice.centres.z.NotBelow(heights[n]);
                }
            }
        }
    });
    std::printf("{\"blocks\": %.0f, \"inside\": %llu, \"seconds\": %.5f, \"block_ns\": %.3f}\n",
                lattice.Blocks(), static_cast<unsigned long long>(inside), seconds,
                seconds * 1e9 / lattice.Blocks());
}

void through_flat(const char* model_name, const char* mesh_name, bool exact) {
    BlockModelHandle* const model = ZOL_BlockModel_Open(model_name);
    if (model == nullptr) bench::fail("match_blocks: can't open the model");
    const std::int64_t blocks = ZOL_BlockModel_NBlocks(model);
    const int flag = exact ? 1 : 0;
    const double before = bench::peak_megabytes();
    std::int64_t matched = 0;
    double first = 0;
    double sum = 0;
    const double seconds = bench::timed([&] {
        const double start = bench::seconds();
        if (ZOL_BlockModel_AddMatchTriangulation(model, mesh_name) != 0) {
            bench::fail("match_blocks: no match");
        }
        ZOL_BlockModel_SetUseExactVolume(model, &flag);
        ZOL_BlockModel_FirstBlock(model);
        first = bench::seconds() - start;
        for (; ZOL_BlockModel_IsEof(model) == 0; ZOL_BlockModel_NextBlock(model)) {
            ++matched;
            if (exact) sum += ZOL_BlockModel_GetBlockMatchVolume(model);
        }
    });
    std::printf(
        "{\"blocks\": %lld, \"matched\": %lld, \"first_s\": %.4f, \"seconds\": %.4f, "
        "\"block_ns\": %.3f, \"volume\": %.9g, \"peak_mb\": %.0f}\n",
        static_cast<long long>(blocks), static_cast<long long>(matched), first, seconds,
        seconds * 1e9 / static_cast<double>(blocks), sum, bench::peak_megabytes() - before);
}

}  // namespace

int main(int argc, char** argv) {
    ZOL_API_Init();
    const std::string_view what = argc > 3 ? argv[1] : "";
    if (what == "flat" && argc == 5) {
        through_flat(argv[2], argv[3], std::string_view(argv[4]) == "exact");
        return 0;
    }
    if (argc != 4) bench::fail("match_blocks: see the head of its source for its words");
    const bench::Mesh mesh = bench::read_plain_obj(argv[2]);
    const Lattice lattice(mesh, std::strtod(argv[3], nullptr));
    if (what == "centres") {
        by_centres(mesh, lattice);
    } else if (what == "exact") {
        by_volume(mesh, lattice);
    } else if (what == "lone") {
        lone_boxes(mesh, lattice);
    } else if (what == "points") {
        embree_points(mesh, lattice);
    } else if (what == "columns") {
        embree_columns(mesh, lattice);
    } else {
        bench::fail("match_blocks: no such word");
    }
    return 0;
}
