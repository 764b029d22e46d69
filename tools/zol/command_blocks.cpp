// `zol blocks`: a listing of blocks, as rows of a table.

#include <algorithm>
#include <limits>

#include "tools/zol/block_commands.h"
#include "tools/zol/columns.h"
#include "tools/zol/exit_codes.h"
#include "tools/zol/open_model.h"
#include "tools/zol/progress_bar.h"
#include "tools/zol/row_writer.h"

namespace zol::tool {

namespace {

bool is_centroid_in(const Box& box, const BlockModel& model) {
    const double x = model.Number("centroid_x");
    const double y = model.Number("centroid_y");
    const double z = model.Number("centroid_z");
    return x >= box.lower.x && x <= box.upper.x && y >= box.lower.y && y <= box.upper.y &&
           z >= box.lower.z && z <= box.upper.z;
}

}  // namespace

int run_blocks(const BlocksRequest& request, Output& output) {
    const auto model = open_model(request.file);
    const std::vector<Column> columns = request.variables.empty()
                                            ? default_columns(*model)
                                            : chosen_columns(*model, request.variables);
    const auto rows =
        request.as_json ? json_row_writer(columns, output) : csv_row_writer(columns, output);

    long long left = request.first.value_or(std::numeric_limits<long long>::max());
    // A search doesn't know at which block it will have found its last.
    const long long n_blocks = model->NBlocks();
    ProgressBar progress(request.where_in ? n_blocks : std::min(n_blocks, left));
    rows->Begin();
    for (model->First(); left > 0 && !model->IsAtEnd(); model->Next()) {
        if (!request.where_in || is_centroid_in(*request.where_in, *model)) {
            rows->WriteBlock(*model);
            --left;
        }
        progress.Advance();
    }
    rows->End();
    return kGood;
}

}  // namespace zol::tool
