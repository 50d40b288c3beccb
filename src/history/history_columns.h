#ifndef ORVIA_HISTORY_HISTORY_COLUMNS_H
#define ORVIA_HISTORY_HISTORY_COLUMNS_H

#include <string>
#include <string_view>
#include <vector>

#include "history/history_store.h"
#include "logger/logger_state.h"
#include "platform/host.h"

/// What a column of the viewer holds.
enum class ColumnKind { Analog, Pulse, Flow, Velocity };

/// A column behind that of the time.
struct HistoryColumn {
    ColumnKind Kind = ColumnKind::Analog;
    int Channel = 0;  ///< of its kind
    std::string Heading;
    int Places = 0;  ///< decimals
};

/// The columns that the viewer shows of a logger, in order.
struct HistoryColumns {
    std::vector<HistoryColumn> Columns;
    bool ShowFlow = false;  ///< there is a column of flow
    bool ShowVel = false;   ///< and behind it one of velocity
};

/// Heading of the first column.
inline constexpr const char* TimeHeading = "Date / Time";

/// Whether the logger computes flow, from its first channel.
[[nodiscard]] bool HasFlow(const LoggerRecord& logger);

/// What the operator is told of a unit that allows no flow.
[[nodiscard]] BoxContent BadUnitsWarning(std::string_view units);

/// The columns of a logger; with `badUnits` none for flow and velocity.
[[nodiscard]] HistoryColumns ColumnsOf(const LoggerRecord& logger, bool badUnits);

/// Turns raw counts of an analog channel into engineering units. Raw limits that do not ascend
/// count as the lower one; a span below 0.0001, negative ones among them, gives the upper limit.
class ChannelScale {
 public:
    ChannelScale(const LoggerRecord& logger, std::size_t channel);

    [[nodiscard]] double ValueOf(std::uint16_t raw) const {
        return flat_ ? upper_ : span_ * FractionOf(raw) + lower_;
    }

 private:
    [[nodiscard]] double FractionOf(std::uint16_t raw) const {
        return ascends_ ? (raw - rawLower_) / rawSpan_ : 0.0;
    }

    double rawLower_;
    double rawSpan_;
    double lower_;
    double upper_;
    double span_;
    bool ascends_;
    bool flat_;
};

#endif  // ORVIA_HISTORY_HISTORY_COLUMNS_H
