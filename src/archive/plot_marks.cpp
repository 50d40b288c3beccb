#include "archive/plot_marks.h"

namespace {

constexpr std::size_t StartAlarm = 0;
constexpr std::size_t StopAlarm = 1;

/// The settings of a record if they use an alarm, else null.
const LoggerRecord* WithAlarm(const Series& series, std::size_t record, std::size_t alarm) {
    const std::size_t settings = series.Records[record].Settings;
    if (settings >= series.Settings.size()) {
        return nullptr;
    }
    const LoggerRecord& logger = series.Settings[settings].Logger;
    return logger.AlarmEnable[alarm] != 0 ? &logger : nullptr;
}

/// Seconds from midnight to an alarm.
Moment TimeOfDay(const LoggerRecord& logger, std::size_t alarm) {
    const Moment seconds = logger.AlarmHour[alarm] * SecondsPerHour +
                           logger.AlarmMin[alarm] * SecondsPerMinute + logger.AlarmSec[alarm];
    return seconds - DayBegin(seconds);
}

/// The last moment with that time of day, up to `moment` itself.
Moment LastBefore(Moment moment, Moment timeOfDay) {
    const Moment today = DayBegin(moment) + timeOfDay;
    return today <= moment ? today : today - SecondsPerDay;
}

Moment Within(const RecordSpacing& spacing) {
    return spacing.Kind == RecordSpacing::Style::Fixed ? spacing.Interval : SecondsPerMinute;
}

/// Marks the alarm that started the record; `after` is a moment that it lies behind.
void MarkStart(const Series& series, const SeriesTimes& times, std::size_t record, Moment after,
               std::vector<PlotMark>& marks) {
    if (const LoggerRecord* const logger = WithAlarm(series, record, StartAlarm)) {
        const Moment alarm = LastBefore(times.At(record), TimeOfDay(*logger, StartAlarm));
        if (alarm > after && times.At(record) - alarm <= Within(times.Spacing(record))) {
            marks.push_back({PlotMark::Sort::Alarm1, alarm});
        }
    }
}

/// Marks the alarm that stopped behind the record; `before` is a moment that it lies before.
void MarkStop(const Series& series, const SeriesTimes& times, std::size_t record, Moment before,
              std::vector<PlotMark>& marks) {
    if (const LoggerRecord* const logger = WithAlarm(series, record, StopAlarm)) {
        const Moment alarm =
            LastBefore(times.At(record) + SecondsPerDay - 1, TimeOfDay(*logger, StopAlarm));
        if (alarm < before && alarm - times.At(record) <= Within(times.Spacing(record))) {
            marks.push_back({PlotMark::Sort::Alarm2, alarm});
        }
    }
}

}  // namespace

std::string TextOf(PlotMark::Sort kind) {
    switch (kind) {
        case PlotMark::Sort::Alarm1:
            return "Alarm 1";
        case PlotMark::Sort::Alarm2:
            return "Alarm 2";
        default:
            return "Clock Set Back";
    }
}

std::string ShortTextOf(PlotMark::Sort kind) {
    switch (kind) {
        case PlotMark::Sort::Alarm1:
            return "A1";
        case PlotMark::Sort::Alarm2:
            return "A2";
        default:
            return "C";
    }
}

std::string MeaningOf(PlotMark::Sort kind) {
    switch (kind) {
        case PlotMark::Sort::Alarm1:
            return "Alarm 1 started the sampling.";
        case PlotMark::Sort::Alarm2:
            return "Alarm 2 stopped the sampling.";
        default:
            return "The logger's clock was set back to this time.";
    }
}

std::vector<PlotMark> MarksOf(const Series& series, const SeriesTimes& times) {
    std::vector<PlotMark> marks;
    if (times.Count() > 0) {
        MarkStart(series, times, 0, times.At(0) - SecondsPerDay, marks);
    }
    for (std::size_t record = 1; record < times.Count(); ++record) {
        const PairKind pair = times.Pair(record);
        if (pair == PairKind::SetBack) {
            marks.push_back({PlotMark::Sort::ClockSetBack, times.At(record)});
        } else if (pair == PairKind::Gap) {
            MarkStop(series, times, record - 1, times.At(record), marks);
            MarkStart(series, times, record, times.At(record - 1), marks);
        }
    }
    return marks;
}
