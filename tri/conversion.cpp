#include "tri/conversion.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>

#include "support/number_text.h"
#include "support/regex.h"
#include "tri/property_text.h"

namespace zol::tri {

namespace {

using ubx::object::Property;

enum TypeId : std::int32_t {
    kInt32 = 3,
    kInt64 = 4,
    kBoolean = 5,
    kDouble = 6,
    kString = 7,
};

// Nothing in it has to be there, but an empty match counts as none, so that the empty
// text is no number. A lone sign or point is one, and is 0.
constexpr const char* kWholeNumber = "^[-+]?[0-9]*[.]?[0-9]*$";
// Needs a digit at its end: "1." is no number here.
constexpr const char* kRealNumber = "^[-+]?[0-9]*[.]?[0-9]*[eE]?[+-]?[0-9]+$";
// Parenthesis and bar match themselves in this language and "\s" is the letter s. So no
// plain word or digit is a truth value, and what does match begins with a parenthesis,
// which atoi reads as 0. Callers rely on the refusal.
constexpr const char* kTruthValue = "^([01]|TRUE|FALSE)\\s*$";

constexpr const char* kYearFirst = "^[0-9][0-9][0-9][0-9]/[0-9][0-9]/[0-9][0-9]$";
constexpr const char* kYearLast = "^[0-9][0-9]/[0-9][0-9]/[0-9][0-9][0-9][0-9]$";

bool looks_like(const std::string& text, const char* pattern) {
    return regex_Match(text, pattern, true) != 0;
}

/// Towards zero. What does not fit gives the least number, as the processor's own
/// conversion does; in C++ it would be undefined.
template <class Whole>
Whole truncated(double value) {
    // Both bounds are powers of two and thus exact.
    constexpr double kLeast = static_cast<double>(std::numeric_limits<Whole>::min());
    return value > kLeast - 1.0 && value < -kLeast ? static_cast<Whole>(value)
                                                   : std::numeric_limits<Whole>::min();
}

/// As the C library's atoi, which takes the low 32 bits of what strtol gives: stated here,
/// since C itself leaves open what becomes of a text beyond the range.
int whole_number(const std::string& text) {
    return static_cast<int>(std::strtol(text.c_str(), nullptr, 10));
}

/// Hands the value in its own type to `convert`; nothing for a type that has no number.
template <class Convert>
auto converted(const Property& property, Convert convert) -> decltype(convert(0)) {
    switch (property.TypeId()) {
        case kInt32:
            return convert(property.AsInt32());
        case kInt64:
            return convert(property.AsInt64());
        case kBoolean:
            return convert(property.AsBoolean());
        case kDouble:
            return convert(property.AsDouble());
        case kString:
            return convert(text_of(property));
        default:
            return std::nullopt;
    }
}

template <class Whole>
struct ToWhole {
    using Result = std::optional<Whole>;
    Result operator()(std::int32_t value) const { return value; }
    // The low bits where the result is narrower.
    Result operator()(std::int64_t value) const { return static_cast<Whole>(value); }
    Result operator()(bool value) const { return value ? 1 : 0; }
    Result operator()(double value) const { return truncated<Whole>(value); }
    Result operator()(const std::string& text) const {
        return looks_like(text, kWholeNumber) ? Result(whole_number(text)) : std::nullopt;
    }
};

struct ToDouble {
    using Result = std::optional<double>;
    Result operator()(std::int32_t value) const { return value; }
    Result operator()(std::int64_t value) const { return static_cast<double>(value); }
    Result operator()(bool value) const { return value ? 1.0 : 0.0; }
    Result operator()(double value) const { return value; }
    Result operator()(const std::string& text) const {
        return looks_like(text, kRealNumber) ? Result(support::read_double(text)) : std::nullopt;
    }
};

struct ToBoolean {
    using Result = std::optional<bool>;
    Result operator()(std::int32_t value) const { return value != 0; }
    Result operator()(std::int64_t value) const { return value != 0; }
    Result operator()(bool value) const { return value; }
    Result operator()(double value) const { return value != 0.0; }
    Result operator()(const std::string& text) const {
        return looks_like(text, kTruthValue) ? Result(whole_number(text) != 0) : std::nullopt;
    }
};

/// One order of the fields of a date: where its text has year, month and day.
struct DateOrder {
    std::string_view type_name;
    const char* pattern;
    const char* format;
    /// For each field of the format: 0 the year, 1 the month, 2 the day.
    std::array<std::size_t, 3> fields;
};

constexpr std::array<DateOrder, 3> kDateOrders{{
    {"Types.YMD_Date", kYearFirst, "%4d/%2d/%2d", {0, 1, 2}},
    {"Types.MDY_Date", kYearLast, "%2d/%2d/%4d", {1, 2, 0}},
    {"Types.DMY_Date", kYearLast, "%2d/%2d/%4d", {2, 1, 0}},
}};

}  // namespace

std::optional<std::int32_t> as_int32(const Property& property) {
    return converted(property, ToWhole<std::int32_t>());
}

std::optional<std::int64_t> as_int64(const Property& property) {
    return converted(property, ToWhole<std::int64_t>());
}

std::optional<double> as_double(const Property& property) {
    return converted(property, ToDouble());
}

std::optional<bool> as_boolean(const Property& property) {
    return converted(property, ToBoolean());
}

bool store_date(const Property& property, int* year, int* month, int* day) {
    if (property.TypeId() != kString) {
        return false;
    }
    const std::string text = text_of(property);
    const std::string type_name = property.TypeName();
    const std::array<int*, 3> fields{year, month, day};
    for (const DateOrder& order : kDateOrders) {
        if (type_name == order.type_name && looks_like(text, order.pattern)) {
            // Any line of the text may have matched; the fields come from its start, and a
            // text that begins otherwise leaves them alone. No calendar is asked.
            // NOLINTNEXTLINE(cert-err34-c): the pattern has seen to the digits
            std::sscanf(text.c_str(), order.format, fields[order.fields[0]],
                        fields[order.fields[1]], fields[order.fields[2]]);
            return true;
        }
    }
    return false;
}

}  // namespace zol::tri
