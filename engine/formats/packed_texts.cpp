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

std::int64_t TextPacker::AddNew(std::string_view letters, const std::string& text) {
    const auto code = static_cast<std::int64_t>(packed_.ends_.size());
    packed_.letters_ += text;
    packed_.ends_.push_back(static_cast<std::uint32_t>(packed_.letters_.size()));
    codes_of_.emplace(letters, code);
    return code;
}

PackedTexts TextPacker::Finish() {
    packed_.codes_ = codes_.Finish();
    packed_.letters_.shrink_to_fit();
    packed_.ends_.shrink_to_fit();
    codes_of_.clear();
    return std::exchange(packed_, {});
}

}  // namespace zol::engine
