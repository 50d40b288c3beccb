#ifndef ORVIA_HISTORY_FILL_LIST_H
#define ORVIA_HISTORY_FILL_LIST_H

#include <cstdint>
#include <functional>

#include "history/history_columns.h"
#include "history/history_store.h"
#include "history/history_table.h"
#include "platform/host.h"

/// A bar that follows some work.
class ProgressBar {
 public:
    virtual ~ProgressBar() = default;
    /// Moves it to `value`, within the range that its owner gave it. Called for every piece of the
    /// work: what a move costs is the bar's own care.
    virtual void SetValue(std::int32_t value) = 0;
};

/// Flow at a level, and the velocity that comes with it.
using FlowFunction = std::function<double(double level, double& velocity)>;

/// Where the rows come from.
struct HistorySource {
    const HistoryStore& store;
    const LoggerRecord& logger;  ///< whose records they are
    const SystemClock& clock;
    FlowFunction flow;  ///< of that logger's window
};

/// Formats every record of the store into a row of `table`, after the columns. With `pack` a record
/// whose texts, the time aside, are those of the record before it gets no row. The bar is moved to
/// the number of each record, from 0.
void FillTable(const HistorySource& source, const HistoryColumns& columns, bool pack,
               ProgressBar& bar, HistoryTable& table);

/// Largest value of the bar: the number of the last record, and at least 1.
[[nodiscard]] std::int32_t FillBarMaximum(const HistoryStore& store);

/// The question before rows are packed.
[[nodiscard]] BoxContent PackQuestion();

#endif  // ORVIA_HISTORY_FILL_LIST_H
