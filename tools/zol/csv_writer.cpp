#include "tools/zol/csv_writer.h"

namespace zol::tool {

void CsvWriter::Cell(std::string_view text) {
    if (cells_ > 0) output_.Write(',');
    ++cells_;
    if (!text.empty()) is_row_blank_ = false;
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
        output_.Write(text);
        return;
    }
    output_.Write('"');
    for (const char character : text) {
        if (character == '"') output_.Write('"');
        output_.Write(character);
    }
    output_.Write('"');
}

void CsvWriter::EndRow() {
    if (cells_ == 1 && is_row_blank_) output_.Write("\"\"");
    output_.Write("\n");
    cells_ = 0;
    is_row_blank_ = true;
}

}  // namespace zol::tool
