// The texts of typed values, and the values of texts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zol::engine::tri {

/// In fixed notation with at most `decimals` digits behind the point, the zeros at the end cut
/// and the point with them; the same in every locale. "nan", "inf" or "-inf" for what is no
/// number.
std::string fixed_text(double value, int decimals);

/// In which order a text gives a day of the calendar, as in 2001/12/31.
enum class DateOrder { None, YearFirst, DayFirst, MonthFirst, DayOrMonthFirst };
DateOrder date_order(std::string_view text);

}  // namespace zol::engine::tri
