#include "engine/design/omf1_data.h"

#include <cmath>
#include <cstdint>
#include <map>
#include <memory>
#include <string_view>
#include <tuple>
#include <typeindex>
#include <utility>

#include "engine/formats/growing_array.h"
#include "engine/formats/number_text.h"
#include "engine/formats/omf1_elements.h"
#include "engine/formats/omf1_geometry.h"
#include "engine/formats/read_error.h"

namespace zol::engine::design {

namespace {

/// A data object as its element lists it.
struct Entry {
    std::string name;
    std::string class_name;
    JsonValue object;
    JsonValue array;
};

std::vector<Entry> entries_of(const Omf1Document& document, const JsonValue& element) {
    std::vector<Entry> entries;
    const std::optional<JsonValue> list = element.Find("data");
    for (std::size_t i = 0; list && i < list->Size(); ++i) {
        const JsonValue data =
            document.Follow(list->At(i), {"ScalarData", "Vector2Data", "Vector3Data", "ColorData",
                                          "StringData", "DateTimeData", "MappedData"});
        const std::optional<JsonValue> name = data.Find("name");
        std::string text = name ? name->Text() : std::string();
        if (text.empty()) text = "data " + std::to_string(i + 1);
        entries.push_back({std::move(text), Omf1Document::ClassOf(data), data, data.Get("array")});
    }
    return entries;
}

bool is_blob(const Omf1Document& document, const JsonValue& colours) {
    return Omf1Document::ClassOf(document.Follow(colours, {"Int3Array", "ColorArray"})) ==
           "Int3Array";
}

Omf1Blob colour_blob(const Omf1Document& document, const JsonValue& colours) {
    Omf1Blob blob = document.Blob(colours, {"Int3Array"});
    if (blob.type != Omf1Blob::Type::Int64) colours.Refuse("refers to no whole numbers");
    return blob;
}

using ListedColours = std::vector<std::optional<Omf1Colour>>;

std::string text_of(double value) {
    return std::isnan(value) ? std::string() : number_text(value);
}
std::string text_of(std::int64_t value) {
    return std::to_string(value);
}

/// What was read for one data, for others over the same bytes: a small file could ask for
/// them without end.
class Arrays {
public:
    template <class T>
    using Decode = T (*)(const File& file, const Omf1Blob& blob, std::size_t count);

    Arrays(const File& file, const Omf1Document& document) : file_(&file), document_(&document) {}

    Omf1Blob Blob(const JsonValue& reference, std::string_view array_class, std::size_t count) {
        Omf1Blob blob = document_->Blob(reference, {array_class});
        check_can_hold(blob, count * sizeof(double));
        return blob;
    }
    template <class T>
    std::shared_ptr<const T> Values(const Omf1Blob& blob, std::size_t count, Decode<T> decode) {
        auto& held = blobs_[{blob.start, blob.length, count, typeid(T)}];
        if (!held) held = std::make_shared<const T>(decode(*file_, blob, count));
        return std::static_pointer_cast<const T>(held);
    }
    std::shared_ptr<const Omf1Texts> Texts(const JsonValue& reference, std::string_view array_class,
                                           std::size_t count) {
        auto& held = texts_[{reference.Text(), count}];
        if (!held) {
            held = std::make_shared<const Omf1Texts>(
                read_texts(document_->Follow(reference, {array_class}), count));
        }
        return held;
    }

private:
    using Place = std::tuple<std::uint64_t, std::uint64_t, std::size_t, std::type_index>;

    const File* file_;
    const Omf1Document* document_;
    std::map<Place, std::shared_ptr<const void>> blobs_;
    std::map<std::pair<std::string, std::size_t>, std::shared_ptr<const Omf1Texts>> texts_;
};

class DataReader {
public:
    DataReader(const File& file, const Omf1Document& document, const DataCounts& counts)
        : arrays_(file, document), document_(&document), counts_(counts) {}

    void Read(const Entry& entry);
    Omf1DataSet Take() && { return std::move(set_); }

private:
    void Add(const std::string& name, ValueAt<std::string> text) {
        set_.data.push_back({name, place_, std::move(text)});
    }
    template <class T>
    void AddItems(const Entry& entry, const Omf1Blob& blob, std::size_t width);
    void AddNumbers(const Entry& entry, std::string_view array_class, std::size_t width);
    void AddColours(const Entry& entry);
    void AddCodes(const Entry& entry);
    void AddTexts(const Entry& entry, std::string_view array_class);
    std::shared_ptr<const Omf1Texts> LegendOf(const Entry& entry);

