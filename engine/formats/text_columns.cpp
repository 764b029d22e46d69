#include "engine/formats/text_columns.h"

#include <algorithm>
#include <atomic>

#include "engine/formats/diagnostics.h"
#include "engine/formats/parallel.h"
#include "engine/formats/read_error.h"
#include "engine/formats/row_reader.h"
#include "engine/formats/text_encoding.h"
#include "support/floating_point.h"

namespace zol::engine {

namespace {

// Blocks that a walk decodes ahead for each worker: enough to outweigh the starting
// of threads, few enough that the first value of a block is soon there.
constexpr std::size_t kAheadPerWorker = 8;

}  // namespace

std::size_t TextColumns::Run::Bytes() const {
    return sizeof(Run) + numbers.Bytes() + texts.Bytes();
}

TextColumns::TextColumns(TextBlocks blocks, std::vector<CellFormat> formats, std::string encoding)
    : blocks_(std::move(blocks)),
      formats_(std::move(formats)),
      encoding_(std::move(encoding)),
      columns_(formats_.size()) {}

double TextColumns::NumberInRun(std::size_t column, std::uint64_t row) {
    const support::UsualFloatingPoint usual;
    Column& asked = columns_[column];
    const bool walks_on = asked.rows > 0 && row == asked.first_row + asked.rows;
    std::size_t index = 0;
    const PackedNumbers& numbers = RunOf(column, row, index).numbers;
    if (walks_on) {
        // Unpacked at one go, the numbers of a walk cost a look each.
        numbers.CopyTo(asked.window);
    }
    return numbers.At(index);
}

bool TextColumns::Whole(std::size_t column, std::uint64_t row, std::int64_t& whole) {
    std::size_t index = 0;
    return RunOf(column, row, index).numbers.WholeAt(index, whole);
}

std::string_view TextColumns::Text(std::size_t column, std::uint64_t row) {
    std::size_t index = 0;
    return RunOf(column, row, index).texts.At(index);
}

bool TextColumns::IsLost(std::size_t column, std::uint64_t row) {
    std::size_t index = 0;
    return RunOf(column, row, index).lost;
}

const TextColumns::Run& TextColumns::RunOf(std::size_t column, std::uint64_t row,
                                           std::size_t& index) {
    Column& asked = columns_[column];
    index = row - asked.first_row;
    if (asked.current != nullptr && index < asked.rows) {
        return *asked.current;
    }
    const std::size_t block = blocks_.BlockOfRow(row);
    asked.asked = true;
    asked.runs.resize(blocks_.Count());
    if (!asked.runs[block]) {
        const bool walking = block == next_in_walk_ && block != 0;
        ahead_ = walking ? std::min(ahead_ * 2, kAheadPerWorker * worker_count()) : 1;
        const std::size_t behind = std::min(block + ahead_, blocks_.Count());
        Decode(block, behind);
        KeepWithinLimit(block, behind);
        next_in_walk_ = behind;
    }
    asked.window.clear();
    asked.current = asked.runs[block].get();
    asked.first_row = blocks_.FirstRow(block);
    asked.rows = blocks_.RowsIn(block);
    index = row - asked.first_row;
    return *asked.current;
}

// Reads the cells of one column, one block after the other.
class TextColumns::Decoder {
public:
    Decoder(const TextColumns& table, std::size_t column)
        : column_(column),
          format_(table.formats_[column]),
          is_text_(format_.kind == CellFormat::Kind::Text),
          is_usual_(format_.HasUsualNumbers() && !format_.missing.HasNumbers()),
          table_(table) {}

    void Add(const TextCell& cell) { is_text_ ? AddText(cell) : AddNumber(cell); }
    void AddRows(const PlainRows& plain) {
        PlainRows::ColumnCells cells = plain.CellsFrom(0, column_);
        for (std::size_t row = 0; row < plain.Count(); ++row) {
            Add(cells.Next());
        }
    }

    std::size_t Column() const { return column_; }
    std::unique_ptr<Run> Finish() {
        auto run = std::make_unique<Run>();
        run->numbers = numbers_.Finish();
        run->texts = texts_.Finish();
        return run;
    }

private:
    void AddNumber(const TextCell& cell) {
        Decimal number;
        const bool is_usual =
            is_usual_ && read_short_decimal(cell.begin, cell.end, format_.decimal_point, number);
        if (is_usual || read_any_cell(cell, format_, number) == CellContent::Number) {
            numbers_.Add(number);
        } else {
            numbers_.AddMissing();
        }
    }

    void AddText(const TextCell& cell) {
        // A quoted cell and a bare one of the same letters may say different things: the
        // opening quote tells them apart.
        const std::size_t quote = cell.quoted ? 1 : 0;
        const std::string_view letters(cell.begin - quote, cell.Raw().size() + quote);
        texts_.Add(letters, [&] { return TextOf(cell); });
    }

