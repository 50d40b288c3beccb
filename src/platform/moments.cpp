#include "platform/moments.h"

#include <chrono>

namespace {

using Days = std::chrono::sys_days;

constexpr Days FirstDay = std::chrono::year{2000} / 1 / 1;

}  // namespace

std::int64_t ToMilliseconds(const LocalTime& time) {
    using namespace std::chrono;
    const Days day = year{time.Year} / time.Month / time.Day;
    return milliseconds(day - FirstDay + hours{time.Hour} + minutes{time.Minute} +
                        seconds{time.Second} + milliseconds{time.Millisecond})
        .count();
}

LocalTime FromMilliseconds(std::int64_t count) {
    using namespace std::chrono;
    const auto moment = sys_time<milliseconds>(FirstDay) + milliseconds{count};
    const auto midnight = floor<days>(moment);
    const year_month_day date{midnight};
    const hh_mm_ss time{moment - midnight};
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            static_cast<int>(time.hours().count()),
            static_cast<int>(time.minutes().count()),
            static_cast<int>(time.seconds().count()),
            static_cast<int>(time.subseconds().count())};
}
