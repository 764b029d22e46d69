// What the tests of grid files ask of a file, and how they write one.
#pragma once

#include <fstream>
#include <iterator>
#include <string>

#include "engine/formats/read_error.h"
#include "engine/grid/source.h"
#include "platform/zolGridExport.h"

namespace zol::testing_support {

/// The value of a node; "masked" as NaN is not told from it, hence the flag beside it.
struct Node {
    double value = 0.0;
    bool masked = false;
    bool read = false;
};

inline Node node_of(const model::grid::Grid& grid, int column, int row) {
    Node node;
    node.read = grid.GetNodeValue(column, row, node.value, node.masked);
    return node;
}

/// Why a file does not open.
inline std::string reason_of(const std::string& name) {
    try {
        engine::grid::open_source(name);
    } catch (const engine::ReadError& error) {
        return error.what();
    }
    return "it opens";
}

/// An ESRI ASCII grid.
inline std::string grid_text(int columns, int rows, const std::string& values) {
    return "ncols " + std::to_string(columns) + "\nnrows " + std::to_string(rows) +
           "\nxllcorner 100\nyllcorner 200\ncellsize 10\nNODATA_value -9999\n" + values;
}

inline std::string read_all(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace zol::testing_support
