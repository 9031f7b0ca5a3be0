// The host's Date: a wall-clock time in whole seconds.
#include "host/values/date.h"

#include <cstdio>
#include <ctime>

namespace qzlhost {

namespace {

/// Carries what is above or below the range 0 to `size` - 1 from `low` to `high`.
void Carry(int64_t &low, int64_t &high, int64_t size)
{
    int64_t carried = low / size;
    if (low % size < 0)
        --carried;
    low -= carried * size;
    high += carried;
}

bool IsLeapYear(int64_t year)
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

/// The days of a month from 0 to 11.
int64_t DaysOf(int64_t month, int64_t year)
{
    constexpr int64_t kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 1 && IsLeapYear(year) ? 29 : kDays[month];
}

/// The calendar repeats after this many years.
constexpr int64_t kCycleYears = 400;
constexpr int64_t kCycleDays = 146097;

/// Carries days from 0 on into their month and year.
void CarryDays(int64_t &day, int64_t &month, int64_t &year)
{
    int64_t cycles = 0;
    Carry(day, cycles, kCycleDays);
    year += cycles * kCycleYears;
    while (day >= DaysOf(month, year)) {
        day -= DaysOf(month, year);
        ++month;
        Carry(month, year, 12);
    }
}

/// The same moment with every field in its range.
DateFields Normalized(const DateFields &fields)
{
    auto [year, month, day, hour, minute, second] = fields;
    Carry(second, minute, 60);
    Carry(minute, hour, 60);
    Carry(hour, day, 24);
    --month;
    --day;
    Carry(month, year, 12);
    CarryDays(day, month, year);
    return {year, month + 1, day + 1, hour, minute, second};
}

} // namespace

Date::Date()
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    fields_ = {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
               local.tm_hour,        local.tm_min,     local.tm_sec};
}

std::string Date::AsString() const
{
    const auto [year, month, day, hour, minute, second] = Fields();
    char text[80];
    std::snprintf(text, sizeof text, "%04lld-%02d-%02d %02d:%02d:%02d", static_cast<long long>(year),
                  static_cast<int>(month), static_cast<int>(day), static_cast<int>(hour),
                  static_cast<int>(minute), static_cast<int>(second));
    return text;
}

DateFields Date::Fields() const
{
    std::lock_guard lock(mutex_);
    return Normalized(fields_);
}

void Date::SetFields(const DateFields &fields)
{
    std::lock_guard lock(mutex_);
    fields_ = fields;
}

void Date::SetField(size_t field, int64_t value)
{
    std::lock_guard lock(mutex_);
    fields_[field] = value;
}

} // namespace qzlhost
