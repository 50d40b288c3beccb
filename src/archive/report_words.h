#ifndef ORVIA_ARCHIVE_REPORT_WORDS_H
#define ORVIA_ARCHIVE_REPORT_WORDS_H

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "archive/report.h"

/// "Daily Report", "Weekly Report", "Monthly Report".
[[nodiscard]] std::string ReportTitle(PeriodStep step);

/// Whether there is a record in the whole period.
[[nodiscard]] bool HasRecords(const Report& report);

/// How complete the whole period is: "671 records of 672 due, 99.8 % complete, 1 gap". Says so if
/// there is no record, or no period.
[[nodiscard]] std::string SummaryText(const Report& report);

/// The lines above the table on paper: those of the report, and how complete it is.
[[nodiscard]] std::vector<ReportLine> PageHeadOf(const Report& report);

/// The period of a report and how complete it is, in one line.
[[nodiscard]] std::string PeriodSummary(const Report& report);

/// Neighbouring columns under one heading; a column without a group stands alone.
struct ColumnGroup {
    std::string Name;
    std::size_t First = 0;
    std::size_t Count = 1;
    bool operator==(const ColumnGroup&) const = default;
};

/// The groups of all columns, in their order.
[[nodiscard]] std::vector<ColumnGroup> GroupsOf(std::span<const ReportColumn> columns);

// Text for a spreadsheet: cells parted by tabs, lines ended by a line feed.

/// Headings, rows and total.
[[nodiscard]] std::string ReportTabText(const Report& report);
/// These rows alone; the number behind the last is the total.
[[nodiscard]] std::string RowsTabText(const Report& report, std::span<const std::size_t> rows);

#endif  // ORVIA_ARCHIVE_REPORT_WORDS_H