    std::string TextOf(const TextCell& cell) const {
        Decimal number;
        return read_cell(cell, format_, number) == CellContent::Missing
                   ? std::string()
                   : to_utf8(cell_text(cell, table_.blocks_.Dialect()), table_.encoding_);
    }

    std::size_t column_;
    const CellFormat& format_;
    bool is_text_;
    // Most cells are told to be numbers without looking at what is missing.
    bool is_usual_;
    const TextColumns& table_;
    NumberPacker numbers_;
    TextPacker texts_;
};

void TextColumns::Decode(std::size_t first_block, std::size_t behind) {
    // Worker threads take the mode of this one.
    const support::UsualFloatingPoint usual;
    std::vector<std::pair<std::size_t, std::size_t>> wanted;
    for (std::size_t column = 0; column < columns_.size(); ++column) {
        if (!columns_[column].asked) {
            continue;
        }
        columns_[column].runs.resize(blocks_.Count());
        for (std::size_t block = first_block; block < behind; ++block) {
            if (!columns_[column].runs[block]) {
                wanted.emplace_back(column, block);
            }
        }
    }
    try {
        std::atomic<std::size_t> next = first_block;
        const auto jobs = static_cast<unsigned>(std::min<std::size_t>(behind - first_block, 64));
        const unsigned workers = std::min(worker_count(), jobs);
        scratches_.resize(std::max<std::size_t>(scratches_.size(), workers));
        run_workers(workers, [&](unsigned worker) {
            std::vector<Decoder> decoders;
            for (std::size_t i = 0; i < columns_.size(); ++i) {
                if (columns_[i].asked) {
                    decoders.emplace_back(*this, i);
                }
            }
            for (std::size_t block = next++; block < behind; block = next++) {
                DecodeBlock(block, scratches_[worker], decoders);
            }
        });
    } catch (const ReadError& error) {
        MakeMissing(first_block, behind, error.what());
    }
    for (const auto& [column, block] : wanted) {
        kept_.emplace_back(column, block);
        kept_bytes_ += columns_[column].runs[block]->Bytes();
    }
}

void TextColumns::DecodeBlock(std::size_t block, Scratch& scratch, std::vector<Decoder>& decoders) {
    const TextBlocks::Text text = blocks_.Load(block, scratch.buffer);
    std::vector<Decoder*> wanted;
    for (Decoder& decoder : decoders) {
        if (!columns_[decoder.Column()].runs[block]) {
            wanted.push_back(&decoder);
        }
    }
    PlainRows& plain = scratch.plain;
    std::uint64_t rows = 0;
    if (plain.Read(text.rows, blocks_.Dialect(), formats_.size())) {
        rows = plain.Count();
        for (Decoder* const decoder : wanted) {
            decoder->AddRows(plain);
        }
    } else {
        RowReader reader(text.rows, blocks_.Dialect());
        CellList cells;
        while (reader.Next(cells) == RowReader::Outcome::Row && cells.size() >= formats_.size()) {
            for (Decoder* const decoder : wanted) {
                decoder->Add(cells[decoder->Column()]);
            }
            ++rows;
        }
    }
    if (rows != blocks_.RowsIn(block)) {
        throw ReadError("the file has changed since it was opened; its values are missing now");
    }
    for (Decoder* const decoder : wanted) {
        columns_[decoder->Column()].runs[block] = decoder->Finish();
    }
}

void TextColumns::MakeMissing(std::size_t first_block, std::size_t behind,
                              const std::string& reason) {
    if (!reported_) {
        report(blocks_.SourceFile().Path(), reason);
        reported_ = true;
    }
    for (std::size_t column = 0; column < columns_.size(); ++column) {
        if (!columns_[column].asked) {
            continue;
        }
        for (std::size_t block = first_block; block < behind; ++block) {
            if (columns_[column].runs[block]) {
                continue;
            }
            NumberPacker numbers;
            TextPacker texts;
            for (std::uint64_t row = 0; row < blocks_.RowsIn(block); ++row) {
                numbers.AddMissing();
                texts.Add({}, [] { return std::string(); });
            }
            auto run = std::make_unique<Run>();
            run->numbers = numbers.Finish();
            run->texts = texts.Finish();
            run->lost = true;
            columns_[column].runs[block] = std::move(run);
        }
    }
}

void TextColumns::KeepWithinLimit(std::size_t wanted_from, std::size_t wanted_behind) {
    while (kept_bytes_ > limit_ && !kept_.empty()) {
        const auto [column, block] = kept_.front();
        if (block >= wanted_from && block < wanted_behind) {
            break;
        }
        kept_.pop_front();
        std::unique_ptr<Run>& run = columns_[column].runs[block];
        if (!run) {
            continue;
        }
        if (columns_[column].current == run.get()) {
            columns_[column].current = nullptr;
            columns_[column].window.clear();
        }
        kept_bytes_ -= run->Bytes();
        run.reset();
    }
}

}  // namespace zol::engine
