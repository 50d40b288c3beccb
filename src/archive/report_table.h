#ifndef ORVIA_ARCHIVE_REPORT_TABLE_H
#define ORVIA_ARCHIVE_REPORT_TABLE_H

#include <string>
#include <vector>

#include "archive/report.h"

/// The columns of a report on a series, with volumes in `unit`.
[[nodiscard]] std::vector<ReportColumn> ReportColumnsOf(const SeriesValues& values,
                                                        VolumeUnit unit);

/// A row of texts for each of the periods, after those columns.
[[nodiscard]] std::vector<std::vector<std::string>> ReportRowsOf(const SeriesValues& values,
                                                                 VolumeUnit unit,
                                                                 const Periods& periods,
                                                                 const SystemClock& clock);

#endif  // ORVIA_ARCHIVE_REPORT_TABLE_H
