// Reads any bytes as the text form of a value, and checks that what was read can be
// written and read again as the same.
//
// With a fuzzing engine it is built as a target of its own; in the ordinary test run
// standalone.cpp replays samples and changed copies of them.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "support/variant.h"
#include "support/variant_walker.h"
#include "tests/engine/temporary_file.h"

namespace {

// What is no number is written as a word, and a negative whole number comes back as a
// double. The latter is only read where a hexadecimal word replaces a number.
bool comes_back(MVariant& value) {
    for (VariantWalker at = value.Begin(); at != value.End(); ++at) {
        const bool is_whole = at->Kind() == MV_INT || at->Kind() == MV_INT64;
        if ((at->Kind() == MV_DOUBLE && !std::isfinite(at->AsDouble())) ||
            (is_whole && at->AsInt64() < 0) ||
            (at->Kind() == MV_INT64 && MVariant(at->AsInt64()).Kind() == MV_INT)) {
            return false;
        }
    }
    return true;
}

void check_round_trip(MVariant& value) {
    static const zol::testing_support::TemporaryFile file("");
    MVariant again;
    MVariant errors;
    if (!value.WriteText(file.Path().c_str()) || !again.ReadText(file.Path().c_str(), errors)) {
        std::abort();
    }
    // All but six decimals are cut.
    if (!again.Equals(value, 1e-6, false, false)) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream stream(std::string(reinterpret_cast<const char*>(data), size));
    MVariant value;
    MVariant errors;
    int fault = 0;
    if (value.ParseText(stream, fault, errors) == errors.IsDefined() ||
        (fault != 0 && value.IsDefined())) {
        std::abort();
    }
    if (comes_back(value)) {
        check_round_trip(value);
    }
    MVariant sum = value;
    sum += value;
    const volatile std::size_t length = sum.AsString().size();
    static_cast<void>(length);
    return 0;
}
