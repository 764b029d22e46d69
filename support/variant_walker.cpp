#include "support/variant_walker.h"

#include "support/string_map.h"
#include "support/value_vector.h"

VariantWalker::VariantWalker(MVariant& root) {
    frames_.emplace_front(root);
}

VariantWalker& VariantWalker::operator++() {
    while (!frames_.empty()) {
        Frame& frame = frames_.front();
        if (frame.is_started) {
            frame.Step();
        } else if (!frame.Start()) {
            frames_.pop_front();
            continue;
        }
        if (!frame.IsAtEnd()) {
            frames_.emplace_front(frame.Current());
            return *this;
        }
        frames_.pop_front();
    }
    return *this;
}

MVariant& VariantWalker::Frame::Current() const {
    if (!is_started) {
        return *value;
    }
    return is_vector ? *cursor : *static_cast<MVariant*>(entry.value);
}

bool VariantWalker::Frame::Start() {
    switch (value->Kind()) {
        case MV_VECTOR: {
            VARIANTVECTOR& vector = value->OwnVector();
            is_vector = true;
            cursor = vector.Count() > 0 ? vector.begin() : nullptr;
            break;
        }
        case MV_MAP:
            entry = strtab_Begin(&value->OwnMap().Table());
            break;
        default:
            return false;
    }
    is_started = true;
    return true;
}

void VariantWalker::Frame::Step() {
    if (!is_vector) {
        strtab_Next(&entry);
        return;
    }
    // By number, and without unsharing anew: a copy that is taken during the walk, or a
    // change, may have moved the elements.
    const array_t& array = value->Vector()->Array();
    ++index;
    cursor = index < array.count ? static_cast<MVariant*>(array.data) + index : nullptr;
}

VariantWalker MVariant::Begin() {
    return VariantWalker(*this);
}

VariantWalker MVariant::End() {
    return {};
}
