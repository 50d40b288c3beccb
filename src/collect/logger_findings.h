#ifndef ORVIA_COLLECT_LOGGER_FINDINGS_H
#define ORVIA_COLLECT_LOGGER_FINDINGS_H

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "archive/record_moment.h"
#include "history/history_store.h"
#include "logger/logger_state.h"

/// Two records between which others are missing.
struct FoundGap {
    Moment From = 0;  ///< time of the record before
    Moment To = 0;    ///< time of the one behind
    bool operator==(const FoundGap&) const = default;
};

/// What the newest record says of a channel that is in use.
struct FoundValue {
    int Channel = 0;  ///< from 1: analog channels, then pulses
    double Value = 0;
    std::string Unit;
    int Places = 0;
};

/// What an upload tells of its logger, beside the records.
struct LoggerFindings {
    std::int64_t InMemory = 0;                ///< records
    bool WrapsAround = false;                 ///< the oldest records go when no more fit
    std::optional<double> RecordsADay = {};   ///< at the present rate
    std::vector<FoundValue> Newest = {};      ///< of analog channels, by channel
    std::vector<FoundGap> Gaps = {};          ///< among what is new
    std::optional<Moment> NewestMoment = {};  ///< time of the newest record
};

/// The findings of an upload's `records`, of a logger with those settings. What is no later than
/// `known`, the newest record that the archive had, is not told again.
[[nodiscard]] LoggerFindings FindingsOf(std::span<const HistoryRecord> records,
                                        const LoggerRecord& logger, std::optional<Moment> known);

#endif  // ORVIA_COLLECT_LOGGER_FINDINGS_H
