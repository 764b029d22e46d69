#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/design/view_states.h"

namespace zol::design {

using engine::TextAcross;
using engine::TextUp;

namespace {

/// One past the last is the empty record that ends them.
std::string record_at(const std::vector<std::string>& lines, int index) {
    const auto place = static_cast<std::size_t>(index);
    return place < lines.size() ? lines[place] : std::string();
}

std::string_view word_of(TextUp up) {
    switch (up) {
        case TextUp::Bottom:
            return "bottom";
        case TextUp::Middle:
            return "middle";
        case TextUp::Top:
            return "top";
        default:
            return "baseline";
    }
}

std::string_view word_of(TextAcross across) {
    switch (across) {
        case TextAcross::Centre:
            return "centre";
        case TextAcross::Right:
            return "right";
        default:
            return "left";
    }
}

}  // namespace

ObjectText::ObjectText(std::shared_ptr<const State> state) : state_(std::move(state)) {}

ObjectText::~ObjectText() = default;

int ObjectText::NRecords() const {
    return static_cast<int>(state_->lines.size());
}

std::string ObjectText::GetRecord(int index) const {
    return record_at(state_->lines, index);
}

Point ObjectText::GetOrigin() const {
    return point_of(state_->origin);
}

double ObjectText::GetTextNumberA() const {
    return state_->height;
}

std::string ObjectText::GetTextStringB() const {
    return std::string(word_of(state_->up)).append(" ").append(word_of(state_->across));
}

double ObjectText::GetTextNumberB() const {
    return state_->rotation;
}

double ObjectText::GetTextNumberC() const {
    return state_->width;
}

std::string ObjectText::GetTextStringA() const {
    return state_->style;
}

bool ObjectText::GetTextFlag() const {
    return state_->is_mirrored;
}

Object3DText::Object3DText(std::shared_ptr<const State> state) : state_(std::move(state)) {}

Object3DText::~Object3DText() = default;

int Object3DText::NRecords() const {
    return static_cast<int>(state_->lines.size());
}

std::string Object3DText::GetRecord(int index) const {
    return record_at(state_->lines, index);
}

Point Object3DText::GetOrigin() const {
    return point_of(state_->origin);
}

Point Object3DText::GetDirection() const {
    return point_of(state_->direction);
}

Point Object3DText::GetNormal() const {
    return point_of(state_->normal);
}

std::string Object3DText::Get3DTextStringB() const {
    return state_->font;
}

double Object3DText::Get3DTextNumberB() const {
    return state_->width;
}

double Object3DText::Get3DTextNumberA() const {
    return state_->height;
}

bool Object3DText::Get3DTextFlag() const {
    return state_->is_mirrored;
}

int Object3DText::GetOriginPositionFirst() const {
    return static_cast<int>(state_->across);
}

int Object3DText::GetOriginPositionSecond() const {
    return static_cast<int>(state_->up);
}

std::string Object3DText::Get3DTextStringA() const {
    return state_->style;
}

}  // namespace zol::design
