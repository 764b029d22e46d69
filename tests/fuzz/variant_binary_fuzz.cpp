// Takes any bytes for a binary record and for a value file, and checks that whatever is read
// can be written and read again as the same.
//
// With a fuzzing engine it is built as a target of its own; in the ordinary test run
// standalone.cpp replays samples and changed copies of them.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "support/file_info.h"
#include "support/variant.h"
#include "support/variant_header.h"
#include "tests/engine/temporary_file.h"

namespace {

void check_round_trip(const MVariant& value) {
    const auto record = value.ToBinary();
    if (record == nullptr) std::abort();
    MVariant again;
    again.FromBinary(record.get(), value.BinarySize());
    if (!again.Equals(value, 0.0, false, false)) std::abort();
    MVariant trusting;
    trusting.FromBinary(record.get());
    if (!trusting.Equals(value, 0.0, false, false)) std::abort();
}

/// In memory of its own, so that a byte read beyond shows.
void read_record(const std::uint8_t* data, std::size_t size) {
    const std::vector<std::uint8_t> record(data, data + size);
    MVariant value;
    value.FromBinary(record.data(), record.size());
    check_round_trip(value);
}

void read_file(std::string_view content) {
    static zol::testing_support::TemporaryFile file("");
    file.Rewrite(content);
    MVariant value;
    FileInfo info;
    if (value.ReadBinary(file.Path().c_str(), &info)) check_round_trip(value);
    if (value.ReadBinarySealed(file.Path().c_str(), &info)) check_round_trip(value);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    read_record(data, size);
    if (size > kHeaderSize) read_record(data + kHeaderSize, size - kHeaderSize);
    read_file({reinterpret_cast<const char*>(data), size});
    return 0;
}
