// The match of a model: its settings, and the cursor over what they select.
#include <utility>

#include "engine/block/model_state.h"
#include "support/floating_point.h"

namespace zol::model::block {

namespace {

using engine::block::Matched;
using engine::block::MatchRequest;

const geometry::Extent kNoExtent{0, 0, 0, 0, 0, 0};

}  // namespace

void Match::State::Forget() {
    run.reset();
    request = MatchRequest{};
    changed = false;
    cursor.Restart();
    cursor.MoveTo(-1);
}

void Match::State::Begin() {
    if (run && !changed) return;
    run.reset();
    // A closed model has no blocks to match.
    if (source.geometry) run = std::make_unique<MatchRun>(request, source);
    changed = false;
}

void Match::State::MoveTo(std::int64_t block) {
    if (!run) return;
    const Matched matched = run->walk->NotBefore(block);
    cursor.MoveTo(matched.block);
    run->volume = matched.volume;
}

Match::Match(std::unique_ptr<State> state) : state_(std::move(state)) {}
Match::~Match() = default;

bool Match::IsOpen() const {
    return true;
}

int Match::FindFirst() {
    const support::UsualFloatingPoint usual;
    state_->Begin();
    state_->MoveTo(0);
    return IsEof() ? 1 : 0;
}

int Match::Next() {
    const support::UsualFloatingPoint usual;
    if (!state_->run) return FindFirst();
    if (!IsEof()) state_->MoveTo(state_->cursor.Position() + 1);
    return IsEof() ? 1 : 0;
}

bool Match::IsEof() const {
    return state_->cursor.IsEof();
}
double Match::Get(const std::string& name) const {
    return state_->cursor.Number(name);
}
std::string Match::GetString(const std::string& name) const {
    return state_->cursor.Text(name);
}
BlockExtent Match::GetBlockExtent() const {
    return BlockExtent(state_->cursor.Extent());
}
Position Match::GetPosition() const {
    return {state_->cursor.Position()};
}

void Match::Close() {
    state_->Forget();
}

void Match::AddTriangulation(const std::string& file) {
    state_->request.triangulations.push_back(file);
    state_->changed = true;
}

void Match::SetExtent(const geometry::Extent& extent) {
    state_->request.extent = extent;
    state_->changed = true;
}

void Match::SetUseExactVolume(bool exact) {
    state_->request.exact = exact;
    state_->changed = true;
}

BlockExtent Match::GetMatchExtent() const {
    const support::UsualFloatingPoint usual;
    if (IsEof()) return BlockExtent(kNoExtent);
    const MatchRun& run = *state_->run;
    const engine::geometry::Box counted =
        run.region.Counted(engine::block::box_of(state_->cursor.Extent()));
    return BlockExtent(engine::block::extent_of(
        run.volume == Matched::kWhole ? counted : run.region.Meshes().ExtentIn(counted)));
}

double Match::GetMatchVolume() const {
    const support::UsualFloatingPoint usual;
    if (IsEof()) return 0.0;
    const MatchRun& run = *state_->run;
    if (run.volume != Matched::kWhole) return run.volume;
    return engine::geometry::volume_of(
        run.region.Counted(engine::block::box_of(state_->cursor.Extent())));
}

}  // namespace zol::model::block
