#include "archive/series_times.h"

#include <string_view>

#include "common/number_text.h"

namespace {

constexpr unsigned TimingMask = 3;
constexpr unsigned LogarithmicTiming = 1;
constexpr unsigned FastTiming = 2;
constexpr unsigned OnChangeBit = 0x80;
constexpr double LargestCount = 65'535;  // the logger keeps 16 bits

Moment UnitOf(std::string_view interval) {
    const auto holds = [interval](std::string_view word) {
        return interval.find(word) != std::string_view::npos;
    };
    if (holds("min")) {
        return SecondsPerMinute;
    }
    if (holds("hour")) {
        return SecondsPerHour;
    }
    return holds("day") ? SecondsPerDay : 1;
}

/// Seconds of "15 minutes", read as the settings image reads it; 0 where no interval stands there.
Moment IntervalSeconds(std::string_view interval) {
    const std::string_view number = interval.substr(0, interval.find(' '));
    const double count = RoundTiesToEven(WholeNumber(number).value_or(0));
    return count >= 0 && count <= LargestCount ? static_cast<Moment>(count) * UnitOf(interval) : 0;
}

}  // namespace

RecordSpacing SpacingOf(const LoggerRecord& logger) {
    const unsigned timing = logger.LoggingStyle & TimingMask;
    if ((logger.LoggingStyle & OnChangeBit) != 0 || timing == LogarithmicTiming) {
        return {};
    }
    if (timing == FastTiming) {
        return {.Kind = RecordSpacing::Style::Fast};
    }
    const Moment interval = IntervalSeconds(logger.SampleInterval);
    return interval > 0 ? RecordSpacing{RecordSpacing::Style::Fixed, interval} : RecordSpacing{};
}

SeriesTimes::SeriesTimes(const Series& series) : series_(series) {
    times_.reserve(series.Records.size());
    for (const SeriesRecord& record : series.Records) {
        times_.push_back(MomentOf(record.Record.Time));
    }
    spacings_.reserve(series.Settings.size());
    for (const SeriesSettings& settings : series.Settings) {
        spacings_.push_back(SpacingOf(settings.Logger));
    }
}
