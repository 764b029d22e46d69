// Values to and from their text form, for the tests of both ways.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <utility>

#include "support/variant.h"
#include "tests/engine/temporary_file.h"

namespace zol::testing_support {

struct Result {
    MVariant value;
    int fault;
    MVariant errors;
};

/// Read from a stream, and from a file with the same outcome.
inline Result parsed(const std::string& text, MVariant before = {}) {
    MVariant from_file = before;
    std::istringstream stream(text);
    Result result{std::move(before), -1, {}};
    const bool is_read = result.value.ParseText(stream, result.fault, result.errors);
    EXPECT_EQ(is_read, result.fault == 0);

    const TemporaryFile file(text);
    MVariant told;
    EXPECT_EQ(from_file.ReadText(file.Path().c_str(), told), is_read);
    EXPECT_TRUE(from_file.Equals(result.value, 0, false, false));
    EXPECT_TRUE(told.Equals(result.errors, 0, false, false));
    return result;
}

inline std::string written(const MVariant& value) {
    const TemporaryFile file("what was there before, and longer than what comes");
    EXPECT_TRUE(value.WriteText(file.Path().c_str()));
    std::ifstream in(file.Path(), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace zol::testing_support
