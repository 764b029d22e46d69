// Where each of many points lies, written as rows behind what the points came with.
#pragma once

#include <memory>
#include <string>

#include "tools/zol/output.h"
#include "tools/zol/point_rows.h"

namespace zol::tool {

/// Of a point to the surface of a mesh.
enum class Side { Inside, On, Outside };

/// "inside", "on", "outside"
const char* name_of(Side side);

class AnswerWriter {
public:
    AnswerWriter() = default;
    AnswerWriter(const AnswerWriter&) = delete;
    AnswerWriter& operator=(const AnswerWriter&) = delete;
    virtual ~AnswerWriter() = default;

    virtual void Begin() = 0;
    /// For the row that was read last.
    virtual void Write(Side side) = 0;
    virtual void End() {}
};

/// The rows as they stand, with a cell behind the others; `column` is its name. All outlive
/// the writer.
std::unique_ptr<AnswerWriter> csv_answers(const PointRows& rows, const std::string& column,
                                          Output& output);
/// A list with an object for each row: numbers for the point, texts for the other cells.
std::unique_ptr<AnswerWriter> json_answers(const PointRows& rows, const std::string& column,
                                           Output& output);

}  // namespace zol::tool
