// Attributes: how they are found, and what each type becomes in each conversion.
#include <gtest/gtest.h>

#include <array>
#include <cfenv>
#include <clocale>
#include <cmath>
#include <limits>
#include <string>

#include "tests/api/pending_error.h"
#include "tests/made_locales.h"
#include "tests/tri/fixture.h"

#if defined(__SSE2__)
#include <xmmintrin.h>
#endif

namespace zol::testing {
namespace {

using doubles::ScriptedValue;
using doubles::triangulation_script;
using ubx::object::TypeDescriptor;

const TypeDescriptor kInt32{3, "INT32"};
const TypeDescriptor kInt64{4, "INT64"};
const TypeDescriptor kBoolean{5, "BOOLEAN"};
const TypeDescriptor kDouble{6, "DOUBLE"};
const TypeDescriptor kString{7, "STRING"};
const TypeDescriptor kBinary{8, "BINARY"};
const TypeDescriptor kYmd{7, "Types.YMD_Date"};
const TypeDescriptor kMdy{7, "Types.MDY_Date"};
const TypeDescriptor kDmy{7, "Types.DMY_Date"};

constexpr int kLeast = std::numeric_limits<int>::min();
constexpr int kMost = std::numeric_limits<int>::max();
constexpr long long kLeastWide = std::numeric_limits<long long>::min();

/// What a conversion came to: a number, or the tail of its message with the output as it was.
struct Answer {
    bool operator==(const Answer&) const = default;

    double number = 0.0;
    std::string failure = {};
};

std::ostream& operator<<(std::ostream& out, const Answer& answer) {
    return answer.failure.empty() ? out << answer.number : out << answer.failure;
}

const Answer kNoNumber{0.0, "Attribute value is not a number."};
const Answer kNoBoolean{0.0, "Attribute value is not a boolean."};

class AttributesTest : public TriangulationFixture {
protected:
    void SetAttribute(const TypeDescriptor& type, const ScriptedValue& value) {
        triangulation_script.attributes.clear();
        triangulation_script.Add("it", &type, value);
    }

    template <class Number>
    Answer Ask(int (*function)(TriangulationHandle*, const char*, Number*), const char* name) {
        constexpr Number kCanary = 77;
        Number value = kCanary;
        if (function(mesh_, "it", &value) == 0) {
            EXPECT_EQ(pending_error(), "");
            return {static_cast<double>(value), ""};
        }
        EXPECT_EQ(value, kCanary);
        const std::string start = std::string("ZOL_Triangulation_GetAttributeAs") + name + " ";
        EXPECT_EQ(pending_error().substr(0, start.size()), start);
        return {0.0, pending_error().substr(start.size())};
    }

