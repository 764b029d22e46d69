#include "engine/block/unique_names.h"

#include <gtest/gtest.h>

#include <string>

namespace zol::engine::block {
namespace {

std::string repeated(const std::string& text, int times) {
    std::string whole;
    for (int i = 0; i < times; ++i) whole += text;
    return whole;
}

TEST(UniqueNames, FitWhatCallersGetThemIn) {
    const std::string e_acute = "\xC3\xA9";
    const std::string x_233 = repeated("x", 233);
    const struct {
        const char* name;
        std::string wanted;
        std::string taken;
    } rows[] = {
        {"as long as can be", repeated("x", 254), repeated("x", 254)},
        {"one longer, the same when cut", repeated("x", 255), x_233 + "_2"},
        {"another", repeated("x", 1000), x_233 + "_3"},
        {"what stands before a suffix is no name yet", x_233, x_233},
        {"but it is counted with them", x_233, x_233 + "_4"},
        {"a character across the limit", repeated("y", 253) + e_acute, repeated("y", 253)},
        {"a character just before it", repeated("z", 252) + e_acute + "z",
         repeated("z", 252) + e_acute},
        {"two bytes each", repeated(e_acute, 128), repeated(e_acute, 127)},
        {"two bytes each, again", repeated(e_acute, 127), repeated(e_acute, 116) + "_2"},
        {"no UTF-8", repeated("\x80", 300), repeated("\x80", 251)},
    };
    UniqueNames names;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(names.Take(row.wanted), row.taken);
    }
}

}  // namespace
}  // namespace zol::engine::block
