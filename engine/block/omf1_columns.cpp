#include "engine/block/omf1_columns.h"

#include <cmath>
#include <utility>

#include "engine/block/omf1_values.h"
#include "engine/formats/number_text.h"
#include "engine/formats/read_error.h"

namespace zol::engine::block {

namespace {

std::string text_of(double value) {
    return std::isnan(value) ? "" : number_text(value);
}
// By itself, since a double does not hold every whole number of 64 bits.
std::string text_of(std::int64_t value) {
    return std::to_string(value);
}

template <typename T>
class NumberColumn final : public Column {
public:
    NumberColumn(Omf1Columns::SharedItems<T> items, std::size_t width, std::size_t component)
        : items_(std::move(items)), width_(width), component_(component) {}

    double Number(std::int64_t block) override {
        const auto* items = items_->Get();
        return items == nullptr ? kMissing : static_cast<double>((*items)[Index(block)]);
    }
    std::string Text(std::int64_t block) override {
        const auto* items = items_->Get();
        return items == nullptr ? "" : text_of((*items)[Index(block)]);
    }

private:
    std::size_t Index(std::int64_t block) const {
        return static_cast<std::size_t>(block) * width_ + component_;
    }

    Omf1Columns::SharedItems<T> items_;
    std::size_t width_;
    std::size_t component_;
};

class CodeColumn final : public Column {
public:
    explicit CodeColumn(Lazy<std::vector<std::int32_t>> codes) : codes_(std::move(codes)) {}

    double Number(std::int64_t block) override {
        const std::int32_t code = Code(block);
        return code == kNoCode ? kMissing : code;
    }
    std::string Text(std::int64_t block) override {
        const std::int32_t code = Code(block);
        return code == kNoCode ? "" : std::to_string(code);
    }

private:
    std::int32_t Code(std::int64_t block) {
        const std::vector<std::int32_t>* codes = codes_.Get();
        return codes == nullptr ? kNoCode : (*codes)[static_cast<std::size_t>(block)];
    }

    Lazy<std::vector<std::int32_t>> codes_;
};

class ColourColumn final : public Column {
public:
    explicit ColourColumn(Lazy<std::vector<Colour>> colours) : colours_(std::move(colours)) {}

    double Number(std::int64_t) override { return kMissing; }
    std::string Text(std::int64_t block) override {
        const std::vector<Colour>* colours = colours_.Get();
        return colours == nullptr ? "" : colour_text((*colours)[static_cast<std::size_t>(block)]);
    }

private:
    Lazy<std::vector<Colour>> colours_;
};

class TextColumn final : public Column {
public:
    explicit TextColumn(Lazy<Texts> texts) : texts_(std::move(texts)) {}

    double Number(std::int64_t) override { return kMissing; }
    std::string Text(std::int64_t block) override {
        const Texts* texts = texts_.Get();
        if (texts == nullptr) return {};
        const auto index = static_cast<std::size_t>(block);
        const std::size_t start = index == 0 ? 0 : texts->ends[index - 1];
        return texts->bytes.substr(start, texts->ends[index] - start);
    }

private:
    Lazy<Texts> texts_;
};

template <typename T>
std::vector<std::unique_ptr<Column>> columns_over(const Omf1Columns::SharedItems<T>& items,
                                                  std::size_t width) {
    std::vector<std::unique_ptr<Column>> columns;
    for (std::size_t i = 0; i < width; ++i) {
        columns.push_back(std::make_unique<NumberColumn<T>>(items, width, i));
    }
    return columns;
}

}  // namespace

Omf1Columns::Omf1Columns(std::shared_ptr<const File> file, const Omf1Document& document,
                         std::int64_t n_blocks)
    : file_(std::move(file)), document_(&document), n_blocks_(static_cast<std::size_t>(n_blocks)) {}

Omf1Blob Omf1Columns::BlobOfRows(const JsonValue& reference, std::string_view array_class,
                                 std::size_t width) const {
    Omf1Blob blob = document_->Blob(reference, {array_class});
    check_can_hold(blob, n_blocks_ * width * sizeof(double));
    return blob;
}

template <typename T>
Omf1Columns::SharedItems<T> Omf1Columns::Items(const Omf1Blob& blob, std::size_t width) const {
    return std::make_shared<Lazy<std::unique_ptr<T[]>>>(
        file_->Path(), [file = file_, blob, count = n_blocks_ * width] {
            return inflate_items<T>(*file, blob, count);
        });
}

Omf1Columns::Numbers Omf1Columns::MakeNumbers(const JsonValue& reference,
                                              std::string_view array_class, std::size_t width) {
    const Omf1Blob blob = BlobOfRows(reference, array_class, width);
    // The class of an array fixes its width, so that the UUID alone tells arrays apart.
    if (blob.type == Omf1Blob::Type::Int64) {
        SharedItems<std::int64_t>& items = integers_[reference.Text()];
        if (!items) items = Items<std::int64_t>(blob, width);
        return {Storage::Int64, columns_over<std::int64_t>(items, width)};
    }
    SharedItems<double>& items = doubles_[reference.Text()];
    if (!items) items = Items<double>(blob, width);
    return {Storage::Double, columns_over<double>(items, width)};
}

std::unique_ptr<Column> Omf1Columns::MakeCodes(const JsonValue& reference) {
    const Omf1Blob blob = BlobOfRows(reference, "ScalarArray", 1);
    return std::make_unique<CodeColumn>(Lazy<std::vector<std::int32_t>>(
        file_->Path(),
        [file = file_, blob, count = n_blocks_] { return read_codes(*file, blob, count); }));
}

std::unique_ptr<Column> Omf1Columns::MakeColours(const JsonValue& reference) {
    const Omf1Blob blob = BlobOfRows(reference, "Int3Array", 3);
    if (blob.type != Omf1Blob::Type::Int64) {
        throw ReadError(blob.name + " is of colours and does not hold whole numbers");
    }
    return std::make_unique<ColourColumn>(Lazy<std::vector<Colour>>(
        file_->Path(),
        [file = file_, blob, count = n_blocks_] { return read_colours(*file, blob, count); }));
}

std::unique_ptr<Column> Omf1Columns::MakeTexts(const JsonValue& reference,
                                               std::string_view array_class) {
    const std::string uuid = reference.Text();
    const JsonValue array = document_->Follow(reference, {array_class});
    if (good_lists_.insert(uuid).second) check_texts(array, n_blocks_);
    return std::make_unique<TextColumn>(Lazy<Texts>(
        file_->Path(),
        [file = file_, uuid, count = n_blocks_] { return read_texts(*file, uuid, count); }));
}

}  // namespace zol::engine::block
