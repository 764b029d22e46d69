// The commands of `zol` that read block models. Each writes its answer to `output`,
// which the caller flushes, and gives the exit code; what keeps it from an answer is
// thrown as one of the errors of exit_codes.h.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/zol/block_model.h"
#include "tools/zol/output.h"

namespace zol::tool {

struct InfoRequest {
    std::string file;
    bool as_json = false;
};

struct BlocksRequest {
    std::string file;
    /// Names, or several with commas between; none asks for the default columns.
    std::vector<std::string> variables;
    /// At most so many blocks.
    std::optional<long long> first;
    /// Only blocks whose centroid lies in this box, faces included.
    std::optional<Box> where_in;
    bool as_json = false;
};

struct AtRequest {
    std::string file;
    Point point;
    bool is_world = false;
    bool as_json = false;
};

int run_info(const InfoRequest& request, Output& output);
int run_blocks(const BlocksRequest& request, Output& output);
int run_at(const AtRequest& request, Output& output);

}  // namespace zol::tool
