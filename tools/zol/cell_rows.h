// Rows of cells from a text file, one at a time.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zol::tool {

/// A row is a line, or several where a quoted cell holds line ends (RFC 4180). What can't be
/// read is thrown as ReadFailure, with the line where there is one.
class CellRows {
public:
    explicit CellRows(const std::string& file);

    /// Reads the next row that is not blank; false behind the last. Cells are parted by what
    /// occurs most often in the first row of commas, semicolons and tabs, or by blanks where
    /// there are none of them.
    bool Next();

    /// The row as it stands, without the end of its line.
    const std::string& Text() const { return row_; }
    /// Without their quotes, or the blanks around them.
    const std::vector<std::string>& Cells() const { return cells_; }
    char Separator() const { return separator_; }
    /// Bytes of the file up to the end of the row.
    long long BytesRead() const { return bytes_read_; }

    /// Throws ReadFailure "FILE: line 7: fault", of the line at which the row begins.
    [[noreturn]] void Refuse(const std::string& fault) const;

private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    /// Puts the next line behind the row; false at the end of the file.
    bool AddLine();
    bool Fill();
    void Split();
    /// Takes the cell that begins at `at` and gives where the next one begins, or npos.
    std::size_t TakeCell(std::size_t at, std::string& cell) const;

    std::string name_;
    std::unique_ptr<std::FILE, Close> file_;
    std::vector<char> buffer_;
    std::string_view unread_;
    long long bytes_read_ = 0;
    long long n_lines_ = 0;
    long long first_line_ = 0;
    std::string row_;
    std::vector<std::string> cells_;
    char separator_ = '\0';
};

}  // namespace zol::tool
