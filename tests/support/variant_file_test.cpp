// Values in files with a header, in the clear and under both ciphers. The samples are made
// by data/make_variant_samples.py, which has nothing of this library.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "support/file_info.h"
#include "support/variant.h"
#include "tests/engine/temporary_file.h"
#include "tests/support/random_variant.h"
#include "tests/support/variant_samples.h"

namespace {

using zol::testing_support::every_kind;
using zol::testing_support::is_same;
using zol::testing_support::random_variant;
using zol::testing_support::read_file;
using zol::testing_support::sample_path;
using zol::testing_support::TemporaryFile;

constexpr std::size_t kHeader = 84;

using Reader = bool (MVariant::*)(const char*, FileInfo*);

/// A form that a file may have: its sample, what reads it, and in which pieces the record
/// can be deciphered.
struct Form {
    const char* name;
    std::string sample;
    Reader read;
    std::size_t block;
    bool needs_whole_blocks;
};

std::vector<Form> forms() {
    return {
        {"clear", "every_kind_clear.mvar", &MVariant::ReadBinary, 1, false},
        {"clear, read as sealed", "every_kind_clear.mvar", &MVariant::ReadBinarySealed, 1, false},
        {"sealed", "every_kind_sealed.mvar", &MVariant::ReadBinary, 8, false},
        {"sealed with AES", "every_kind_sealed_aes.mvar", &MVariant::ReadBinarySealed, 16, true},
    };
}

const MVariant& before() {
    static const MVariant value("what was there before");
    return value;
}

TEST(VariantFile, OfAnotherProgramIsRead) {
    for (const Form& form : forms()) {
        SCOPED_TRACE(form.name);
        FileInfo info;
        std::memset(&info, 0x55, sizeof info);
        MVariant value = before();
        EXPECT_TRUE((value.*form.read)(sample_path(form.sample).c_str(), &info));
        EXPECT_TRUE(is_same(value, every_kind()));
        EXPECT_EQ(info.version, 1);
        EXPECT_EQ(info.headerSize, 84);
        EXPECT_EQ(info.flags, 0U);
        EXPECT_EQ(std::string(info.typeName), form.block == 1 ? "MVAR" : "EMVAR");
        EXPECT_EQ(std::string(info.auxName1) + info.auxName2, "");
        EXPECT_TRUE((value.*form.read)(sample_path(form.sample).c_str(), nullptr));
    }
}

TEST(VariantFile, UnderTheOtherCipherIsReadToNothingOfUse) {
    MVariant value = before();
    EXPECT_TRUE(value.ReadBinarySealed(sample_path("every_kind_sealed.mvar").c_str(), nullptr));
    EXPECT_EQ(value.Kind(), MV_EMPTY) << "its body is no multiple of 16 bytes";
    EXPECT_TRUE(value.ReadBinary(sample_path("every_kind_sealed_aes.mvar").c_str(), nullptr));
    EXPECT_FALSE(is_same(value, every_kind()));
}

TEST(VariantFile, ConstructorTakesTheReaderOfTheForm) {
    const std::string sealed = sample_path("every_kind_sealed.mvar");
    const std::string aes = sample_path("every_kind_sealed_aes.mvar");
    const TemporaryFile text("5\n");
    struct Row {
        const char* name;
        std::string file;
        int form;
        MVariant expected;
    };
    const std::vector<Row> rows = {
        {"text", text.Path(), 0, 5},
        {"binary", sealed, 1, every_kind()},
        {"sealed", aes, 2, every_kind()},
        {"any other form", aes, -1, every_kind()},
        {"text as binary", text.Path(), 1, {}},
        {"binary as text", sealed, 0, {}},
        {"no file", sealed + ".not", 2, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_TRUE(is_same(MVariant(row.file.c_str(), row.form), row.expected));
    }
}

TEST(VariantFile, CutAnywhereBeforeItsLastBlockGivesNothing) {
    for (const Form& form : forms()) {
        SCOPED_TRACE(form.name);
        const std::string whole = read_file(sample_path(form.sample));
        const TemporaryFile file(whole);
        for (std::size_t size = whole.size(); size-- > 0;) {
            SCOPED_TRACE(size);
            std::filesystem::resize_file(file.Path(), size);
            MVariant value = before();
            const bool has_body = size > kHeader;
            EXPECT_EQ((value.*form.read)(file.Path().c_str(), nullptr), has_body);
            const std::size_t blocks = (size + form.block - 1 - kHeader) / form.block;
            const bool is_filled_up = has_body && !form.needs_whole_blocks &&
                                      kHeader + blocks * form.block == whole.size();
            if (!is_filled_up) {
                EXPECT_TRUE(is_same(value, has_body ? MVariant() : before()));
            }
        }
    }
}

TEST(VariantFile, ThatEndsInABlockIsFilledUpWithZeros) {
    // A record of 13 bytes, the second block of which holds the last five of the text.
    const TemporaryFile file("");
    ASSERT_TRUE(MVariant("abcdefgh").WriteSealed(file.Path().c_str(), nullptr));
    const std::string whole = read_file(file.Path());
    ASSERT_EQ(whole.size(), kHeader + 16);
    const auto text_of = [&] {
        MVariant value = before();
        EXPECT_TRUE(value.ReadBinary(file.Path().c_str(), nullptr));
        EXPECT_EQ(value.Kind(), MV_STRING);
        return value.AsString();
    };
    for (std::size_t size = whole.size() - 1; size > kHeader + 8; --size) {
        SCOPED_TRACE(size);
        std::filesystem::resize_file(file.Path(), size);
        const std::string broken = text_of();
        EXPECT_EQ(broken.substr(0, 3), "abc") << "of the block before";
        EXPECT_NE(broken, "abcdefgh");
        // The same file with the zeros written out.
        std::filesystem::resize_file(file.Path(), whole.size());
        EXPECT_EQ(broken, text_of());
    }
    std::filesystem::resize_file(file.Path(), kHeader + 8);
    EXPECT_EQ(MVariant(file.Path().c_str(), 1).Kind(), MV_EMPTY) << "no block is made up";
}

TEST(VariantFile, MoreBytesThanTheRecordChangeNothingButForWholeBlocks) {
    for (const Form& form : forms()) {
        SCOPED_TRACE(form.name);
        const std::string whole = read_file(sample_path(form.sample));
        TemporaryFile file("");
        for (std::size_t more = 0; more <= 33; ++more) {
            SCOPED_TRACE(more);
            file.Rewrite(whole + std::string(more, '\x7f'));
            MVariant value = before();
            EXPECT_TRUE((value.*form.read)(file.Path().c_str(), nullptr));
            const bool is_read = !form.needs_whole_blocks || more % form.block == 0;
            EXPECT_TRUE(is_same(value, is_read ? every_kind() : MVariant()));
        }
    }
}

TEST(VariantFile, WithAnyBitWrongIsReadToSomethingWhole) {
    for (const Form& form : forms()) {
        SCOPED_TRACE(form.name);
        const std::string whole = read_file(sample_path(form.sample));
        const TemporaryFile file(whole);
        std::fstream patch(file.Path(), std::ios::binary | std::ios::in | std::ios::out);
        const auto put = [&patch](std::size_t at, char byte) {
            patch.seekp(static_cast<std::streamoff>(at)).put(byte).flush();
        };
        for (std::size_t bit = 0; bit < 8 * whole.size(); ++bit) {
            SCOPED_TRACE(bit);
            const std::size_t at = bit / 8;
            put(at, static_cast<char>(whole[at] ^ 1 << bit % 8));
            MVariant value = before();
            const bool is_read = (value.*form.read)(file.Path().c_str(), nullptr);
            put(at, whole[at]);
            if (!is_read) {
                EXPECT_LT(at, 10U) << "only magic and version can spoil a file";
                EXPECT_TRUE(is_same(value, before()));
            } else {
                MVariant again;
                again.FromBinary(value.ToBinary().get(), value.BinarySize());
                EXPECT_TRUE(is_same(again, value));
            }
        }
    }
}

TEST(VariantFile, ThatIsNoneLeavesTheValueAlone) {
    const TemporaryFile text("{\n \"a\" = 1\n}\n" + std::string(200, ' '));
    const std::string folder = "/";
    for (const std::string& path : {text.Path(), folder, text.Path() + ".not", std::string()}) {
        SCOPED_TRACE(path);
        MVariant value = before();
        EXPECT_FALSE(value.ReadBinary(path.c_str(), nullptr));
        EXPECT_FALSE(value.ReadBinarySealed(path.c_str(), nullptr));
        EXPECT_TRUE(is_same(value, before()));
    }
    MVariant value;
    EXPECT_FALSE(value.ReadBinary(nullptr, nullptr));
    EXPECT_FALSE(value.WriteSealed(nullptr, nullptr));
    EXPECT_FALSE(value.WriteSealed("/no/such/folder/file", nullptr));
}

TEST(VariantFile, IsWrittenAsTheSample) {
    const TemporaryFile file("something longer than what is written" + std::string(1000, 'x'));
    EXPECT_TRUE(every_kind().WriteSealed(file.Path().c_str(), nullptr));
    EXPECT_EQ(read_file(file.Path()), read_file(sample_path("every_kind_sealed.mvar")));

    FileInfo info{};
    std::strcpy(info.auxName1, "a name longer than its field");
    std::strcpy(info.typeName, "OTHER");
    info.version = 7;
    EXPECT_TRUE(every_kind().WriteSealed(file.Path().c_str(), &info));
    EXPECT_EQ(std::string(info.typeName), "EMVAR") << "in the caller's record";
    EXPECT_EQ(info.version, 7) << "and nothing else of it";
    FileInfo read{};
    MVariant value;
    EXPECT_TRUE(value.ReadBinary(file.Path().c_str(), &read));
    EXPECT_TRUE(is_same(value, every_kind()));
    EXPECT_EQ(std::string(read.auxName1), "a name lon");
    EXPECT_EQ(read.version, 1);
}

TEST(VariantFile, HoldsEveryValue) {
    std::mt19937 random(11);
    const TemporaryFile file("");
    for (int i = 0; i < 100; ++i) {
        SCOPED_TRACE(i);
        const MVariant value = random_variant(random);
        ASSERT_TRUE(value.WriteSealed(file.Path().c_str(), nullptr));
        const std::size_t size = read_file(file.Path()).size();
        const std::size_t record = value.BinarySize();
        EXPECT_EQ(size, kHeader + (record + 7) / 8 * 8);
        EXPECT_TRUE(is_same(MVariant(file.Path().c_str(), 1), value));
    }
}

TEST(VariantFile, IsNotReplacedByAValueTooLargeForARecord) {
    MVariant part(MV_VECTOR);
    part[0] = MVariant(std::string(1 << 20, 'x'));
    MVariant value(MV_VECTOR);
    for (int i = 0; i < 2048; ++i) value[i] = part;
    const TemporaryFile file("what was there before");
    EXPECT_FALSE(value.WriteSealed(file.Path().c_str(), nullptr));
    EXPECT_EQ(read_file(file.Path()), "what was there before");
}

}  // namespace
