#ifndef ORVIA_PLATFORM_QT_QT_SYSTEM_CLOCK_H
#define ORVIA_PLATFORM_QT_QT_SYSTEM_CLOCK_H

#include <QLocale>

#include "platform/host.h"

/// The system's short form of a date. Where the system has no country, month/day/year.
[[nodiscard]] QString ShortDateFormat(const QLocale& locale);

/// The local clock, and dates and times in the system's short formats. The system's format decides
/// on two or four digits of the year. Where the system has no country (the C and POSIX locales), a
/// date is month/day/year and a time has 24 hours: 11/15/2026, 23:11:05.
class QtSystemClock final : public SystemClock {
 public:
    explicit QtSystemClock(const QLocale& locale = QLocale::system());

    [[nodiscard]] LocalTime Now() const override;
    /// `Day` from 0 (the day before the 1st) and any `Month` roll on to a real date.
    [[nodiscard]] std::string DateText(const LocalTime& time) const override;
    [[nodiscard]] std::string TimeText(const LocalTime& time) const override;

 private:
    QLocale locale_;
};

#endif  // ORVIA_PLATFORM_QT_QT_SYSTEM_CLOCK_H
