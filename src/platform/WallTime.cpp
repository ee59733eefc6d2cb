#include "platform/WallTime.h"

namespace korvane::platform {

namespace {

constexpr std::int64_t kSecondsOfDay = 86400;

// The calendar repeats every 400 years, an era. Years begin in March here, so that a leap day is a year's last.
constexpr std::int64_t kYearsOfEra = 400;
constexpr std::int64_t kDaysOfEra = 146097;
constexpr std::int64_t kDaysFromYear0To1970 = 719468;

std::int64_t floorDivided(std::int64_t number, std::int64_t by) {
    return number / by - (number % by < 0 ? 1 : 0);
}

// Days before the month, counted from March.
std::int64_t daysBeforeMonth(std::int64_t monthFromMarch) {
    return (153 * monthFromMarch + 2) / 5;
}

std::int64_t daysOf(const WallTime& time) {
    const std::int64_t year = std::int64_t{time.year} - (time.month <= 2 ? 1 : 0);
    const std::int64_t era = floorDivided(year, kYearsOfEra);
    const std::int64_t yearOfEra = year - era * kYearsOfEra;
    const std::int64_t dayOfYear = daysBeforeMonth((time.month + 9) % 12) + time.day - 1;
    const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * kDaysOfEra + dayOfEra - kDaysFromYear0To1970;
}

WallTime dateOf(std::int64_t days) {
    const std::int64_t shifted = days + kDaysFromYear0To1970;
    const std::int64_t era = floorDivided(shifted, kDaysOfEra);
    const std::int64_t dayOfEra = shifted - era * kDaysOfEra;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t month = (5 * dayOfYear + 2) / 153;
    WallTime time;
    time.year = static_cast<int>(era * kYearsOfEra + yearOfEra + (month >= 10 ? 1 : 0));
    time.month = static_cast<int>(month < 10 ? month + 3 : month - 9);
    time.day = static_cast<int>(dayOfYear - daysBeforeMonth(month) + 1);
    return time;
}

}  // namespace

std::int64_t secondsOf(const WallTime& time) {
    return daysOf(time) * kSecondsOfDay + std::int64_t{time.hour} * 3600 + std::int64_t{time.minute} * 60 + time.second;
}

WallTime wallTimeOf(std::int64_t seconds) {
    const std::int64_t days = floorDivided(seconds, kSecondsOfDay);
    const auto rest = static_cast<int>(seconds - days * kSecondsOfDay);
    WallTime time = dateOf(days);
    time.hour = rest / 3600;
    time.minute = rest / 60 % 60;
    time.second = rest % 60;
    return time;
}

bool isMoment(const WallTime& time) {
    return time.month >= 1 && time.day >= 1 && wallTimeOf(secondsOf(time)) == time;
}

}  // namespace korvane::platform
