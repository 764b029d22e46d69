#include "engine/block/text_variables.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>
#include <utility>

#include "engine/block/narrow_floats.h"
#include "engine/formats/diagnostics.h"
#include "engine/formats/number_text.h"
#include "engine/formats/read_error.h"
#include "support/floating_point.h"

namespace zol::engine::block {

namespace {

struct Range {
    std::int64_t least;
    std::int64_t greatest;
};

template <class Whole>
constexpr Range kRangeOf{std::numeric_limits<Whole>::min(), std::numeric_limits<Whole>::max()};

Range range_of(Storage storage) {
    switch (storage) {
        case Storage::Bit:
            return {0, 1};
        case Storage::Byte:
            // Writers disagree on whether a byte has a sign.
            return {kRangeOf<std::int8_t>.least, std::numeric_limits<std::uint8_t>::max()};
        case Storage::Short:
            return kRangeOf<std::int16_t>;
        case Storage::Integer:
            return kRangeOf<std::int32_t>;
        default:
            return kRangeOf<std::int64_t>;
    }
}

bool is_whole(Storage storage) {
    return storage == Storage::Bit || storage == Storage::Byte || storage == Storage::Short ||
           storage == Storage::Integer || storage == Storage::Int64;
}

bool is_coded_text(const FieldSpec& field) {
    return field.kind == CellFormat::Kind::Text && !field.translations.empty();
}

class NumberColumn final : public Column {
public:
    NumberColumn(std::shared_ptr<TextColumns> columns, std::size_t index, Storage storage)
        : columns_(std::move(columns)), index_(index), storage_(storage) {}

    double Number(std::int64_t block) override {
        const double value = columns_->Number(index_, static_cast<std::uint64_t>(block));
        switch (storage_) {
            case Storage::Float: {
                const support::UsualFloatingPoint usual;
                return rounded_to_float(value);
            }
            case Storage::SFloat: {
                const support::UsualFloatingPoint usual;
                return rounded_to_half(value);
            }
            default:
                return value;
        }
    }

    bool IsLost(std::int64_t block) override {
        return columns_->IsLost(index_, static_cast<std::uint64_t>(block));
    }

    std::string Text(std::int64_t block) override {
        std::int64_t whole = 0;
        if (is_whole(storage_) &&
            columns_->Whole(index_, static_cast<std::uint64_t>(block), whole)) {
            return std::to_string(whole);
        }
        const double value = Number(block);
        if (std::isnan(value)) {
            return {};
        }
        const bool narrow = storage_ == Storage::Float || storage_ == Storage::SFloat;
        return narrow ? number_text(static_cast<float>(value)) : number_text(value);
    }

private:
    std::shared_ptr<TextColumns> columns_;
    std::size_t index_;
    Storage storage_;
};

// Texts; of a classification, each has a code.
class WordColumn final : public Column {
public:
    WordColumn(std::shared_ptr<TextColumns> columns, std::size_t index,
               const std::vector<Translation>& translations)
        : columns_(std::move(columns)), index_(index) {
        for (const Translation& translation : translations) {
            codes_.try_emplace(translation.name, static_cast<double>(translation.code));
        }
    }

    double Number(std::int64_t block) override {
        if (codes_.empty()) {
            return kMissing;
        }
        // Reused, so that a walk allocates only for longer texts.
        word_ = columns_->Text(index_, static_cast<std::uint64_t>(block));
        const auto code = codes_.find(word_);
        return code == codes_.end() ? kMissing : code->second;
    }

    bool IsLost(std::int64_t block) override {
        return columns_->IsLost(index_, static_cast<std::uint64_t>(block));
    }