    Arrays arrays_;
    const Omf1Document* document_;
    DataCounts counts_;
    Omf1DataSet set_;
    // Of the data being read.
    DataPlace place_ = DataPlace::Vertices;
    std::size_t count_ = 0;
};

void DataReader::Read(const Entry& entry) {
    const JsonValue location = entry.object.Get("location");
    if (location.Text() == "vertices") {
        place_ = DataPlace::Vertices;
        count_ = counts_.vertices;
    } else if (location.Text() == "segments" && counts_.segments) {
        place_ = DataPlace::Segments;
        count_ = *counts_.segments;
    } else {
        location.Refuse("is \"" + location.Text() + "\", of which the element has none");
    }
    if (entry.class_name == "ScalarData") {
        AddNumbers(entry, "ScalarArray", 1);
    } else if (entry.class_name == "Vector2Data") {
        AddNumbers(entry, "Vector2Array", 2);
    } else if (entry.class_name == "Vector3Data") {
        AddNumbers(entry, "Vector3Array", 3);
    } else if (entry.class_name == "ColorData") {
        AddColours(entry);
    } else if (entry.class_name == "MappedData") {
        AddCodes(entry);
    } else {
        AddTexts(entry, entry.class_name == "StringData" ? "StringArray" : "DateTimeArray");
    }
}

template <class T>
void DataReader::AddItems(const Entry& entry, const Omf1Blob& blob, std::size_t width) {
    const auto items = arrays_.Values(blob, count_ * width, &inflate_items<T>);
    for (std::size_t c = 0; c < width; ++c) {
        Add(width == 1 ? entry.name : entry.name + "." + "xyz"[c],
            [items, width, c](std::size_t row) { return text_of((*items)[row * width + c]); });
    }
}

void DataReader::AddNumbers(const Entry& entry, std::string_view array_class, std::size_t width) {
    const Omf1Blob blob = arrays_.Blob(entry.array, array_class, count_ * width);
    if (blob.type == Omf1Blob::Type::Int64) {
        AddItems<std::int64_t>(entry, blob, width);
    } else {
        AddItems<double>(entry, blob, width);
    }
}

void DataReader::AddTexts(const Entry& entry, std::string_view array_class) {
    const auto texts = arrays_.Texts(entry.array, array_class, count_);
    Add(entry.name, [texts](std::size_t row) { return texts->At(row); });
}

/// The first legend of texts; null when there is none.
std::shared_ptr<const Omf1Texts> DataReader::LegendOf(const Entry& entry) {
    const std::optional<JsonValue> legends = entry.object.Find("legends");
    for (std::size_t i = 0; legends && i < legends->Size(); ++i) {
        const JsonValue values = document_->Follow(legends->At(i), {"Legend"}).Get("values");
        const JsonValue array = document_->Follow(
            values, {"StringArray", "ColorArray", "DateTimeArray", "ScalarArray"});
        if (Omf1Document::ClassOf(array) != "StringArray") continue;
        return arrays_.Texts(values, "StringArray", array.Get("array").Size());
    }
    return nullptr;
}

void DataReader::AddCodes(const Entry& entry) {
    const Omf1Blob blob = arrays_.Blob(entry.array, "ScalarArray", count_);
    const auto codes = arrays_.Values(blob, count_, &read_codes);
    const auto legend = LegendOf(entry);
    Add(entry.name, [codes, legend](std::size_t row) -> std::string {
        const std::int32_t code = (*codes)[row];
        if (code == kNoCode) return {};
        const auto place = static_cast<std::size_t>(code);
        return legend && place < legend->ends.size() ? legend->At(place) : std::to_string(code);
    });
}

void DataReader::AddColours(const Entry& entry) {
    if (is_blob(*document_, entry.array)) {
        const Omf1Blob blob = colour_blob(*document_, entry.array);
        check_can_hold(blob, 3 * count_ * sizeof(std::int64_t));
        const auto colours = arrays_.Values(blob, count_, &read_colours);
        if (set_.colours) {
            Add(entry.name, [colours](std::size_t row) { return colour_text((*colours)[row]); });
            return;
        }
        set_.colours = Omf1Colours{
            place_, [colours](std::size_t row) { return std::optional((*colours)[row]); }};
    } else if (set_.colours) {
        AddTexts(entry, "ColorArray");
    } else {
        const auto colours = std::make_shared<const ListedColours>(
            read_listed_colours(document_->Follow(entry.array, {"ColorArray"})));
        if (colours->size() != count_) {
            entry.array.Refuse("refers to " + std::to_string(colours->size()) + " colours, " +
                               std::to_string(count_) + " are expected");
        }
        set_.colours = Omf1Colours{place_, [colours](std::size_t row) { return (*colours)[row]; }};
    }
}

}  // namespace

Omf1DataSet read_omf1_data(const File& file, const Omf1Document& document, const JsonValue& element,
                           const DataCounts& counts) {
    DataReader reader(file, document, counts);
    for (const Entry& entry : entries_of(document, element)) reader.Read(entry);
    return std::move(reader).Take();
}

void for_each_colour(const File& file, const Omf1Document& document, const JsonValue& element,
                     const std::function<void(const Omf1Colour&)>& take) {
    for (const Entry& entry : entries_of(document, element)) {
        if (entry.class_name != "ColorData") continue;
        if (is_blob(document, entry.array)) {
            GrowingArray<std::array<std::int64_t, 3>> rows;
            rows.SetSize(inflate_rows(file, colour_blob(document, entry.array),
                                      3 * sizeof(std::int64_t), rows));
            for (const auto& row : rows.View()) take(clipped(row));
            return;
        }
        for (const auto& colour :
             read_listed_colours(document.Follow(entry.array, {"ColorArray"}))) {
            if (colour) take(*colour);
        }
        return;
    }
}

}  // namespace zol::engine::design
