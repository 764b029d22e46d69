#include "engine/block/omf1_variables.h"

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>

#include "engine/block/omf1_columns.h"
#include "engine/block/unique_names.h"
#include "engine/formats/diagnostics.h"
#include "engine/formats/read_error.h"

namespace zol::engine::block {

namespace {

// Data may share a legend, so the size of the file does not bound their names.
constexpr std::size_t kMostBytesOfNames = std::size_t{256} << 20;

std::string optional_text(const JsonValue& object, std::string_view key) {
    const std::optional<JsonValue> value = object.Find(key);
    return value ? value->Text() : std::string();
}

class VariableReader {
public:
    VariableReader(std::shared_ptr<const File> file, const Omf1Document& document,
                   std::int64_t n_blocks)
        : path_(file->Path()), document_(document), columns_(std::move(file), document, n_blocks) {}

    /// `ordinal` counts from 1.
    void Read(const JsonValue& reference, std::size_t ordinal);

    std::vector<Variable> Variables() && { return std::move(variables_); }

private:
    Variable& Add(const std::string& name, Storage storage, std::unique_ptr<Column> column);
    void AddNumbers(const JsonValue& array, std::string_view array_class);
    void AddVectors(const JsonValue& array, std::string_view array_class, std::size_t width);
    void AddColours(const JsonValue& array);
    void AddCodes(const JsonValue& data, const JsonValue& array);
    std::vector<Translation> ReadLegends(const JsonValue& data);
    void AddTranslation(std::vector<Translation>& translations, std::string name);

    std::string path_;
    const Omf1Document& document_;
    Omf1Columns columns_;
    UniqueNames names_;
    std::vector<Variable> variables_;
    std::size_t bytes_of_names_ = 0;
    // Of the data being read.
    std::string name_;
    std::string description_;
};

void VariableReader::Read(const JsonValue& reference, std::size_t ordinal) {
    const JsonValue data =
        document_.Follow(reference, {"ScalarData", "Vector2Data", "Vector3Data", "ColorData",
                                     "StringData", "DateTimeData", "MappedData"});
    name_ = name_or_ordinal(optional_text(data, "name"), ordinal);
    description_ = optional_text(data, "description");
    const std::string location = data.Get("location").Text();
    if (location != "cells") {
        report(path_, "\"" + name_ + "\" belongs to " + location +
                          ", not to cells; it is no variable of the blocks");
        return;
    }
    const JsonValue array = data.Get("array");
    const std::string class_name = Omf1Document::ClassOf(data);
    if (class_name == "ScalarData") {
        AddNumbers(array, "ScalarArray");
    } else if (class_name == "Vector2Data") {
        AddVectors(array, "Vector2Array", 2);
    } else if (class_name == "Vector3Data") {
        AddVectors(array, "Vector3Array", 3);
    } else if (class_name == "ColorData") {
        AddColours(array);
    } else if (class_name == "StringData" || class_name == "DateTimeData") {
        Add(name_, Storage::Text,
            columns_.MakeTexts(array,
                               class_name == "StringData" ? "StringArray" : "DateTimeArray"));
    } else {
        AddCodes(data, array);
    }
}

Variable& VariableReader::Add(const std::string& name, Storage storage,
                              std::unique_ptr<Column> column) {
    Variable variable;
    variable.name = names_.Take(name);
    if (variable.name != name) {
        report(path_, "the name \"" + name + "\" is taken or too long; its variable is called \"" +
                          variable.name + "\"");
    }
    variable.description = description_;
    variable.storage = storage;
    variable.column = std::move(column);
    variables_.push_back(std::move(variable));
    return variables_.back();
}

void VariableReader::AddNumbers(const JsonValue& array, std::string_view array_class) {
    Omf1Columns::Numbers numbers = columns_.MakeNumbers(name_, array, array_class, 1);
    Add(name_, numbers.storage, std::move(numbers.components.front()));
}

void VariableReader::AddVectors(const JsonValue& array, std::string_view array_class,
                                std::size_t width) {
    Omf1Columns::Numbers numbers = columns_.MakeNumbers(name_, array, array_class, width);
    for (std::size_t i = 0; i < width; ++i) {
        Add(name_ + "." + "xyz"[i], numbers.storage, std::move(numbers.components[i]));
    }
}

void VariableReader::AddColours(const JsonValue& array) {
    const JsonValue object = document_.Follow(array, {"Int3Array", "ColorArray"});
    Add(name_, Storage::Text,
        Omf1Document::ClassOf(object) == "Int3Array" ? columns_.MakeColours(name_, array)
                                                     : columns_.MakeTexts(array, "ColorArray"));
}

void VariableReader::AddCodes(const JsonValue& data, const JsonValue& array) {
    std::vector<Translation> translations = ReadLegends(data);
    Add(name_, Storage::Integer, columns_.MakeCodes(name_, array)).translations =
        std::move(translations);
}

// Names from the first legend of texts; without one they are made, as many as the
// longest legend of colours or dates has entries. A legend of numbers is a
// compressed array, which opening a file does not read.
std::vector<Translation> VariableReader::ReadLegends(const JsonValue& data) {
    std::vector<Translation> translations;
    const std::optional<JsonValue> legends = data.Find("legends");
    if (!legends) return translations;
    std::size_t longest = 0;
    for (std::size_t i = 0; i < legends->Size(); ++i) {
        const JsonValue legend = document_.Follow(legends->At(i), {"Legend"});
        const JsonValue values = document_.Follow(
            legend.Get("values"), {"StringArray", "ColorArray", "DateTimeArray", "ScalarArray"});
        const std::string values_class = Omf1Document::ClassOf(values);
        if (values_class == "ScalarArray") continue;
        const JsonValue list = values.Get("array");
        longest = std::max(longest, list.Size());
        if (values_class != "StringArray") continue;
        for (std::size_t n = 0; n < list.Size(); ++n) {
            AddTranslation(translations, list.At(n).Text());
        }
        return translations;
    }
    for (std::size_t n = 0; n < longest; ++n) {
        AddTranslation(translations, "Category" + std::to_string(n));
    }
    return translations;
}

void VariableReader::AddTranslation(std::vector<Translation>& translations, std::string name) {
    bytes_of_names_ += name.size() + sizeof(Translation);
    if (bytes_of_names_ > kMostBytesOfNames) {
        throw ReadError("the legends of the element hold more than 256 MiB of names");
    }
    const auto code = static_cast<std::int64_t>(translations.size());
    translations.push_back({code, std::move(name)});
}

}  // namespace

std::vector<Variable> read_omf1_variables(std::shared_ptr<const File> file,
                                          const Omf1Document& document, const JsonValue& element,
                                          std::int64_t n_blocks) {
    VariableReader reader(std::move(file), document, n_blocks);
    const std::optional<JsonValue> list = element.Find("data");
    if (list) {
        std::unordered_set<std::string> seen;
        for (std::size_t i = 0; i < list->Size(); ++i) {
            // Data that are listed twice are one variable.
            if (seen.insert(list->At(i).Text()).second) reader.Read(list->At(i), i + 1);
        }
    }
    return std::move(reader).Variables();
}

}  // namespace zol::engine::block
