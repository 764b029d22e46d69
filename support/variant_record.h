// What reading and writing the binary record have in common.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "support/variant.h"

/// The head of each record: the kind, and the length of the whole record.
constexpr std::size_t kRecordHead = 5;

/// Bytes of the body of a number; 0 of anything else.
constexpr std::size_t record_NumberSize(MVariantKind kind) {
    switch (kind) {
        case MV_INT:
            return 4;
        case MV_DOUBLE:
        case MV_POINTER:
        case MV_INT64:
            return 8;
        default:
            return 0;
    }
}

/// Why a record does not hold together.
struct RecordFault {
    std::size_t at;  // the offset in the record, near enough to look there
    const char* what;
};

/// FromBinary for who wants to know: reads the record at the begin of `bytes` into `value`,
/// or tells the first thing that is wrong and leaves `value` empty.
std::optional<RecordFault> record_Read(std::span<const std::uint8_t> bytes, MVariant& value);
