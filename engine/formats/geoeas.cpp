#include "engine/formats/geoeas.h"

#include <algorithm>

#include "engine/formats/cell_reader.h"
#include "engine/formats/read_error.h"
#include "engine/formats/row_reader.h"

namespace zol::engine {

namespace {

constexpr std::int64_t kMostColumns = 10000;

// Takes lines one by one, empty ones too.
class Lines {
public:
    Lines(std::string_view text, std::size_t begin, char row_end)
        : text_(text), at_(begin), row_end_(row_end) {}

    bool Next(std::string_view& line) {
        if (at_ >= text_.size()) {
            return false;
        }
        const std::size_t end = std::min(text_.find(row_end_, at_), text_.size());
        line = trimmed(text_.substr(at_, end - at_));
        at_ = std::min(end + 1, text_.size());
        return true;
    }

    std::size_t Offset() const { return at_; }

private:
    std::string_view text_;
    std::size_t at_;
    char row_end_;
};

// The numbers of a line; false when something else stands on it.
bool read_numbers(std::string_view line, const TextDialect& dialect, std::vector<double>& numbers) {
    numbers.clear();
    RowReader reader(line, dialect);
    CellList cells;
    if (reader.Next(cells) != RowReader::Outcome::Row) {
        return false;
    }
    for (const TextCell& cell : cells) {
        Decimal number;
        if (!read_decimal(cell.Raw(), '.', number)) {
            return false;
        }
        numbers.push_back(number.Value());
    }
    return true;
}

bool is_whole_between(double value, double least, double most) {
    return value >= least && value <= most &&
           value == static_cast<double>(static_cast<std::int64_t>(value));
}

std::optional<StatedLattice> lattice_of(const std::vector<double>& numbers) {
    if (numbers.size() < 10) {
        return std::nullopt;
    }
    StatedLattice lattice{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (!is_whole_between(numbers[1 + axis], 1, 2147483647) || !(numbers[7 + axis] > 0)) {
            return std::nullopt;
        }
        lattice.count[axis] = static_cast<std::int64_t>(numbers[1 + axis]);
        lattice.first_centroid[axis] = numbers[4 + axis];
        lattice.size[axis] = numbers[7 + axis];
    }
    if (numbers.size() > 10 && numbers[10] != 1) {
        throw ReadError("the table holds several realisations, one is expected");
    }
    return lattice;
}

}  // namespace

std::optional<TextHead> read_geoeas_head(std::string_view head, std::size_t begin, char row_end) {
    TextHead found;
    found.dialect.delimiter = ' ';
    found.dialect.row_end = row_end;
    Lines lines(head, begin, row_end);
    std::string_view line;
    std::vector<double> numbers;
    if (!lines.Next(line) || !lines.Next(line) || !read_numbers(line, found.dialect, numbers) ||
        !is_whole_between(numbers[0], 1, static_cast<double>(kMostColumns))) {
        return std::nullopt;
    }
    const auto count = static_cast<std::size_t>(numbers[0]);
    const std::vector<double> second_line = numbers;
    for (std::size_t i = 0; i < count; ++i) {
        // Names are texts; numbers here are the rows of some other table.
        if (!lines.Next(line) || line.empty() || read_numbers(line, found.dialect, numbers)) {
            return std::nullopt;
        }
        found.names.emplace_back(line);
    }
    found.data_begin = lines.Offset();
    if (!lines.Next(line) || !read_numbers(line, found.dialect, numbers) ||
        numbers.size() != count) {
        return std::nullopt;
    }
    found.lattice = lattice_of(second_line);
    return found;
}

}  // namespace zol::engine
