#ifndef ORVIA_HISTORY_CSV_H
#define ORVIA_HISTORY_CSV_H

#include <string>
#include <string_view>

#include "history/fill_list.h"
#include "history/history_table.h"
#include "logger/logger_state.h"
#include "platform/host.h"

// The file of comma-separated text that the viewer saves; docs/history.md has one.

/// Name that a file gets unless the operator wants another: the plain characters of the logger's
/// name, then date and time.
[[nodiscard]] std::string DefaultCsvName(std::string_view loggerName, const LocalTime& now);

/// First line, without its end: logger, date, time; with `showFlow` the parameters of its flow too.
[[nodiscard]] std::string CsvTitleLine(const LoggerRecord& logger, bool showFlow,
                                       const SystemClock& clock);

/// Second line, without its end. Date and time take one column or two.
[[nodiscard]] std::string CsvHeadingLine(const HistoryTable& table, bool singleColumn);

/// What a file is made of.
struct CsvContents {
    std::string TitleLine;
    const HistoryTable& Table;
    bool SingleColumn;  ///< date and time in one column
};

/// Writes the file at `path`, in place of what was there. False if it could not be opened, before
/// any row, or there is no room for all of it: a file that was there is then as it was. The bar is
/// moved to the number of each row, from 1.
[[nodiscard]] bool WriteCsv(const std::string& path, const CsvContents& contents, ProgressBar& bar);

#endif  // ORVIA_HISTORY_CSV_H
