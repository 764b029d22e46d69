// The value that the samples of tests/support/data hold, and what several tests of the
// binary forms need.
#pragma once

#include <cstdint>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

#include "support/variant.h"

namespace zol::testing_support {

inline std::string read_file(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error("can't read " + path);
    return {std::istreambuf_iterator<char>(in), {}};
}

inline std::string sample_path(const std::string& name) {
    return std::string(ZOL_TEST_DATA) + "/" + name;
}

/// The record of the samples, as tests/support/data/make_variant_samples.py made it.
inline std::string sample_record() {
    constexpr std::size_t kHeader = 84;
    return read_file(sample_path("every_kind_clear.mvar")).substr(kHeader);
}

inline MVariant every_kind() {
    MVariant value(MV_VECTOR);
    value[1] = 0.1;
    value[2] = MVariant("Erz \xc3\xa4: 2.5 g/t\n");
    value[3] = -5;
    value[4][0] = MVariant("x");
    value[4][1] = MVariant(MV_VECTOR);
    value[5]["density"][""] = 1;
    value[6] = MVariant::Pointer(0xfedcba9876543210);
    value[7] = -(std::int64_t{1} << 40) - 1;
    return value;
}

/// Whether all of two values is the same to the last bit; map entries in any order.
inline bool is_same(const MVariant& one, const MVariant& other) {
    return one.Equals(other, 0.0, false, false);
}

/// "04 05 00" as three bytes.
inline std::string from_hex(std::string_view text) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
        while (text[i] == ' ') ++i;
        bytes += static_cast<char>(std::stoi(std::string(text.substr(i, 2)), nullptr, 16));
    }
    return bytes;
}

}  // namespace zol::testing_support
