#include "tools/zol/point_rows.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "tools/zol/number_text.h"

namespace zol::tool {

namespace {

constexpr std::size_t kAxes = 3;
constexpr std::string_view kAxisNames = "xyz";

bool is_named(const std::string& cell, char axis) {
    return cell.size() == 1 && (cell[0] == axis || cell[0] == axis - 'a' + 'A');
}

std::vector<std::size_t> numeric_columns(const std::vector<std::string>& cells) {
    std::vector<std::size_t> columns;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (parse_number(cells[i])) columns.push_back(i);
    }
    return columns;
}

std::string list(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i > 0) text += i + 1 == names.size() ? " and " : ", ";
        text += "'" + names[i] + "'";
    }
    return text;
}

}  // namespace

std::string free_name(const std::string& wanted, const std::vector<std::string>& taken) {
    std::string name = wanted;
    for (int i = 2; std::find(taken.begin(), taken.end(), name) != taken.end(); ++i) {
        name = wanted + '_' + std::to_string(i);
    }
    return name;
}

PointRows::PointRows(const std::string& file) : rows_(file) {
    has_row_ = rows_.Next();
    if (!has_row_) return;
    has_header_ = numeric_columns(rows_.Cells()).size() < kAxes;
    if (!has_header_) {
        FindByNumbers();
        NameColumns();
        return;
    }
    ReadHeader();
}

void PointRows::ReadHeader() {
    header_ = rows_.Text();
    for (const std::string& cell : rows_.Cells()) names_.push_back(free_name(cell, names_));
    const bool is_found = FindByName();
    has_row_ = rows_.Next();
    if (is_found || !has_row_) return;
    FindByNumbers();
    remark_ = "no columns are named x, y and z; taken are " +
              list({names_[columns_[0]], names_[columns_[1]], names_[columns_[2]]}) + ".";
}

bool PointRows::FindByName() {
    std::vector<std::string> missing;
    for (std::size_t axis = 0; axis < kAxes; ++axis) {
        const char name = kAxisNames[axis];
        const auto found =
            std::find_if(rows_.Cells().begin(), rows_.Cells().end(),
                         [name](const std::string& cell) { return is_named(cell, name); });
        columns_[axis] = static_cast<std::size_t>(found - rows_.Cells().begin());
        if (found == rows_.Cells().end()) missing.emplace_back(1, name);
    }
    if (!missing.empty() && missing.size() < kAxes) {
        rows_.Refuse("of the columns x, y and z, " + list(missing) + " is not there. There are " +
                     list(names_) + ".");
    }
    return missing.empty();
}

void PointRows::FindByNumbers() {
    if (has_header_ && rows_.Cells().size() != names_.size()) {
        rows_.Refuse("there are " + std::to_string(rows_.Cells().size()) + " cells, and " +
                     std::to_string(names_.size()) + " in the header.");
    }
    const auto numeric = numeric_columns(rows_.Cells());
    if (numeric.size() < kAxes) {
        rows_.Refuse("a point needs three numbers, parted by commas, semicolons, tabs or blanks.");
    }
    std::copy_n(numeric.begin(), kAxes, columns_.begin());
    if (!has_header_ && numeric.size() > kAxes) {
        remark_ = "there is no header; the points are taken from the columns " +
                  std::to_string(columns_[0] + 1) + ", " + std::to_string(columns_[1] + 1) +
                  " and " + std::to_string(columns_[2] + 1) + ".";
    }
}

void PointRows::NameColumns() {
    for (std::size_t i = 0; i < rows_.Cells().size(); ++i) {
        const std::size_t axis = AxisOf(i);
        names_.push_back(axis < kAxes ? std::string(1, kAxisNames[axis])
                                      : "column " + std::to_string(i + 1));
    }
}

std::size_t PointRows::AxisOf(std::size_t column) const {
    return static_cast<std::size_t>(std::find(columns_.begin(), columns_.end(), column) -
                                    columns_.begin());
}

const double* PointRows::CoordinateIn(std::size_t column) const {
    const std::array<const double*, kAxes + 1> places{&point_.x, &point_.y, &point_.z, nullptr};
    return places[AxisOf(column)];
}

double PointRows::Coordinate(std::size_t axis) const {
    const std::string& cell = rows_.Cells()[columns_[axis]];
    const auto number = parse_number(cell);
    if (!number) {
        rows_.Refuse("'" + cell + "' is not a number, for " + kAxisNames[axis] + ".");
    }
    return *number;
}

bool PointRows::Next() {
    if (!has_row_ && !rows_.Next()) return false;
    has_row_ = false;
    const std::size_t n = rows_.Cells().size();
    if (n != names_.size()) {
        rows_.Refuse("there are " + std::to_string(n) + (n == 1 ? " cell" : " cells") +
                     ", and the first row has " + std::to_string(names_.size()) + ".");
    }
    point_ = {Coordinate(0), Coordinate(1), Coordinate(2)};
    return true;
}

}  // namespace zol::tool
