#include "engine/block/omf1_columns.h"

#include <cmath>
#include <utility>

#include "engine/formats/number_text.h"
#include "engine/formats/read_error.h"
#include "support/floating_point.h"

namespace zol::engine::block {

namespace {

std::string text_of(double value) {
    return std::isnan(value) ? "" : number_text(value);
}
// By itself, since a double does not hold every whole number of 64 bits.
std::string text_of(std::int64_t value) {
    return std::to_string(value);
}

double number_of(double value) {
    return value;
}
// Out of line, so that the rounding happens in the mode that is set here.
[[gnu::noinline]] double nearest_double(std::int64_t value) {
    return static_cast<double>(value);
}
double number_of(std::int64_t value) {
    const support::UsualFloatingPoint usual;
    return nearest_double(value);
}

template <typename T>
class NumberColumn final : public Column {
public:
    NumberColumn(Omf1Columns::Shared<std::unique_ptr<T[]>> items, std::size_t width,
                 std::size_t component)
        : items_(std::move(items)), width_(width), component_(component) {}

    double Number(std::int64_t block) override {
        const auto* items = items_->Get();
        return items == nullptr ? kMissing : number_of((*items)[Index(block)]);
    }
    std::string Text(std::int64_t block) override {
        const auto* items = items_->Get();
        return items == nullptr ? "" : text_of((*items)[Index(block)]);
    }

private:
    std::size_t Index(std::int64_t block) const {
        return static_cast<std::size_t>(block) * width_ + component_;
    }

    Omf1Columns::Shared<std::unique_ptr<T[]>> items_;
    std::size_t width_;
    std::size_t component_;
};

class CodeColumn final : public Column {
public:
    explicit CodeColumn(Omf1Columns::Shared<std::vector<std::int32_t>> codes)
        : codes_(std::move(codes)) {}

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
        const std::vector<std::int32_t>* codes = codes_->Get();
        return codes == nullptr ? kNoCode : (*codes)[static_cast<std::size_t>(block)];
    }

    Omf1Columns::Shared<std::vector<std::int32_t>> codes_;
};

class ColourColumn final : public Column {
public:
    explicit ColourColumn(Omf1Columns::Shared<std::vector<Omf1Colour>> colours)
        : colours_(std::move(colours)) {}

    double Number(std::int64_t) override { return kMissing; }
    std::string Text(std::int64_t block) override {
        const std::vector<Omf1Colour>* colours = colours_->Get();
        return colours == nullptr ? "" : colour_text((*colours)[static_cast<std::size_t>(block)]);
    }

private:
    Omf1Columns::Shared<std::vector<Omf1Colour>> colours_;
};

class TextColumn final : public Column {
public:
    explicit TextColumn(Omf1Columns::Shared<Omf1Texts> texts) : texts_(std::move(texts)) {}

    double Number(std::int64_t) override { return kMissing; }
    std::string Text(std::int64_t block) override {
        const Omf1Texts* texts = texts_->Get();
        return texts == nullptr ? std::string() : texts->At(static_cast<std::size_t>(block));
    }

private:
    Omf1Columns::Shared<Omf1Texts> texts_;
};

template <typename T>
std::vector<std::unique_ptr<Column>> columns_over(
    const Omf1Columns::Shared<std::unique_ptr<T[]>>& items, std::size_t width) {
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

Omf1Blob Omf1Columns::BlobOfRows(const std::string& data_name, const JsonValue& reference,
                                 std::string_view array_class, std::size_t width) const {
    Omf1Blob blob = document_->Blob(reference, {array_class});
    blob.name += " of \"" + data_name + "\"";
    check_can_hold(blob, n_blocks_ * width * sizeof(double));
    return blob;
}

template <typename T>
Omf1Columns::Shared<T> Omf1Columns::Values(ByPlace<T>& known, const Omf1Blob& blob,
                                           std::size_t count, Decode<T> decode) const {
    Shared<T>& values = known[{blob.start, blob.length, blob.type, count}];
    if (!values) {
        values = std::make_shared<Lazy<T>>(file_->Path(), [file = file_, blob, count, decode] {
            return decode(*file, blob, count);
        });
    }
    return values;
}

Omf1Columns::Numbers Omf1Columns::MakeNumbers(const std::string& data_name,
                                              const JsonValue& reference,
                                              std::string_view array_class, std::size_t width) {
    const Omf1Blob blob = BlobOfRows(data_name, reference, array_class, width);
    const std::size_t count = n_blocks_ * width;
    if (blob.type == Omf1Blob::Type::Int64) {
        const auto items = Values(integers_, blob, count, &inflate_items<std::int64_t>);
        return {Storage::Int64, columns_over<std::int64_t>(items, width)};
    }
    const auto items = Values(doubles_, blob, count, &inflate_items<double>);
    return {Storage::Double, columns_over<double>(items, width)};
}

std::unique_ptr<Column> Omf1Columns::MakeCodes(const std::string& data_name,
                                               const JsonValue& reference) {
    const Omf1Blob blob = BlobOfRows(data_name, reference, "ScalarArray", 1);
    return std::make_unique<CodeColumn>(Values(codes_, blob, n_blocks_, &read_codes));
}

std::unique_ptr<Column> Omf1Columns::MakeColours(const std::string& data_name,
                                                 const JsonValue& reference) {
    const Omf1Blob blob = BlobOfRows(data_name, reference, "Int3Array", 3);
    if (blob.type != Omf1Blob::Type::Int64) {
        throw ReadError(blob.name + " is of colours and does not hold whole numbers");
    }
    return std::make_unique<ColourColumn>(Values(colours_, blob, n_blocks_, &read_colours));
}

std::unique_ptr<Column> Omf1Columns::MakeTexts(const JsonValue& reference,
                                               std::string_view array_class) {
    const std::string uuid = reference.Text();
    const JsonValue array = document_->Follow(reference, {array_class});
    Shared<Omf1Texts>& texts = texts_[uuid];
    if (!texts) {
        check_texts(array, n_blocks_);
        texts = std::make_shared<Lazy<Omf1Texts>>(
            file_->Path(),
            [file = file_, uuid, count = n_blocks_] { return read_texts(*file, uuid, count); });
    }
    return std::make_unique<TextColumn>(texts);
}

}  // namespace zol::engine::block
