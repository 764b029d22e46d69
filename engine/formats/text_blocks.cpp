#include "engine/formats/text_blocks.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>

#include "engine/formats/parallel.h"
#include "engine/formats/read_error.h"
#include "engine/formats/row_reader.h"
#include "engine/formats/short_decimal.h"

namespace zol::engine {

namespace {

// Small enough that a value far from the last one costs little, large enough that
// the list of blocks stays short: 100 GB make 400,000.
constexpr std::size_t kBlockBytes = std::size_t{256} << 10;
// A row beyond this is no row of a table, but a file without row ends or quotes that close.
constexpr std::size_t kLongestRow = std::size_t{64} << 20;

char* rows_in(std::vector<char>& buffer) {
    return buffer.data() + kBytesBefore;
}

}  // namespace

TextBlocks::TextBlocks(std::shared_ptr<const File> file, const TextDialect& dialect,
                       std::uint64_t begin)
    : file_(std::move(file)), dialect_(dialect), begin_(begin) {}

// Length of the whole rows at the start of a text that goes on behind its end; 0 when
// it doesn't hold one row end.
std::size_t TextBlocks::WholeRows(std::string_view text, std::uint64_t offset) const {
    const bool has_quotes = dialect_.quote != 0 && text.find(dialect_.quote) != text.npos;
    if (!has_quotes) {
        const std::size_t last = text.rfind(dialect_.row_end);
        return last == text.npos ? 0 : last + 1;
    }
    RowReader reader(text, dialect_);
    CellList cells;
    std::size_t whole = 0;
    for (;;) {
        const RowReader::Outcome outcome = reader.Next(cells);
        if (outcome == RowReader::Outcome::TextBehindQuote) {
            throw ReadError("line " + std::to_string(LineOf(offset + reader.RowBegin())) +
                            ": text stands behind a closing quote");
        }
        if (outcome != RowReader::Outcome::Row || !reader.RowIsClosed()) {
            return whole;
        }
        whole = reader.RowEnd();
    }
}

bool TextBlocks::Cut(std::uint64_t offset, std::vector<char>& buffer, std::size_t& length) const {
    for (std::size_t size = kBlockBytes;; size *= 4) {
        if (buffer.size() < kBytesBefore + size) {
            buffer.resize(kBytesBefore + size);
        }
        const std::size_t got = file_->ReadAt(offset, rows_in(buffer), size);
        if (got < size) {
            length = got;
            return got > 0;
        }
        length = WholeRows({rows_in(buffer), got}, offset);
        if (length > 0) {
            return true;
        }
        if (size >= kLongestRow) {
            throw ReadError("line " + std::to_string(LineOf(offset)) + ": a row of more than " +
                            std::to_string(kLongestRow >> 20) +
                            " MiB; is there a quote that is never closed?");
        }
    }
}

void TextBlocks::ReadAll(unsigned workers, const Visit& visit) {
    struct Failure {
        std::size_t block;
        std::exception_ptr what;
    };
    std::mutex turn;
    std::uint64_t next_offset = begin_;
    std::vector<std::size_t> row_counts;
    Failure first_failure{0, nullptr};

    // Workers take turns at cutting the next block, which costs little, and work on
    // their blocks at the same time. Blocks before a failed one were cut before it and
    // are still finished, so that the same file always gives the same reason.
    run_workers(workers, [&](unsigned worker) {
        std::vector<char> buffer;
        for (;;) {
            Text text{};
            try {
                const std::scoped_lock lock(turn);
                std::size_t length = 0;
                text.block = blocks_.size();
                if (first_failure.what || !Cut(next_offset, buffer, length)) {
                    return;
                }
                text.offset = next_offset;
                text.rows = {rows_in(buffer), length};
                blocks_.push_back({next_offset, length, 0});
                row_counts.push_back(0);
                next_offset += length;
            } catch (...) {
                const std::scoped_lock lock(turn);
                if (!first_failure.what) {
                    first_failure = {text.block, std::current_exception()};
                }
                return;
            }
            try {
                const std::size_t rows = visit(worker, text);
                const std::scoped_lock lock(turn);
                row_counts[text.block] = rows;
            } catch (...) {
                const std::scoped_lock lock(turn);
                if (!first_failure.what || text.block < first_failure.block) {
                    first_failure = {text.block, std::current_exception()};
                }
            }
        }
    });
    if (first_failure.what) {
        std::rethrow_exception(first_failure.what);
    }
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
        blocks_[i].first_row = rows_;
        rows_ += row_counts[i];
    }
}

std::uint64_t TextBlocks::RowsIn(std::size_t block) const {
    const std::uint64_t next = block + 1 < blocks_.size() ? blocks_[block + 1].first_row : rows_;
    return next - blocks_[block].first_row;
}

std::size_t TextBlocks::BlockOfRow(std::uint64_t row) const {
    const auto behind =
        std::upper_bound(blocks_.begin(), blocks_.end(), row,
                         [](std::uint64_t r, const Block& block) { return r < block.first_row; });
    return static_cast<std::size_t>(behind - blocks_.begin()) - 1;
}

TextBlocks::Text TextBlocks::Load(std::size_t block, std::vector<char>& buffer) const {
    if (!file_->IsUnchanged()) {
        throw ReadError("the file has changed since it was opened; its values are missing now");
    }
    const Block& place = blocks_[block];
    buffer.resize(std::max(buffer.size(), kBytesBefore + place.bytes));
    if (file_->ReadAt(place.offset, rows_in(buffer), place.bytes) != place.bytes) {
        throw ReadError("the file became shorter while it was read");
    }
    return {block, place.offset, {rows_in(buffer), place.bytes}};
}

std::uint64_t TextBlocks::LineOf(std::uint64_t offset) const {
    std::uint64_t lines = 1;
    std::vector<char> buffer(kBlockBytes);
    for (std::uint64_t at = 0; at < offset;) {
        const auto wanted =
            static_cast<std::size_t>(std::min<std::uint64_t>(kBlockBytes, offset - at));
        const std::size_t got = file_->ReadAt(at, buffer.data(), wanted);
        if (got == 0) {
            break;
        }
        lines += static_cast<std::uint64_t>(
            std::count(buffer.data(), buffer.data() + got, dialect_.row_end));
        at += got;
    }
    return lines;
}

}  // namespace zol::engine
