// A delimited text file cut into blocks of whole rows, so that any row is found
// again without reading what stands before it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/formats/file.h"
#include "engine/formats/text_dialect.h"

namespace zol::engine {

class TextBlocks {
public:
    /// `begin` is the offset of the first row of data.
    TextBlocks(std::shared_ptr<const File> file, const TextDialect& dialect, std::uint64_t begin);

    struct Text {
        std::size_t block;
        std::uint64_t offset;
        /// The kBytesBefore bytes in front may be read too, but say nothing.
        std::string_view rows;
    };
    /// Takes a block's text apart in worker number `worker` and gives its count of rows.
    using Visit = std::function<std::size_t(unsigned worker, const Text& text)>;

    /// Reads the file once, from the first row to the last; afterwards Count, Rows and
    /// the rest answer. When visits throw, the failure of the earliest block is thrown.
    void ReadAll(unsigned workers, const Visit& visit);

    std::size_t Count() const { return blocks_.size(); }
    std::uint64_t Rows() const { return rows_; }
    std::uint64_t FirstRow(std::size_t block) const { return blocks_[block].first_row; }
    std::uint64_t RowsIn(std::size_t block) const;
    std::size_t BlockOfRow(std::uint64_t row) const;

    /// Reads a block again into `buffer`. Throws ReadError when the file has changed
    /// since it was opened. May run in several threads.
    Text Load(std::size_t block, std::vector<char>& buffer) const;

    const TextDialect& Dialect() const { return dialect_; }
    const File& SourceFile() const { return *file_; }
    /// The line, from 1, on which a byte of the file stands.
    std::uint64_t LineOf(std::uint64_t offset) const;

private:
    struct Block {
        std::uint64_t offset;
        std::uint64_t bytes;
        std::uint64_t first_row;
    };

    bool Cut(std::uint64_t offset, std::vector<char>& buffer, std::size_t& length) const;
    std::size_t WholeRows(std::string_view text, std::uint64_t offset) const;

    std::shared_ptr<const File> file_;
    TextDialect dialect_;
    std::uint64_t begin_;
    std::vector<Block> blocks_;
    std::uint64_t rows_ = 0;
};

}  // namespace zol::engine