    std::string Text(std::int64_t block) override {
        return std::string(columns_->Text(index_, static_cast<std::uint64_t>(block)));
    }

private:
    std::shared_ptr<TextColumns> columns_;
    std::size_t index_;
    std::unordered_map<std::string, double> codes_;
    std::string word_;
};

}  // namespace

std::vector<TextColumn> match_columns(const std::vector<std::string>& names,
                                      const TextSidecar& sidecar, const std::string& file) {
    std::vector<TextColumn> columns(names.size());
    const bool by_order = std::all_of(names.begin(), names.end(),
                                      [](const std::string& name) { return name.empty(); });
    for (std::size_t i = 0; i < names.size(); ++i) {
        columns[i].header = names[i].empty() ? "column " + std::to_string(i + 1) : names[i];
    }
    for (std::size_t i = 0; i < sidecar.fields.size(); ++i) {
        const FieldSpec& field = sidecar.fields[i];
        const std::string& header = field.header.empty() ? field.name : field.header;
        std::size_t at = i;
        if (!by_order) {
            const auto named = std::find(names.begin(), names.end(), header);
            at = static_cast<std::size_t>(named - names.begin());
        }
        if (at >= columns.size() || columns[at].has_field) {
            throw ReadError("the sidecar names a field " + shown(header) +
                            " that the table has no column for");
        }
        columns[at].field = field;
        columns[at].has_field = true;
        columns[at].header = by_order ? field.name : columns[at].header;
    }
    const auto bearer_of = [&](const ColumnRole& role, const TextColumn& but) {
        return std::find_if(columns.begin(), columns.end(), [&](const TextColumn& other) {
            return &other != &but && other.role == role && role.role != Role::None;
        });
    };
    const auto report_second = [&](const TextColumn& second, const TextColumn& first) {
        report(file, "column " + shown(second.header) + " and column " + shown(first.header) +
                         " have one role; the latter places the blocks, the former is a variable");
    };
    // What the sidecar says of roles goes before what headers look like.
    for (TextColumn& column : columns) {
        if (!column.field.role) {
            continue;
        }
        const auto first = bearer_of(*column.field.role, column);
        if (first == columns.end()) {
            column.role = *column.field.role;
        } else {
            column.field.role = ColumnRole{};
            report_second(column, *first);
        }
    }
    for (TextColumn& column : columns) {
        const ColumnRole role = role_of_header(column.header);
        if (column.field.role || role.role == Role::None) {
            continue;
        }
        const auto first = bearer_of(role, column);
        if (first == columns.end()) {
            column.role = role;
        } else {
            report_second(column, *first);
        }
    }
    return columns;
}

CellFormat survey_format(const TextColumn& column, const TextSidecar& sidecar, char decimal_point) {
    const FieldSpec& field = column.field;
    CellFormat format;
    format.name = column.header;
    format.decimal_point = field.decimal_point.value_or(decimal_point);
    format.group_mark = field.group_mark;
    format.bare_number = field.bare_number;
    if (field.missing) {
        format.missing = MissingTexts(*field.missing);
    } else if (sidecar.missing) {
        format.missing = MissingTexts(*sidecar.missing);
    }
    if (column.is_geometry) {
        format.kind = CellFormat::Kind::Number;
        return format;
    }
    format.kind = field.kind;
    if (field.storage && format.kind != CellFormat::Kind::Boolean) {
        format.kind = *field.storage == Storage::Text ? CellFormat::Kind::Text
                      : is_coded_text(field)          ? CellFormat::Kind::Text
                      : is_whole(*field.storage)      ? CellFormat::Kind::Whole
                                                      : CellFormat::Kind::Number;
    }
    const Range range = range_of(field.storage.value_or(
        format.kind == CellFormat::Kind::Whole ? Storage::Integer : Storage::Int64));
    format.least = range.least;
    format.greatest = range.greatest;
    return format;
}

Storage settle_storage(const TextColumn& column, const ColumnSurvey& survey, CellFormat& format) {
    const bool guessed = format.kind == CellFormat::Kind::Guess;
    if (guessed) {
        const bool mixed_points = survey.has_comma && survey.has_fraction;
        format.kind =
            survey.HasText() || mixed_points ? CellFormat::Kind::Text : CellFormat::Kind::Number;
        format.decimal_point = survey.has_comma ? ',' : format.decimal_point;
    }
    if (column.field.storage) {
        return is_coded_text(column.field) ? Storage::Integer : *column.field.storage;
    }
    switch (format.kind) {
        case CellFormat::Kind::Text:
            return column.field.translations.empty() ? Storage::Text : Storage::Integer;
        case CellFormat::Kind::Boolean:
            return Storage::Bit;
        case CellFormat::Kind::Whole:
            return Storage::Integer;
        default:
            break;
    }
    if (!guessed || !survey.has_number || survey.has_fraction || survey.has_comma) {
        return Storage::Double;
    }
    const Range integer = range_of(Storage::Integer);
    const bool fits =
        survey.least_whole >= integer.least && survey.greatest_whole <= integer.greatest;
    return fits ? Storage::Integer : Storage::Int64;
}

namespace {

// Fills both answers for a missing value from the one that the sidecar states.
void settle_default(const FieldSpec& field, Variable& variable) {
    const bool has_text = !field.default_text.empty();
    const bool has_number = !std::isnan(field.default_number);
    const auto refuse = [&] {
        throw ReadError("the sidecar's block:default of the field " + shown(field.name) + " is " +
                        shown(field.default_text) + ", which is " +
                        (variable.IsClassification() ? "none of its translations" : "no number"));
    };
    if (variable.IsText()) {
        variable.default_text = has_number ? number_text(field.default_number) : field.default_text;
        return;
    }
    variable.default_number = field.default_number;
    if (variable.IsClassification()) {
        // Stated as a code or as its name; callers see both.
        const auto& names = variable.translations;
        const auto known = std::find_if(names.begin(), names.end(), [&](const Translation& entry) {
            return has_text ? entry.name == field.default_text
                            : static_cast<double>(entry.code) == field.default_number;
        });
        if (known != names.end()) {
            variable.default_number = static_cast<double>(known->code);
            variable.default_text = known->name;
            return;
        }
        if (has_text) {
            refuse();
        }
    } else if (has_text) {
        Decimal number;
        if (!read_decimal(field.default_text, '.', number)) {
            refuse();
        }
        variable.default_number = number.Value();
    }
    if (!std::isnan(variable.default_number)) {
        variable.default_text = number_text(variable.default_number);
    }
}

}  // namespace

Variable make_variable(const TextColumn& column, std::size_t index, std::string name,
                       Storage storage, const std::shared_ptr<TextColumns>& columns) {
    const FieldSpec& field = column.field;
    Variable variable;
    variable.name = std::move(name);
    variable.description = field.description;
    variable.storage = storage;
    variable.translations = field.translations;
    settle_default(field, variable);
    if (columns->Format(index).kind == CellFormat::Kind::Text) {
        variable.column = std::make_unique<WordColumn>(columns, index, variable.translations);
    } else {
        variable.column = std::make_unique<NumberColumn>(columns, index, storage);
    }
    return variable;
}

}  // namespace zol::engine::block
