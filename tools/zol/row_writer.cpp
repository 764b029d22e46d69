#include "tools/zol/row_writer.h"

#include "tools/zol/csv_writer.h"
#include "tools/zol/json_writer.h"

namespace zol::tool {

namespace {

class CsvRowWriter final : public RowWriter {
public:
    CsvRowWriter(const std::vector<Column>& columns, Output& output)
        : columns_(columns), csv_(output) {}

    void Begin() override {
        for (const Column& column : columns_) csv_.Cell(column.Name());
        csv_.EndRow();
    }

    void WriteBlock(const BlockModel& model) override {
        for (const Column& column : columns_) {
            column.Read(model, cell_);
            csv_.Cell(cell_.text);
        }
        csv_.EndRow();
    }

    void End() override {}

private:
    const std::vector<Column>& columns_;
    CsvWriter csv_;
    Cell cell_;
};

class JsonRowWriter final : public RowWriter {
public:
    JsonRowWriter(const std::vector<Column>& columns, Output& output)
        : columns_(columns), json_(output) {}

    void Begin() override { json_.BeginList(); }

    void WriteBlock(const BlockModel& model) override {
        json_.BeginObject(JsonWriter::Layout::Flat);
        for (const Column& column : columns_) {
            json_.Key(column.Name());
            column.Read(model, cell_);
            write_cell(json_, cell_);
        }
        json_.EndObject();
    }

    void End() override { json_.EndList(); }

private:
    const std::vector<Column>& columns_;
    JsonWriter json_;
    Cell cell_;
};

}  // namespace

std::unique_ptr<RowWriter> csv_row_writer(const std::vector<Column>& columns, Output& output) {
    return std::make_unique<CsvRowWriter>(columns, output);
}

std::unique_ptr<RowWriter> json_row_writer(const std::vector<Column>& columns, Output& output) {
    return std::make_unique<JsonRowWriter>(columns, output);
}

}  // namespace zol::tool
