#include "platform/qt/qt_system_clock.h"

#include <QDateTime>

#include "platform/qt/text_qt.h"

// The C locale's short date has month names and blanks. No country's short format is like it.
QString ShortDateFormat(const QLocale& locale) {
    const QString format = locale.dateFormat(QLocale::ShortFormat);
    return format == QLocale::c().dateFormat(QLocale::ShortFormat) ? QStringLiteral("MM/dd/yyyy")
                                                                   : format;
}

QtSystemClock::QtSystemClock(const QLocale& locale) : locale_(locale) {}

LocalTime QtSystemClock::Now() const {
    const QDateTime now = QDateTime::currentDateTime();
    const QDate date = now.date();
    const QTime time = now.time();
    return {date.year(),   date.month(),  date.day(), time.hour(),
            time.minute(), time.second(), time.msec()};
}

std::string QtSystemClock::DateText(const LocalTime& time) const {
    const QDate date = QDate(time.Year, 1, 1).addMonths(time.Month - 1).addDays(time.Day - 1);
    return FromQt(locale_.toString(date, ShortDateFormat(locale_)));
}

std::string QtSystemClock::TimeText(const LocalTime& time) const {
    const QTime moment = QTime(0, 0).addSecs((time.Hour * 60 + time.Minute) * 60 + time.Second);
    return FromQt(locale_.toString(moment, QLocale::ShortFormat));
}
