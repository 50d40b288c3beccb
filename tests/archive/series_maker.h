#ifndef ORVIA_TESTS_ARCHIVE_SERIES_MAKER_H
#define ORVIA_TESTS_ARCHIVE_SERIES_MAKER_H

#include <algorithm>
#include <array>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "archive/record_moment.h"
#include "archive/series.h"
#include "history/sample_history.h"

namespace testing_support {

/// The packed time of these fields, which need not be a date that there is.
[[nodiscard]] inline std::array<std::uint8_t, 4> Packed(int year, int month, int day, int hour = 0,
                                                        int minute = 0, int second = 0) {
    const int months = (year - 2000) * 12 + month - 1;
    return {static_cast<std::uint8_t>(second | minute << 6),
            static_cast<std::uint8_t>(minute >> 2 | hour << 4),
            static_cast<std::uint8_t>(hour >> 4 | day << 1 | months << 6),
            static_cast<std::uint8_t>(months >> 2)};
}

[[nodiscard]] inline std::array<std::uint8_t, 4> Packed(Moment moment) {
    const LocalTime time = TimeOfMoment(moment);
    return Packed(time.Year, time.Month, time.Day, time.Hour, time.Minute, time.Second);
}

[[nodiscard]] inline Moment At(int year, int month, int day, int hour = 0, int minute = 0,
                               int second = 0) {
    return MomentOf(LocalTime{year, month, day, hour, minute, second, 0});
}

/// Makes a series record by record. Its first settings are those of a logger that shows its counts,
/// every 15 minutes.
class SeriesMaker {
 public:
    explicit SeriesMaker(int analog = 2, int pulse = 0) {
        Made.Settings.push_back({PlainLogger(analog, pulse), FlowTable()});
        Logger().SampleInterval = "15 minutes";
    }

    [[nodiscard]] LoggerRecord& Logger(std::size_t settings = 0) {
        return Made.Settings[settings].Logger;
    }
    /// Adds settings like the last ones; returns them.
    LoggerRecord& Change() {
        Made.Settings.push_back(Made.Settings.back());
        return Made.Settings.back().Logger;
    }
    void Add(const std::array<std::uint8_t, 4>& time, std::initializer_list<int> counts,
             std::size_t settings = 0) {
        SeriesRecord record;
        record.Record.Time = time;
        std::transform(counts.begin(), counts.end(), record.Record.Raw.begin(),
                       [](int count) { return static_cast<std::uint16_t>(count); });
        record.Settings = static_cast<std::uint32_t>(settings);
        Made.Records.push_back(record);
    }
    void Add(Moment moment, std::initializer_list<int> counts, std::size_t settings = 0) {
        Add(Packed(moment), counts, settings);
    }
    /// The flow in cfs is the level in feet, which is a tenth of the count; shown in `units`.
    void FlowIsLevel(int units) {
        LoggerRecord& logger = Logger();
        logger.RawScaleUpper.fill(1000);
        logger.FlowMode = 3;
        logger.FlowUnits = static_cast<std::uint8_t>(units);
        logger.FlowEqExponent = 1;
        logger.FlowEqMultiplier = 1;
    }

    Series Made;
};

/// Some day that a test happens on: Sunday, 14 January 2024.
inline const Moment SomeDay = At(2024, 1, 14);

}  // namespace testing_support

#endif  // ORVIA_TESTS_ARCHIVE_SERIES_MAKER_H
