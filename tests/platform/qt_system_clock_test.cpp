#include "platform/qt/qt_system_clock.h"

#include <gtest/gtest.h>

#include <QDateTime>

namespace {

LocalTime At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return {year, month, day, hour, minute, second, 0};
}

const LocalTime LateInNovember = At(2026, 11, 15, 23, 11, 5);

TEST(SystemClockTest, WithoutACountryMonthComesFirstWithoutBlanks) {
    const QtSystemClock clock(QLocale::c());
    EXPECT_EQ(clock.DateText(LateInNovember), "11/15/2026");
    EXPECT_EQ(clock.DateText(At(2026, 3, 5)), "03/05/2026");
    EXPECT_EQ(clock.TimeText(LateInNovember), "23:11:05");
    EXPECT_EQ(clock.TimeText(At(2026, 3, 5, 4, 7, 9)), "04:07:09");
}

TEST(SystemClockTest, ACountryHasItsShortFormats) {
    const QtSystemClock german(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(german.DateText(LateInNovember), "15.11.26");
    EXPECT_EQ(german.TimeText(LateInNovember), "23:11");
    const QtSystemClock swedish(QLocale(QLocale::Swedish, QLocale::Sweden));
    EXPECT_EQ(swedish.DateText(LateInNovember), "2026-11-15");
}

struct Roll {
    LocalTime From;
    const char* Text;
};

class RolledDates : public ::testing::TestWithParam<Roll> {};

TEST_P(RolledDates, RollOnToARealDate) {
    EXPECT_EQ(QtSystemClock(QLocale::c()).DateText(GetParam().From), GetParam().Text);
}

INSTANTIATE_TEST_SUITE_P(
    All, RolledDates,
    ::testing::Values(Roll{At(2026, 2, 31), "03/03/2026"}, Roll{At(2028, 2, 30), "03/01/2028"},
                      Roll{At(2026, 3, 0), "02/28/2026"}, Roll{At(2026, 1, 0), "12/31/2025"},
                      Roll{At(2026, 4, 31), "05/01/2026"}, Roll{At(2026, 13, 1), "01/01/2027"},
                      Roll{At(2026, 0, 10), "12/10/2025"}, Roll{At(2000, 25, 31), "01/31/2002"},
                      Roll{At(2000, 2, 29), "02/29/2000"}, Roll{At(2021, 12, 31), "12/31/2021"}));

TEST(SystemClockTest, NowIsTheLocalClock) {
    const QtSystemClock clock;
    const QDateTime before = QDateTime::currentDateTime();
    const LocalTime now = clock.Now();
    const QDateTime after = QDateTime::currentDateTime();
    const QDateTime told(QDate(now.Year, now.Month, now.Day),
                         QTime(now.Hour, now.Minute, now.Second, now.Millisecond));
    EXPECT_LE(before, told);
    EXPECT_LE(told, after);
}

}  // namespace
