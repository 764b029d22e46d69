#include "engine/formats/packed_texts.h"

#include <utility>

namespace zol::engine {

std::string_view PackedTexts::At(std::size_t index) const {
    std::int64_t code = 0;
    if (!codes_.WholeAt(index, code)) {
        return {};
    }
    const auto place = static_cast<std::size_t>(code);
    const std::uint32_t begin = place == 0 ? 0 : ends_[place - 1];
    return std::string_view(letters_).substr(begin, ends_[place] - begin);
}

void TextPacker::Add(std::string text) {
    const auto next = static_cast<std::int64_t>(packed_.ends_.size());
    const auto [known, is_new] = codes_of_.try_emplace(std::move(text), next);
    if (is_new) {
        packed_.letters_ += known->first;
        packed_.ends_.push_back(static_cast<std::uint32_t>(packed_.letters_.size()));
    }
    codes_.Add({known->second, 0, true});
}

PackedTexts TextPacker::Finish() {
    packed_.codes_ = codes_.Finish();
    packed_.letters_.shrink_to_fit();
    packed_.ends_.shrink_to_fit();
    codes_of_.clear();
    return std::exchange(packed_, {});
}

}  // namespace zol::engine
