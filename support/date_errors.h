// What the date functions say of a date that is not valid.
#pragma once

#include <string_view>

#include "support/date.h"

namespace zol::support {

constexpr std::string_view kFirstDateInvalid = "First date structure is not valid";
constexpr std::string_view kSecondDateInvalid = "Second date structure is not valid";
static_assert(kSecondDateInvalid.size() < KV_ERROR_SIZE);

/// False for a date that is not valid, with the message in `error`. The first date is
/// looked at first.
bool check_date(const kv_date& date, std::string_view message, char* error);
bool check_dates(const kv_date& first, const kv_date& second, char* error);

}  // namespace zol::support
