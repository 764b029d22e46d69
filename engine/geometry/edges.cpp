#include "engine/geometry/edges.h"

#include "engine/geometry/edge_sides.h"

namespace zol::engine::geometry {

namespace {

void count(EdgeCount& kind, std::int32_t lower, std::int32_t upper) {
    if (kind.number++ == 0) kind.first = {lower, upper};
}

}  // namespace

EdgeFacts edge_facts(std::size_t n_points, std::span<const Triangle> triangles) {
    EdgeFacts facts;
    EdgeSides(n_points, triangles)
        .ForEachEdge([&](std::int32_t lower, std::span<const Side> sides) {
            std::size_t downwards = 0;
            for (const Side& side : sides) downwards += side.IsDownwards() ? 1U : 0U;
            const bool is_balanced = downwards * 2 == sides.size();
            const std::int32_t upper = sides.front().Upper();
            ++facts.edges;
            facts.odd += sides.size() % 2;
            facts.unbalanced += is_balanced ? 0 : 1;
            if (sides.size() == 1) count(facts.border, lower, upper);
            if (sides.size() > 2) count(facts.crowded, lower, upper);
            if (sides.size() == 2 && !is_balanced) count(facts.misdirected, lower, upper);
        });
    return facts;
}

}  // namespace zol::engine::geometry
