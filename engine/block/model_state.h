// What an open model and its match answer from.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "engine/block/catalogue.h"
#include "engine/block/cursor.h"
#include "engine/block/match_region.h"
#include "engine/block/match_walk.h"
#include "engine/block/source.h"
#include "platform/zolBlockExport.h"

namespace zol::model::block {

struct Schema::State {
    engine::block::SchemaFacts facts;
};

/// A match being walked: what it selects, settled when the walk began.
struct MatchRun {
    explicit MatchRun(const engine::block::MatchRequest& request,
                      const engine::block::Source& source)
        : region(request, source), walk(engine::block::walk_over(region, *source.geometry)) {}

    engine::block::MatchRegion region;
    std::unique_ptr<engine::block::MatchWalk> walk;
    double volume = engine::block::Matched::kWhole;
};

struct Match::State {
    State(const engine::block::Source& model_source, const engine::block::Catalogue& catalogue)
        : source(model_source), cursor(model_source, catalogue) {
        Forget();
    }

    /// The match of a new model: without settings, and on no block.
    void Forget();
    /// Settles what matches, unless nothing has been set since.
    void Begin();
    /// Moves to the first match from a block on.
    void MoveTo(std::int64_t block);

    const engine::block::Source& source;
    engine::block::Cursor cursor;
    engine::block::MatchRequest request;
    std::unique_ptr<MatchRun> run;
    /// Settings have come since the run began.
    bool changed = false;
};

struct Model::State {
    explicit State(engine::block::Source opened)
        : source(std::move(opened)), catalogue(source), cursor(source, catalogue) {}

    engine::block::Source source;
    engine::block::Catalogue catalogue;
    engine::block::Cursor cursor;
    std::unique_ptr<Match> match;
    bool is_open = false;
};

}  // namespace zol::model::block
