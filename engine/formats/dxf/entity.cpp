#include "engine/formats/dxf/entity.h"

#include <algorithm>

namespace zol::engine {

void Entity::Begin(bool lists) {
    begin_ = ++now_;
    dictionary_ = 0;
    listed_.clear();
    extended_.clear();
    lists_ = lists;
    is_embedded_ = false;
    is_in_braces_ = false;
    is_in_dictionary_ = false;
}

void Entity::TakeAll(TagReader& tags) {
    while (tags.Next()) {
        if (tags.Code() == 0) {
            tags.PutBack();
            return;
        }
        Take(tags);
    }
}

int Entity::Whole(int code, int fallback) const {
    if (!Has(code)) return fallback;
    return static_cast<int>(std::clamp(reals_[At(code)], -2147483648.0, 2147483647.0));
}

// True for the first of its code.
bool Entity::Marks(int code) {
    if (Has(code)) return false;
    order_[At(code)] = ++now_;
    return true;
}

void Entity::Take(const TagReader& tags) {
    const int code = tags.Code();
    constexpr int kBraces = 102;
    constexpr int kEmbedded = 101;
    constexpr int kExtended = 1000;
    if (code >= kExtended) {
        TakeExtended(tags, code);
    } else if (code == kEmbedded) {
        is_embedded_ = true;
    } else if (is_embedded_ || code < 0 || code >= kCodes) {
        return;
    } else if (code == kBraces || is_in_braces_) {
        TakeBraces(tags, code);
    } else if (code < 10) {
        TakeText(tags, code);
    } else if (code >= kFirstHandle && code < kFirstHandle + kHandles) {
        if (Marks(code)) handles_[HandleAt(code)] = tags.Handle();
    } else if (const TagType type = tag_type(code);
               type != TagType::Text && type != TagType::Bytes && type != TagType::Unknown) {
        const double real = tags.Real();
        if (Marks(code)) reals_[At(code)] = real;
        if (lists_ && type == TagType::Real && code < 60) listed_.push_back({code, real});
    }
}

void Entity::TakeText(const TagReader& tags, int code) {
    constexpr int kHandle = 5;
    constexpr int kPieces = 3;
    if (Marks(code)) {
        if (code == kHandle) {
            handles_[HandleAt(code)] = tags.Handle();
        } else {
            texts_[At(code)] = tags.Text();
        }
    } else if (code == kPieces) {
        texts_[At(code)] += tags.Text();
    }
}

void Entity::TakeBraces(const TagReader& tags, int code) {
    if (code == 102) {
        const std::string_view name = without_blanks(tags.Text());
        is_in_braces_ = name.starts_with('{');
        is_in_dictionary_ = name == "{ACAD_XDICTIONARY";
    } else if (code == 360 && is_in_dictionary_) {
        dictionary_ = tags.Handle();
    }
}

void Entity::TakeExtended(const TagReader& tags, int code) {
    is_in_braces_ = false;
    const TagType type = tag_type(code);
    if (type == TagType::Text) {
        extended_.push_back({code, std::string(tags.Text()), 0});
    } else if (type == TagType::Bytes) {
        extended_.push_back({code, tags.Written(), 0});
    } else if (type != TagType::Unknown) {
        extended_.push_back({code, {}, tags.Real()});
    }
}

}  // namespace zol::engine
