#include "engine/formats/table_survey.h"

#include <algorithm>

#include "engine/formats/parallel.h"
#include "engine/formats/surveyor.h"

namespace zol::engine {

void ColumnSurvey::AddText(std::string_view text, std::uint64_t offset) {
    // Blocks reach one worker in the order of the file.
    if (texts++ == 0) {
        first_text = shown(text);
        first_text_offset = offset;
    }
}

bool ColumnSurvey::HasStrayText() const {
    return has_number && texts > 0 && texts < kFewTexts;
}

void ColumnSurvey::Merge(const ColumnSurvey& other) {
    if (other.HasText() && (!HasText() || other.first_text_offset < first_text_offset)) {
        first_text = other.first_text;
        first_text_offset = other.first_text_offset;
    }
    texts += other.texts;
    has_comma = has_comma || other.has_comma;
    has_number = has_number || other.has_number;
    has_fraction = has_fraction || other.has_fraction;
    least_whole = std::min(least_whole, other.least_whole);
    greatest_whole = std::max(greatest_whole, other.greatest_whole);
}

TableSurvey survey_table(TextBlocks& blocks, const std::vector<CellFormat>& formats,
                         const std::vector<std::size_t>& watched,
                         const std::function<std::unique_ptr<RowWatcher>()>& make_watcher) {
    std::vector<std::unique_ptr<Surveyor>> surveyors;
    for (unsigned i = 0; i < worker_count(); ++i) {
        surveyors.push_back(std::make_unique<Surveyor>(blocks, formats, watched,
                                                       make_watcher ? make_watcher() : nullptr));
    }
    blocks.ReadAll(worker_count(), [&](unsigned worker, const TextBlocks::Text& text) {
        return surveyors[worker]->Read(text);
    });
    TableSurvey survey;
    survey.columns.resize(formats.size());
    for (const auto& surveyor : surveyors) {
        for (std::size_t i = 0; i < formats.size(); ++i) {
            survey.columns[i].Merge(surveyor->Columns()[i]);
        }
        if (make_watcher) {
            survey.watchers.push_back(surveyor->TakeWatcher());
        }
    }
    return survey;
}

std::string shown(std::string_view text) {
    constexpr std::size_t kMost = 80;
    std::string quoted = "'";
    quoted += text.substr(0, kMost);
    quoted += text.size() > kMost ? "...'" : "'";
    return quoted;
}

}  // namespace zol::engine
