#include "collect/logger_findings.h"

#include <algorithm>
#include <cmath>

#include "archive/series_times.h"
#include "history/history_columns.h"

namespace {

/// Records whose spacing tells the present rate.
constexpr std::size_t RateRecords = 100;

std::optional<double> RateOf(std::span<const HistoryRecord> records) {
    const auto last = records.last(std::min(records.size(), RateRecords));
    if (last.size() < 2) {
        return std::nullopt;
    }
    const Moment span = MomentOf(last.back().Time) - MomentOf(last.front().Time);
    if (span <= 0) {
        return std::nullopt;
    }
    return static_cast<double>(last.size() - 1) * SecondsPerDay / static_cast<double>(span);
}

std::vector<FoundValue> NewestValues(const HistoryRecord& newest, const LoggerRecord& logger) {
    std::vector<FoundValue> values;
    const std::size_t channels = std::min<std::size_t>(logger.NumAnalogChannels, AnalogChannels);
    for (std::size_t i = 0; i < channels; ++i) {
        if (logger.AnalogEnable[i] == 0) {
            continue;
        }
        const double value = ChannelScale(logger, i).ValueOf(newest.Raw[i]);
        values.push_back({.Channel = static_cast<int>(i) + 1,
                          .Value = std::isfinite(value) ? value : 0,
                          .Unit = logger.EngUnits[i],
                          .Places = logger.DecPlaces[i]});
    }
    return values;
}

/// Gaps that end behind `known`.
std::vector<FoundGap> NewGaps(std::span<const HistoryRecord> records, const RecordSpacing& spacing,
                              std::optional<Moment> known) {
    std::vector<FoundGap> gaps;
    if (records.empty()) {
        return gaps;
    }
    const Moment newestKnown = known.value_or(EarliestMoment);
    // From the newest record that was known to the oldest that the logger still has, others may
    // have been overwritten.
    Moment before = MomentOf(records.front().Time);
    if (known && before > newestKnown) {
        before = newestKnown;
    }
    for (const HistoryRecord& record : records) {
        const Moment at = MomentOf(record.Time);
        if (before >= newestKnown && spacing.KindOf(at - before) == PairKind::Gap) {
            gaps.push_back({.From = before, .To = at});
        }
        before = at;
    }
    return gaps;
}

}  // namespace

LoggerFindings FindingsOf(std::span<const HistoryRecord> records, const LoggerRecord& logger,
                          std::optional<Moment> known) {
    LoggerFindings findings;
    findings.InMemory = logger.NumSamples;
    findings.WrapsAround = logger.DataWrapAroundFlag != 0;
    findings.RecordsADay = RateOf(records);
    findings.Gaps = NewGaps(records, SpacingOf(logger), known);
    if (!records.empty()) {
        findings.Newest = NewestValues(records.back(), logger);
        findings.NewestMoment = MomentOf(records.back().Time);
    }
    return findings;
}
