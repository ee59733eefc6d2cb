#include "core/TimeText.h"

namespace korvane::core {

namespace {

std::string twoDigits(int number) {
    const int part = number % 100;
    return {static_cast<char>('0' + part / 10), static_cast<char>('0' + part % 10)};
}

}  // namespace

std::string timeText(const platform::WallTime& time) {
    return twoDigits(time.hour) + ':' + twoDigits(time.minute) + ':' + twoDigits(time.second);
}

std::string dateText(const platform::WallTime& time) {
    return twoDigits(time.year / 100) + twoDigits(time.year) + '-' + twoDigits(time.month) + '-' + twoDigits(time.day);
}

std::string dateStamp(const platform::WallTime& time) {
    return twoDigits(time.year) + twoDigits(time.month) + twoDigits(time.day);
}

std::string hourMinuteStamp(const platform::WallTime& time) {
    return '_' + twoDigits(time.hour) + twoDigits(time.minute);
}

std::string hourMinuteFileText(const platform::WallTime& time) {
    return twoDigits(time.hour) + '_' + twoDigits(time.minute);
}

std::string timeFileText(const platform::WallTime& time) {
    return hourMinuteFileText(time) + '_' + twoDigits(time.second);
}

}  // namespace korvane::core
