#include "collect/logger_findings.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "archive/series_times.h"
#include "history/history_columns.h"

namespace {

/// Records whose spacing tells the present rate.
constexpr std::size_t RateRecords = 100;
/// So many steps of one length, one behind the other, are an interval that somebody had set.
constexpr std::size_t EvenSteps = 3;
/// Steps are of one length if they differ by no more than this part of it.
constexpr Moment StepTolerance = 20;

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

/// Seconds from record `i - 1` to record `i`; nothing where there are no two such.
std::optional<Moment> StepTo(std::span<const HistoryRecord> records, std::size_t i) {
    if (i < 1 || i >= records.size()) {
        return std::nullopt;
    }
    return MomentOf(records[i].Time) - MomentOf(records[i - 1].Time);
}

/// Whether record `i` follows as some neighbours follow each other. Then the logger was set to
/// another interval at that time: records that are missing leave no even line.
bool IsInStep(std::span<const HistoryRecord> records, std::size_t i) {
    const auto step = StepTo(records, i);
    const auto isAlike = [&](std::size_t other) {
        const auto its = StepTo(records, other);
        return step && its && std::abs(*its - *step) <= *step / StepTolerance;
    };
    std::size_t first = i;
    while (i - first < EvenSteps && isAlike(first - 1)) {
        --first;
    }
    std::size_t last = i;
    while (last - i < EvenSteps && isAlike(last + 1)) {
        ++last;
    }
    return last - first + 1 >= EvenSteps;
}

/// Gaps that end behind `known`.
std::vector<FoundGap> NewGaps(std::span<const HistoryRecord> records, const RecordSpacing& spacing,
                              std::optional<Moment> known) {
    std::vector<FoundGap> gaps;
    if (records.empty()) {
        return gaps;
    }
    const Moment newestKnown = known.value_or(EarliestMoment);
    const Moment oldest = MomentOf(records.front().Time);
    // From the newest record that was known to the oldest that the logger still has, others may
    // have been overwritten.
    if (known && oldest > newestKnown && spacing.KindOf(oldest - newestKnown) == PairKind::Gap) {
        gaps.push_back({.From = newestKnown, .To = oldest});
    }
    for (std::size_t i = 1; i < records.size(); ++i) {
        const Moment before = MomentOf(records[i - 1].Time);
        const Moment at = MomentOf(records[i].Time);
        if (before >= newestKnown && spacing.KindOf(at - before) == PairKind::Gap &&
            !IsInStep(records, i)) {
            gaps.push_back({.From = before, .To = at});
        }
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
