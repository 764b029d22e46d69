// Points from a text file of rows, read one row at a time.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "tools/zol/block_model.h"
#include "tools/zol/cell_rows.h"

namespace zol::tool {

/// Rows with a point each: in the columns x, y and z, whatever the case of their names, or
/// else in the first three that hold numbers in the first row of values. A first row that
/// holds three numbers is no header. What can't be read is thrown as ReadFailure.
class PointRows {
public:
    explicit PointRows(const std::string& file);

    /// The columns' names, each different; those of a file without a header are made up.
    const std::vector<std::string>& Names() const { return names_; }
    bool HasHeader() const { return has_header_; }
    /// The header as it stands.
    const std::string& Header() const { return header_; }
    /// Where points are taken from, if a person had better know it; else empty.
    const std::string& Remark() const { return remark_; }
    char Separator() const { return rows_.Separator(); }

    /// False behind the last row. A row has to have a point, and as many cells as the first.
    bool Next();

    const Point& Where() const { return point_; }
    /// The row as it stands.
    const std::string& Text() const { return rows_.Text(); }
    const std::vector<std::string>& Cells() const { return rows_.Cells(); }
    /// The point's coordinate that a column holds; null for another column.
    const double* CoordinateIn(std::size_t column) const;
    long long BytesRead() const { return rows_.BytesRead(); }

private:
    void ReadHeader();
    bool FindByName();
    void FindByNumbers();
    void NameColumns();
    /// 3 for a column that is none of x, y and z.
    std::size_t AxisOf(std::size_t column) const;
    double Coordinate(std::size_t axis) const;

    CellRows rows_;
    std::vector<std::string> names_;
    std::string header_;
    bool has_header_ = false;
    /// A row that has been read and not been handed out.
    bool has_row_ = false;
    std::string remark_;
    std::array<std::size_t, 3> columns_{};
    Point point_;
};

/// `wanted`, or with a number behind it where that is taken.
std::string free_name(const std::string& wanted, const std::vector<std::string>& taken);

}  // namespace zol::tool
