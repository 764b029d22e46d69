// The binary record: its bytes, and what is made of records that don't hold together.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "support/variant.h"
#include "tests/support/random_variant.h"
#include "tests/support/variant_building.h"
#include "tests/support/variant_samples.h"

namespace {

using zol::testing_support::every_kind;
using zol::testing_support::from_hex;
using zol::testing_support::is_same;
using zol::testing_support::random_variant;
using zol::testing_support::sample_record;

std::string written(const MVariant& value) {
    const auto bytes = value.ToBinary();
    return {reinterpret_cast<const char*>(bytes.get()), value.BinarySize()};
}

/// The record in memory of exactly its size, so that a byte read beyond shows.
MVariant read(const std::string& record) {
    const auto exact = std::make_unique<char[]>(record.size());
    std::copy(record.begin(), record.end(), exact.get());
    MVariant value("what was there before");
    value.FromBinary(exact.get(), record.size());
    return value;
}

MVariant read_trusting(const std::string& record) {
    const auto exact = std::make_unique<char[]>(record.size());
    std::copy(record.begin(), record.end(), exact.get());
    MVariant value("what was there before");
    value.FromBinary(exact.get());
    return value;
}

MVariant vector_of(const std::vector<MVariant>& elements) {
    MVariant value(MV_VECTOR);
    for (const MVariant& element : elements) value[value.Size()] = element;
    return value;
}

MVariant map_of(const char* key, const MVariant& entry) {
    MVariant value(MV_MAP);
    value[key] = entry;
    return value;
}

TEST(VariantRecord, HasTheBytesOfItsKind) {
    struct Row {
        const char* name;
        MVariant value;
        const char* hex;
    };
    const std::vector<Row> rows = {
        {"empty", MVariant(), "00 05000000"},
        {"double", 1.5, "01 0d000000 000000000000f83f"},
        {"text", "ab", "02 07000000 6162"},
        {"empty text", "", "02 05000000"},
        {"int", -2, "03 09000000 feffffff"},
        {"empty vector", MVariant(MV_VECTOR), "04 05000000"},
        {"vector", vector_of({1, MVariant()}), "04 13000000 03 09000000 01000000 00 05000000"},
        {"empty map", MVariant(MV_MAP), "05 05000000"},
        {"map", map_of("k", MVariant(MV_VECTOR)), "05 0f000000 05000000 6b 04 05000000"},
        {"map with the empty key", map_of("", MVariant()), "05 0e000000 04000000 00 05000000"},
        {"pointer", MVariant::Pointer(0xfedcba9876543210), "06 0d000000 1032547698badcfe"},
        {"int64 that fits 32 bits", MVariant(MV_INT64), "07 0d000000 0000000000000000"},
        {"int64", -(std::int64_t{1} << 40), "07 0d000000 0000000000ffffff"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string record = from_hex(row.hex);
        EXPECT_EQ(written(row.value), record);
        for (const MVariant& value : {read(record), read_trusting(record)}) {
            EXPECT_TRUE(is_same(value, row.value)) << value.AsString();
        }
    }
}

TEST(VariantRecord, OfEveryKindIsTheOneAnotherProgramMade) {
    EXPECT_EQ(written(every_kind()), sample_record());
    EXPECT_TRUE(is_same(read(sample_record()), every_kind()));
    EXPECT_TRUE(is_same(read_trusting(sample_record()), every_kind()));
}

TEST(VariantRecord, IsReadLeniently) {
    struct Row {
        const char* name;
        const char* hex;
        MVariant expected;
    };
    const std::vector<Row> rows = {
        {"no kind 8", "08 05000000", {}},
        {"no kind 255, of whatever length", "ff ffffffff", {}},
        {"a text ends at a zero", "02 09000000 61620063", "ab"},
        {"a vector of length 4", "04 04000000", MVariant(MV_VECTOR)},
        {"a map of negative length", "05 000000ff", MVariant(MV_MAP)},
        {"a number has its kind's size", "01 05000000 000000000000f83f", 1.5},
        {"a number of negative length", "03 ffffffff 07000000", 7},
        {"bytes behind a number are stepped over",
         "04 19000000 03 0b000000 01000000 ffff 03 09000000 02000000", vector_of({1, 2})},
        {"an element of no kind is empty", "04 14000000 09 06000000 ff 03 09000000 02000000",
         vector_of({MVariant(), 2})},
        {"the later entry of a key counts",
         "05 21000000 05000000 6b 03 09000000 01000000 05000000 6b 03 09000000 02000000",
         map_of("k", 2)},
        {"a key ends at a zero", "05 10000000 06000000 6b00 00 05000000", map_of("k", {})},
        {"bytes behind the record are no part of it", "02 06000000 61 02 ffffff", "a"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const MVariant value = read(from_hex(row.hex));
        EXPECT_TRUE(is_same(value, row.expected)) << value.Kind() << " " << value.AsString();
        EXPECT_TRUE(is_same(read_trusting(from_hex(row.hex)), row.expected));
    }
}

TEST(VariantRecord, ThatClaimsMoreThanThereIsGivesNothing) {
    struct Row {
        const char* name;
        const char* hex;
    };
    const std::vector<Row> rows = {
        {"nothing", ""},
        {"part of a head", "02 050000"},
        {"part of a double", "01 0d000000 00000000000000"},
        {"part of an int", "03 09000000 000000"},
        {"a text of more bytes", "02 07000000 61"},
        {"a text of 2 GiB", "02 ffffff7f 61"},
        {"a text of negative length", "02 ffffffff 61"},
        {"a text shorter than its head", "02 04000000 61"},
        {"a vector of more bytes", "04 0b000000 00 05000000"},
        {"an element longer than its vector", "04 0a000000 00 06000000 00"},
        {"a text that reaches behind its vector", "04 0a000000 02 06000000 61"},
        {"a double that reaches behind its vector", "04 0a000000 01 05000000 0000000000000000"},
        {"an element of length 0", "04 0a000000 00 00000000"},
        {"an element of length 4", "04 0a000000 00 04000000"},
        {"an element of negative length", "04 0a000000 00 fbffffff"},
        {"a vector in a vector of length 0", "04 0a000000 04 00000000"},
        {"a map in a vector of length 4", "04 0a000000 05 04000000"},
        {"part of a head in a vector", "04 07000000 00 05"},
        {"a second element that is damaged", "04 13000000 03 09000000 01000000 00 00000000"},
        {"an entry without a record", "05 0a000000 05000000 6b"},
        {"part of a key's count", "05 08000000 050000"},
        {"a key's count of 3", "05 0e000000 03000000 00 05000000"},
        {"a key's count of 0", "05 0e000000 00000000 00 05000000"},
        {"a key's count below 0", "05 0e000000 f0ffffff 00 05000000"},
        {"a key of 2 GiB", "05 0e000000 ffffff7f 00 05000000"},
        {"a key longer than its map", "05 0e000000 0b000000 00 05000000 0000"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(read(from_hex(row.hex)).Kind(), MV_EMPTY);
        // Inside of something that is whole, nothing of the whole is left either.
        const std::string inner = from_hex(row.hex);
        std::string outer = from_hex("04 00000000 03 09000000 01000000") + inner;
        outer[1] = static_cast<char>(outer.size());
        if (!inner.empty()) {
            EXPECT_EQ(read(outer).Kind(), MV_EMPTY);
        }
    }
    MVariant value("what was there before");
    value.FromBinary(nullptr);
    EXPECT_EQ(value.Kind(), MV_EMPTY);
}

TEST(VariantRecord, OfATextOrContainerThatHasNoneIsThatOfAnEmptyOne) {
    for (const MVariantKind kind : {MV_STRING, MV_VECTOR, MV_MAP}) {
        EXPECT_EQ(written(zol::testing_support::null_of(kind)), written(MVariant(kind))) << kind;
    }
}

TEST(VariantRecord, CutAnywhereGivesNothing) {
    const std::string record = sample_record();
    for (std::size_t size = 0; size < record.size(); ++size) {
        EXPECT_EQ(read(record.substr(0, size)).Kind(), MV_EMPTY) << size;
    }
}

TEST(VariantRecord, WithAnyBitWrongIsReadToSomethingWhole) {
    const std::string record = sample_record();
    for (std::size_t bit = 0; bit < 8 * record.size(); ++bit) {
        SCOPED_TRACE(bit);
        std::string flipped = record;
        flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ 1 << bit % 8);
        const MVariant value = read(flipped);
        EXPECT_TRUE(is_same(read(written(value)), value));
    }
}

TEST(VariantRecord, HoldsEveryValue) {
    std::mt19937 random(7);
    for (int i = 0; i < 300; ++i) {
        SCOPED_TRACE(i);
        const MVariant value = random_variant(random);
        const std::string record = written(value);
        EXPECT_TRUE(is_same(read(record), value));
        EXPECT_TRUE(is_same(read_trusting(record), value));
    }
}

/// Vectors, or maps with one entry, in each other.
std::string nested(int depth, bool as_maps) {
    const int step = as_maps ? 9 : 5;
    std::string record;
    for (int left = depth; left > 0; --left) {
        const int length = left * step - (as_maps ? 4 : 0);
        record += as_maps ? '\5' : '\4';
        for (int shift = 0; shift < 32; shift += 8) record += static_cast<char>(length >> shift);
        if (as_maps && left > 1) record += from_hex("04000000");
    }
    return record;
}

TEST(VariantRecord, NestsAsDeepAsItLikes) {
    constexpr int kDepth = 100'000;
    for (const bool as_maps : {false, true}) {
        const std::string record = nested(kDepth, as_maps);
        const MVariant value = read(record);
        ASSERT_EQ(value.Size(), 1);
        EXPECT_TRUE(written(value) == record);
        // Damage in the innermost one takes all of them with it.
        EXPECT_EQ(read(record.substr(0, record.size() - 1)).Kind(), MV_EMPTY);
    }
}

TEST(VariantRecord, LongerThanItsLengthCanSayIsNotMade) {
    // Shared vectors hold more than there is memory for.
    MVariant value = vector_of({std::string(100'000, 'x')});
    while (value.BinarySize() != 0) {
        const std::uint32_t size = value.BinarySize();
        MVariant twice = vector_of({value, value});
        if (twice.BinarySize() != 0) {
            EXPECT_EQ(twice.BinarySize(), 2 * size + 5);
        }
        value = std::move(twice);
    }
    EXPECT_EQ(value.ToBinary(), nullptr);
    for (int i = 0; i < 100; ++i) value = vector_of({value, value});
    EXPECT_EQ(value.BinarySize(), 0U);
}

}  // namespace
