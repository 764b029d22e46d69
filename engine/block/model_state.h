// What an open model and its match answer from.
#pragma once

#include <memory>
#include <string>

#include "engine/block/catalogue.h"
#include "engine/block/cursor.h"
#include "engine/block/source.h"
#include "platform/zolBlockExport.h"

namespace zol::model::block {

struct Schema::State {
    engine::block::SchemaFacts facts;
};

/// Until triangulations and an extent narrow it, a match is every block.
struct Match::State {
    State(const engine::block::Source& source, const engine::block::Catalogue& catalogue)
        : cursor(source, catalogue) {}

    engine::block::Cursor cursor;
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
