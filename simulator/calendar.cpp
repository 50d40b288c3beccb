#include "simulator/calendar.h"

namespace simulator {

namespace {

constexpr int DaysPerYear = 365;
constexpr int FirstYear = 2000;
constexpr int LastYear = 2084;  // the last whole year that ten bits of months can stamp

bool IsLeap(int year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int DaysInMonth(int year, int month) {
    constexpr std::array<int, 12> days = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeap(year) ? 29 : days[static_cast<std::size_t>(month - 1)];
}

int DaysInYear(int year) {
    return IsLeap(year) ? DaysPerYear + 1 : DaysPerYear;
}

}  // namespace

CivilSeconds ToSeconds(const CivilTime& time) {
    CivilSeconds days = time.Day - 1;
    for (int year = FirstYear; year < time.Year; ++year) {
        days += DaysInYear(year);
    }
    for (int month = 1; month < time.Month; ++month) {
        days += DaysInMonth(time.Year, month);
    }
    const CivilSeconds minutes = days * 1440 + CivilSeconds{time.Hour} * 60 + time.Minute;
    return minutes * 60 + time.Second;
}

CivilTime FromSeconds(CivilSeconds seconds) {
    seconds = seconds < 0 ? 0 : seconds;
    CivilTime time;
    auto days = static_cast<int>(seconds / SecondsPerDay);
    const auto rest = static_cast<int>(seconds % SecondsPerDay);
    while (days >= DaysInYear(time.Year)) {
        days -= DaysInYear(time.Year);
        ++time.Year;
    }
    while (days >= DaysInMonth(time.Year, time.Month)) {
        days -= DaysInMonth(time.Year, time.Month);
        ++time.Month;
    }
    time.Day = days + 1;
    time.Hour = rest / 3600;
    time.Minute = rest / 60 % 60;
    time.Second = rest % 60;
    return time;
}

bool IsCivilTime(const CivilTime& time) {
    const bool date = time.Year >= FirstYear && time.Year <= LastYear && time.Month >= 1 &&
                      time.Month <= 12 && time.Day >= 1 &&
                      time.Day <= DaysInMonth(time.Year, time.Month);
    const bool clock = time.Hour >= 0 && time.Hour <= 23 && time.Minute >= 0 && time.Minute <= 59 &&
                       time.Second >= 0 && time.Second <= 59;
    return date && clock;
}

int Weekday(CivilSeconds seconds) {
    // The first day of 2000 was a Saturday, day 7.
    return static_cast<int>((seconds / SecondsPerDay + 6) % 7) + 1;
}

std::uint8_t Bcd(int value) {
    return static_cast<std::uint8_t>(value / 10 % 10 * 16 + value % 10);
}

std::optional<int> FromBcdByte(std::uint8_t byte) {
    const int tens = byte >> 4;
    const int units = byte & 0x0F;
    if (tens > 9 || units > 9) {
        return std::nullopt;
    }
    return tens * 10 + units;
}

std::array<std::uint8_t, 4> PackTime(const CivilTime& time) {
    const auto months = static_cast<std::uint32_t>((time.Year - FirstYear) * 12 + time.Month - 1);
    const std::uint32_t bits = static_cast<std::uint32_t>(time.Second) |
                               static_cast<std::uint32_t>(time.Minute) << 6 |
                               static_cast<std::uint32_t>(time.Hour) << 12 |
                               static_cast<std::uint32_t>(time.Day) << 17 | months << 22;
    std::array<std::uint8_t, 4> bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<std::uint8_t>(bits >> (8 * i) & 0xFF);
    }
    return bytes;
}

std::uint8_t HourByte(int hour, ClockForm form) {
    if (form == ClockForm::Hours24) {
        return Bcd(hour);
    }
    constexpr int TwelveHourBit = 0x40;
    constexpr int AfternoonBit = 0x20;
    const int shown = hour % 12 == 0 ? 12 : hour % 12;
    return static_cast<std::uint8_t>(TwelveHourBit | (hour >= 12 ? AfternoonBit : 0) | Bcd(shown));
}

}  // namespace simulator
