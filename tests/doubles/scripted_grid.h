// A grid library that answers what a test scripts, and keeps a journal of the calls that
// it got. Linked in place of the engine.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "platform/zolGridExport.h"

namespace zol::doubles {

/// What an operation throws when the script says so.
struct GridFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Answers of every grid; a fixture makes it anew for each test.
struct GridScript {
    bool valid = true;
    /// The operation that throws, as the journal names it; none when empty.
    std::string throwing;

    geometry::Point2D lower;
    geometry::Point2D upper;
    double along_x = 0.0;
    double along_y = 0.0;
    int width = 0;
    int height = 0;

    /// What GetNodeValue answers, and what it leaves in its outputs whatever it answers.
    bool readable = true;
    double value = 0.0;
    bool masked = false;
};

extern GridScript grid_script;

/// One entry a call: "Grid::GetNodeValue 3 4", "Grid::~Grid".
extern std::vector<std::string> grid_journal;

}  // namespace zol::doubles
