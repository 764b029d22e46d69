// A design library that answers what a test scripts, and keeps a journal of the calls that it
// got. Linked in place of the engine.
//
// An operation is named as the journal names it: "ObjectPolyline::NPoints".
#pragma once

#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/zolDesignExport.h"

namespace zol::doubles {

/// What an operation throws when the script says so.
struct DesignFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Answers of every database, layer and object; a fixture makes it anew for each test.
struct DesignScript {
    /// The operations that answer true; all others answer false.
    std::set<std::string> true_of = {"Database::Open", "Database::IsOpen", "Database::Get",
                                     "Database::Exists", "Layer::GetObject"};
    /// An operation that is not here answers with a number of its own, as number_of has it.
    std::map<std::string, double> numbers = {{"Layer::NObjects", 3},
                                             {"Metadata::NFields", 3},
                                             {"ObjectPolyline::NPoints", 3},
                                             {"ObjectText::NRecords", 3},
                                             {"Object3DText::NRecords", 3}};
    /// An operation that is not here answers with its own name.
    std::map<std::string, std::string> texts;

    std::vector<std::string> layers = {"pit", "dump", "road"};
    std::vector<std::string> errors;
    std::vector<graphics::RGB> colours;

    /// The operation that throws; none when empty.
    std::string throwing;
};

extern DesignScript design_script;

/// One entry a call: "ObjectPolyline::GetPoint 2".
extern std::vector<std::string> design_journal;

/// What operations answer by the script. A whole number is the same one. A point has this
/// number for its x, and the next three for its y, z and w; the fourth is its t.
double number_of(const std::string& operation);
std::string text_of(const std::string& operation);

}  // namespace zol::doubles
