#ifndef ORVIA_ARCHIVE_SERIES_CSV_H
#define ORVIA_ARCHIVE_SERIES_CSV_H

#include <string>

#include "archive/periods.h"
#include "archive/series_values.h"
#include "history/fill_list.h"
#include "history/history_table.h"
#include "platform/host.h"

/// Puts the records of a period into a table, in the logger's order: the texts that the viewer
/// shows. A cell whose column a record's settings do not have is empty. The bar is moved to the
/// number of each of the series' records, from 0.
void FillSeriesTable(const SeriesValues& values, const Period& period, const SystemClock& clock,
                     ProgressBar& bar, HistoryTable& table);

/// Saves the records of a period as the viewer saves its rows: for one upload the same bytes. The
/// first line tells the newest settings. False if it could not be written; a file that was there is
/// then as it was.
[[nodiscard]] bool SaveSeriesCsv(const std::string& path, const SeriesValues& values,
                                 const Period& period, bool singleColumn, const SystemClock& clock,
                                 ProgressBar& bar);

/// The records of a period for other programs: RFC 4180, one line of headings with units, times as
/// in ISO 8601 without a zone, figures with the viewer's decimals, empty where there are none.
[[nodiscard]] std::string MachineCsv(const SeriesValues& values, const Period& period);

/// Saves that text; False as above.
[[nodiscard]] bool SaveMachineCsv(const std::string& path, const SeriesValues& values,
                                  const Period& period);

#endif  // ORVIA_ARCHIVE_SERIES_CSV_H
