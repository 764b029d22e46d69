#include "support/variant_header.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "tests/support/variant_samples.h"

namespace {

using zol::testing_support::read_file;
using zol::testing_support::sample_path;

HeaderBytes sample_header() {
    const std::string file = read_file(sample_path("every_kind_sealed.mvar"));
    HeaderBytes bytes{};
    std::copy_n(file.begin(), bytes.size(), bytes.begin());
    return bytes;
}

HeaderBytes sample_with(std::size_t offset, const std::string& text) {
    HeaderBytes bytes = sample_header();
    std::copy(text.begin(), text.end(), bytes.begin() + static_cast<std::ptrdiff_t>(offset));
    return bytes;
}

TEST(VariantHeader, IsKnownByMagicAndVersion) {
    struct Row {
        const char* name;
        std::string magic;
        bool is_read;
    };
    const std::vector<Row> rows = {
        {"as written", "ZELMAR001", true},
        {"one digit", std::string("ZELMAR1\0", 8), true},
        {"blanks and a sign", "ZELMAR +1", true},
        {"text behind the number", "ZELMAR1abc", true},
        {"version 2", "ZELMAR002", false},
        {"version 10", std::string("ZELMAR10\0", 9), false},
        {"a fourth digit", "ZELMAR0011", false},
        {"no number", "ZELMARabc", false},
        {"minus 1", "ZELMAR-01", false},
        {"a number beyond 32 bits that ends in 1", "ZELMAR4294967297", false},
        {"small letters", "zelmar001", false},
        {"one letter off", "ZELMAS001", false},
        {"nothing", std::string(10, '\0'), false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        FileInfo info;
        std::memset(&info, 0x55, sizeof info);
        EXPECT_EQ(header_Read(sample_with(0, row.magic), info), row.is_read);
        EXPECT_EQ(info.version, row.is_read ? 1 : 0);
        EXPECT_EQ(info.headerSize, row.is_read ? 84 : 0);
        EXPECT_EQ(info.flags, 0U);
    }
}

TEST(VariantHeader, TextsEndWithTheirFields) {
    FileInfo info;
    std::memset(&info, 0x55, sizeof info);
    ASSERT_TRUE(header_Read(sample_with(10, std::string(66, 'n')), info));
    EXPECT_EQ(std::string(info.auxName1), std::string(11, 'n'));
    EXPECT_EQ(std::string(info.typeName), std::string(11, 'n'));
    EXPECT_EQ(std::string(info.auxName2), std::string(39, 'n'));
    const std::string rest(info.auxName1 + 11, sizeof info.auxName1 - 11);
    EXPECT_EQ(rest, std::string(rest.size(), '\0')) << "what is behind a text is cleared";
}

TEST(VariantHeader, AnotherByteOrderIsAFlagAndNoFault) {
    FileInfo info{};
    EXPECT_TRUE(header_Read(sample_with(76, std::string("\0\0\0\1", 4)), info));
    EXPECT_EQ(info.flags, 1U);
}

TEST(VariantHeader, IsWrittenAsTheSampleHasIt) {
    FileInfo info{};
    std::strcpy(info.typeName, "EMVAR");
    EXPECT_EQ(header_Write(info), sample_header());

    std::memset(&info, 'n', sizeof info);
    const HeaderBytes bytes = header_Write(info);
    const std::string written(bytes.begin(), bytes.end());
    EXPECT_EQ(written.substr(10, 66), std::string(10, 'n') + '\0' + std::string(10, 'n') + '\0' +
                                          std::string(40, 'n') + std::string(4, '\0'))
        << "texts without an end are cut to their fields";
}

TEST(VariantHeader, FiveLettersMakeATypeSealed) {
    for (const auto& [type, is_sealed] : std::vector<std::pair<const char*, bool>>{
             {"EMVAR", true}, {"EMVAR2", true}, {"MVAR", false}, {"EMVA", false}, {"", false}}) {
        SCOPED_TRACE(type);
        FileInfo info{};
        std::strcpy(info.typeName, type);
        EXPECT_EQ(header_IsSealed(info), is_sealed);
    }
}

}  // namespace