    Answer AsInt32() { return Ask(ZOL_Triangulation_GetAttributeAsInt32, "Int32"); }
    Answer AsInt64() { return Ask(ZOL_Triangulation_GetAttributeAsInt64, "Int64"); }
    Answer AsBoolean() { return Ask(ZOL_Triangulation_GetAttributeAsBoolean, "Boolean"); }
    Answer AsDouble() { return Ask(ZOL_Triangulation_GetAttributeAsDouble, "Double"); }
};

TEST_F(AttributesTest, EachTypeIsReadAsItselfAndConverted) {
    struct Row {
        const char* name;
        const TypeDescriptor* type;
        ScriptedValue value;
        Answer int32;
        Answer int64;
        Answer boolean;
        Answer real;
    };
    const double nan = std::nan("");
    const Row rows[] = {
        {"INT32 below 0", &kInt32, {.int32 = -1}, {-1}, {-1}, {1}, {-1}},
        {"INT32 zero, all other readings not", &kInt32, {0, 9, true, 9.5, "9"}, {0}, {0}, {0}, {0}},
        {"INT64", &kInt64, {.int64 = 4294967296}, {0}, {4294967296.0}, {1}, {4294967296.0}},
        {"INT64, top bit of the low half",
         &kInt64,
         {.int64 = 2147483648},
         {kLeast},
         {2147483648.0},
         {1},
         {2147483648.0}},
        {"INT64 zero", &kInt64, {9, 0, true, 9.5, "9"}, {0}, {0}, {0}, {0}},
        {"BOOLEAN true", &kBoolean, {.boolean = true}, {1}, {1}, {1}, {1}},
        {"BOOLEAN false", &kBoolean, {9, 9, false, 9.5, "9"}, {0}, {0}, {0}, {0}},
        {"DOUBLE", &kDouble, {.real = 2.9}, {2}, {2}, {1}, {2.9}},
        {"DOUBLE below 0", &kDouble, {.real = -2.9}, {-2}, {-2}, {1}, {-2.9}},
        {"DOUBLE zero", &kDouble, {9, 9, true, 0.0, "9"}, {0}, {0}, {0}, {0}},
        {"DOUBLE minus zero", &kDouble, {.real = -0.0}, {0}, {0}, {0}, {0}},
        {"DOUBLE small", &kDouble, {.real = 0.25}, {0}, {0}, {1}, {0.25}},
        {"DOUBLE at the end of 32 bits",
         &kDouble,
         {.real = 2147483647.75},
         {kMost},
         {2147483647.0},
         {1},
         {2147483647.75}},
        {"DOUBLE at the other end",
         &kDouble,
         {.real = -2147483648.75},
         {kLeast},
         {-2147483648.0},
         {1},
         {-2147483648.75}},
        {"DOUBLE beyond 32 bits", &kDouble, {.real = 3e9}, {kLeast}, {3e9}, {1}, {3e9}},
        {"DOUBLE beyond 64 bits",
         &kDouble,
         {.real = 1e30},
         {kLeast},
         {static_cast<double>(kLeastWide)},
         {1},
         {1e30}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        SetAttribute(*row.type, row.value);
        EXPECT_EQ(AsInt32(), row.int32);
        EXPECT_EQ(AsInt64(), row.int64);
        EXPECT_EQ(AsBoolean(), row.boolean);
        EXPECT_EQ(AsDouble(), row.real);
    }
    SetAttribute(kDouble, {.real = nan});
    EXPECT_EQ(AsInt32(), Answer{kLeast});
    EXPECT_EQ(AsBoolean(), Answer{1}) << "NaN is not 0";
    EXPECT_TRUE(std::isnan(AsDouble().number));
}

TEST_F(AttributesTest, OtherTypesAreNeitherNumbersNorTruths) {
    for (const int id : {0, 1, 2, 8, 9, 10, -1}) {
        SCOPED_TRACE(id);
        const TypeDescriptor type{id, "INT32"};
        SetAttribute(type, {1, 1, true, 1.0, "1"});
        EXPECT_EQ(AsInt32(), kNoNumber);
        EXPECT_EQ(AsInt64(), kNoNumber);
        EXPECT_EQ(AsBoolean(), kNoBoolean);
        EXPECT_EQ(AsDouble(), kNoNumber);
    }
}

TEST_F(AttributesTest, ATextIsANumberWhereItsPatternSaysSo) {
    struct Row {
        const char* text;
        Answer whole;
        Answer real;
    };
    const Row rows[] = {
        {"12", {12}, {12}},
        {"12.9", {12}, {12.9}},
        {"-.9", {0}, {-0.9}},
        {"+7", {7}, {7}},
        {"1.", {1}, kNoNumber},
        {"+.5", {0}, {0.5}},
        {"1e5", kNoNumber, {1e5}},
        {"1E-2", kNoNumber, {0.01}},
        {"-", {0}, kNoNumber},
        {".", {0}, kNoNumber},
        {"", kNoNumber, kNoNumber},
        {"abc", kNoNumber, kNoNumber},
        {" 1", kNoNumber, kNoNumber},
        {"1 ", kNoNumber, kNoNumber},
        {"0x10", kNoNumber, kNoNumber},
        {"1,5", kNoNumber, kNoNumber},
        {"nan", kNoNumber, kNoNumber},
        // A sign may stand where the exponent's letter is missing; what is read ends there.
        {"1+5", kNoNumber, {1}},
        // Any line may match, and the reading starts at the first.
        {"abc\n12", {0}, {0}},
        {"12\nabc", {12}, {12}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        SetAttribute(kString, {1, 1, true, 1.0, row.text});
        EXPECT_EQ(AsInt32(), row.whole);
        EXPECT_EQ(AsInt64(), row.whole);
        EXPECT_EQ(AsDouble(), row.real);
    }
    SetAttribute(kString, {.text = std::string(300, '0') + "5"});
    EXPECT_EQ(AsInt32(), Answer{5}) << "all of a long text is read";
}

TEST_F(AttributesTest, ATextOfMoreThan32BitsIsNoWiderAsInt64) {
    SetAttribute(kString, {.text = "4294967301"});
    EXPECT_EQ(AsInt64(), AsInt32());
    EXPECT_LE(AsInt64().number, kMost);
}

TEST_F(AttributesTest, NoWordIsATruthAndWhatMatchesIsFalse) {
    for (const char* const word : {"TRUE", "FALSE", "true", "0", "1", "", "yes", "(1)"}) {
        SCOPED_TRACE(word);
        SetAttribute(kString, {1, 1, true, 1.0, word});
        EXPECT_EQ(AsBoolean(), kNoBoolean);
    }
    for (const char* const text :
         {"(1|TRUE|FALSE)", "(0|true|False)", "(1|TRUE|FALSE)sss", "x\n(1|TRUE|FALSE)"}) {
        SCOPED_TRACE(text);
        SetAttribute(kString, {1, 1, true, 1.0, text});
        EXPECT_EQ(AsBoolean(), Answer{0});
    }
}

TEST_F(AttributesTest, ADecimalCommaOfTheProcessChangesNothing) {
    SetAttribute(kString, {.text = "1.5"});
    testing_support::MadeLocales locales;
    ASSERT_TRUE(locales.Set("de_DE", "UTF-8"));
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    EXPECT_EQ(AsDouble(), Answer{1.5});
}

TEST_F(AttributesTest, TheModeOfTheProcessorChangesNothing) {
    const struct {
        const char* name;
        const TypeDescriptor* type;
        ScriptedValue value;
        Answer boolean;
        Answer real;
    } rows[] = {
        {"INT64 between two doubles",
         &kInt64,
         {.int64 = 9007199254740993},
         {1},
         {9007199254740992.0}},
        {"INT64 below 0", &kInt64, {.int64 = -9007199254740993}, {1}, {-9007199254740992.0}},
        {"the smallest DOUBLE", &kDouble, {.real = 5e-324}, {1}, {5e-324}},
        {"a text", &kString, {.text = "0.1"}, kNoBoolean, {0.1}},
        {"a small text", &kString, {.text = "5e-324"}, kNoBoolean, {5e-324}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SetAttribute(*row.type, row.value);
        for (const int rounding : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
            std::fesetround(rounding);
            const Answer real = AsDouble();
            EXPECT_EQ(std::fegetround(), rounding) << "the mode is the caller's";
            std::fesetround(FE_TONEAREST);
            EXPECT_EQ(real, row.real);
        }
#if defined(__SSE2__)
        const unsigned mode = _mm_getcsr();
        // Small numbers to zero on the way in and out.
        _mm_setcsr(mode | 0x8040U);
        const Answer boolean = AsBoolean();
        const Answer real = AsDouble();
        EXPECT_EQ(_mm_getcsr() & 0x8040U, 0x8040U) << "the mode is the caller's";
        _mm_setcsr(mode);
        EXPECT_EQ(boolean, row.boolean);
        EXPECT_EQ(real, row.real);
#endif
    }
}

TEST_F(AttributesTest, TheTypeNameAndTheFormDecideWhatIsADate) {
    struct Row {
        const char* name;
        const TypeDescriptor* type;
        const char* text;
        bool is_date;
        std::array<int, 3> date;
    };
    constexpr std::array kUntouched{-1, -2, -3};
    const Row rows[] = {
        {"year first", &kYmd, "2001/12/31", true, {2001, 12, 31}},
        {"month first", &kMdy, "12/31/2001", true, {2001, 12, 31}},
        {"day first", &kDmy, "12/31/2001", true, {2001, 31, 12}},
        {"no calendar is asked", &kYmd, "9999/99/99", true, {9999, 99, 99}},
        {"another order's form", &kYmd, "12/31/2001", false, kUntouched},
        {"year first where it is last", &kDmy, "2001/12/31", false, kUntouched},
        {"a plain text", &kString, "2001/12/31", false, kUntouched},
        {"another mark", &kYmd, "2001-12-31", false, kUntouched},
        {"a short year", &kYmd, "01/12/31", false, kUntouched},
        {"on the second line", &kYmd, "7\n2001/12/31", true, {7, -2, -3}},
        {"behind a line of words", &kMdy, "x\n12/31/2001", true, kUntouched},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        SetAttribute(*row.type, {.text = row.text});
        std::array<int, 3> date = kUntouched;
        EXPECT_EQ(ZOL_Triangulation_GetAttributeAsDate(mesh_, "it", &date[0], &date[1], &date[2]),
                  row.is_date ? 0 : 1);
        EXPECT_EQ(date, row.date);
        EXPECT_EQ(pending_error(),
                  row.is_date
                      ? ""
                      : "ZOL_Triangulation_GetAttributeAsDate Attribute value is not a date.");
    }
    const TypeDescriptor not_a_text{6, "Types.YMD_Date"};
    SetAttribute(not_a_text, {.text = "2001/12/31"});
    int part = 0;
    EXPECT_EQ(ZOL_Triangulation_GetAttributeAsDate(mesh_, "it", &part, &part, &part), 1);
}

TEST_F(AttributesTest, TheTypeCodeIsThatOfTheNameAlone) {
    struct Row {
        TypeDescriptor type;
        int code;
    };
    const Row rows[] = {{kInt32, 1},
                        {kInt64, 2},
                        {kBoolean, 3},
                        {kDouble, 4},
                        {kString, 5},
                        {kYmd, 6},
                        {kDmy, 7},
                        {kMdy, 8},
                        {kBinary, 0},
                        {{3, ""}, 0},
                        {{0, "INT32"}, 1},
                        {{3, "int32"}, 0},
                        {{7, "Types.YMD_Date "}, 0}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.type.name);
        SetAttribute(row.type, {});
        int code = -77;
        EXPECT_EQ(ZOL_Triangulation_GetAttributeType(mesh_, "it", &code), 0);
        EXPECT_EQ(code, row.code);
    }
    triangulation_script.attributes.clear();
    triangulation_script.Add("it", nullptr);
    int code = -77;
    EXPECT_EQ(ZOL_Triangulation_GetAttributeType(mesh_, "it", &code), 0);
    EXPECT_EQ(code, 0) << "without a type it has no name";
}

TEST_F(AttributesTest, AnyTypeHasATextOfSixDecimalsAtMost) {
    for (const TypeDescriptor* type : {&kDouble, &kBinary, &kString}) {
        for (const std::size_t length : {0U, 254U, 300U}) {
            SetAttribute(*type, {.text = std::string(length, 'v')});
            doubles::triangulation_journal.clear();
            EXPECT_EQ(text_of_call([this](char* buffer) {
                          return ZOL_Triangulation_GetAttributeAsString(mesh_, "it", buffer);
                      }),
                      std::string(std::min<std::size_t>(length, 254), 'v'));
            EXPECT_EQ(doubles::triangulation_journal.back(), "Property::AsString 6");
        }
    }
}

TEST_F(AttributesTest, ANameIsFoundWholeByCaseAndFirst) {
    triangulation_script.Add("grade", &kInt32, {.int32 = 1});
    triangulation_script.Add("grade cut", &kInt32, {.int32 = 2});
    triangulation_script.Add("Grade", &kInt32, {.int32 = 3});
    triangulation_script.Add("grade", &kInt32, {.int32 = 4});
    triangulation_script.Add("", &kInt32, {.int32 = 5});
    triangulation_script.attributes.emplace_back("nothing", nullptr);
    triangulation_script.Add("nothing", &kInt32, {.int32 = 6});
    struct Row {
        const char* name;
        int value;
    };
    for (const Row& row : {Row{"grade", 1}, Row{"grade cut", 2}, Row{"Grade", 3}, Row{"", 5},
                           Row{"grad", 0}, Row{"grade ", 0}, Row{"nothing", 0}}) {
        SCOPED_TRACE(row.name);
        int value = 0;
        EXPECT_EQ(ZOL_Triangulation_GetAttributeAsInt32(mesh_, row.name, &value),
                  row.value == 0 ? 1 : 0);
        EXPECT_EQ(value, row.value);
        EXPECT_EQ(pending_error(),
                  row.value == 0 ? "ZOL_Triangulation_GetAttributeAsInt32 Could not find attribute."
                                 : "");
    }
}

TEST_F(AttributesTest, AnEmptyLibraryReadsNoName) {
    int type = 0;
    EXPECT_EQ(ZOL_Triangulation_GetAttributeType(mesh_, nullptr, &type), 1);
    EXPECT_EQ(pending_error(), "ZOL_Triangulation_GetAttributeType Could not find attribute.");
    int count = -1;
    EXPECT_EQ(ZOL_Triangulation_GetAttributeNames(mesh_, nullptr, &count), 0);
    EXPECT_EQ(count, 0);
}

TEST_F(AttributesTest, NamesComeInOrderAndTouchNoFurtherBuffer) {
    triangulation_script.Add("second", &kString);
    triangulation_script.attributes.emplace_front("first", nullptr);
    triangulation_script.Add("second", &kString);
    triangulation_script.Add(std::string(300, 'n'), &kString);
    std::array<std::array<char, 255>, 5> buffers;
    std::array<char*, 5> names;
    for (std::size_t i = 0; i < buffers.size(); ++i) {
        buffers[i].fill('#');
        names[i] = buffers[i].data();
    }
    int count = -1;
    EXPECT_EQ(ZOL_Triangulation_GetAttributeNames(mesh_, names.data(), &count), 0);
    ASSERT_EQ(count, 4);
    EXPECT_STREQ(names[0], "first");
    EXPECT_STREQ(names[1], "second");
    EXPECT_STREQ(names[2], "second");
    EXPECT_EQ(names[3], std::string(254, 'n'));
    std::array<char, 255> untouched;
    untouched.fill('#');
    EXPECT_EQ(buffers[4], untouched);
}

}  // namespace
}  // namespace zol::testing
