#include "tools/zol/mesh_answers.h"

#include <string_view>

#include "tools/zol/json_writer.h"

namespace zol::tool {

namespace {

class CsvAnswers final : public AnswerWriter {
public:
    CsvAnswers(const PointRows& rows, const std::string& column, Output& output)
        : rows_(rows), column_(column), output_(output) {}

    void Begin() override {
        if (rows_.HasHeader()) WriteRow(rows_.Header(), column_);
    }

    void Write(Side side) override { WriteRow(rows_.Text(), name_of(side)); }

private:
    void WriteRow(const std::string& row, std::string_view cell) {
        output_.Write(row);
        output_.Write(rows_.Separator());
        output_.Write(cell);
        output_.Write('\n');
    }

    const PointRows& rows_;
    const std::string& column_;
    Output& output_;
};

class JsonAnswers final : public AnswerWriter {
public:
    JsonAnswers(const PointRows& rows, const std::string& column, Output& output)
        : rows_(rows), column_(column), json_(output) {}

    void Begin() override { json_.BeginList(); }

    void Write(Side side) override {
        json_.BeginObject(JsonWriter::Layout::Flat);
        for (std::size_t i = 0; i < rows_.Cells().size(); ++i) {
            json_.Key(rows_.Names()[i]);
            if (const double* coordinate = rows_.CoordinateIn(i)) {
                json_.Number(*coordinate);
            } else {
                json_.Text(rows_.Cells()[i]);
            }
        }
        json_.Key(column_);
        json_.Text(name_of(side));
        json_.EndObject();
    }

    void End() override { json_.EndList(); }

private:
    const PointRows& rows_;
    const std::string& column_;
    JsonWriter json_;
};

}  // namespace

const char* name_of(Side side) {
    switch (side) {
        case Side::Inside:
            return "inside";
        case Side::On:
            return "on";
        default:
            return "outside";
    }
}

std::unique_ptr<AnswerWriter> csv_answers(const PointRows& rows, const std::string& column,
                                          Output& output) {
    return std::make_unique<CsvAnswers>(rows, column, output);
}

std::unique_ptr<AnswerWriter> json_answers(const PointRows& rows, const std::string& column,
                                           Output& output) {
    return std::make_unique<JsonAnswers>(rows, column, output);
}

}  // namespace zol::tool
