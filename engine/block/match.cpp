// The match of a model.
#include <utility>

#include "engine/block/model_state.h"

namespace zol::model::block {

Match::Match(std::unique_ptr<State> state) : state_(std::move(state)) {}
Match::~Match() = default;

bool Match::IsOpen() const {
    return true;
}

int Match::FindFirst() {
    state_->cursor.MoveTo(0);
    return state_->cursor.IsEof() ? 1 : 0;
}

int Match::Next() {
    state_->cursor.Next();
    return state_->cursor.IsEof() ? 1 : 0;
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
    state_->cursor.Restart();
}

}  // namespace zol::model::block
