#ifndef ORVIA_ARCHIVE_REPORT_H
#define ORVIA_ARCHIVE_REPORT_H

#include <optional>
#include <string>
#include <vector>

#include "archive/periods.h"
#include "archive/series_values.h"
#include "archive/volume.h"
#include "platform/host.h"

/// What a report is asked for.
struct ReportRequest {
    Period Span;
    PeriodStep Step = PeriodStep::Day;
    std::optional<VolumeUnit> Unit;  ///< nothing: the one that belongs to the flow's unit
    std::string Site;                ///< where the logger stands
    std::string MadeBy;              ///< who asks
};

/// A line above the table: "Logger", "Pump 3".
struct ReportLine {
    std::string Label;
    std::string Text;
    bool operator==(const ReportLine&) const = default;
};

/// A column of the table. Neighbours of one group stand under one heading: "Channel 1 (Feet)" over
/// "Minimum", "At", "Mean"... A column that belongs to no group has an empty one.
struct ReportColumn {
    std::string Group;
    std::string Heading;
    bool IsNumber = true;  ///< stands at the right of its column
    bool operator==(const ReportColumn&) const = default;
};

/// What a column is called where no heading stands over it: "Channel 1 (Feet) Minimum".
[[nodiscard]] std::string HeadingOf(const ReportColumn& column);

/// All that a report shows, as texts: what the screen, the file and the printed page are made of.
struct Report {
    std::vector<ReportLine> Head;  ///< site, logger, flow device, period, who made it when
    std::vector<ReportColumn> Columns;
    std::vector<std::vector<std::string>> Rows;  ///< one for each day, week or month
    std::vector<std::string> Total;              ///< the same over the whole span; empty if that is
};

/// Makes the report of a series. What cannot be told is an empty text. So that days at both ends of
/// the span are cut as they should, the series holds the record before and the one behind it.
[[nodiscard]] Report MakeReport(const SeriesValues& values, const ReportRequest& request,
                                const SystemClock& clock);

/// The lines above the table alone, as they are now.
[[nodiscard]] std::vector<ReportLine> ReportHeadOf(const SeriesValues& values,
                                                   const ReportRequest& request,
                                                   const SystemClock& clock);

/// The report as comma-separated text (RFC 4180): the lines above the table, an empty line, the
/// headings, rows and total.
[[nodiscard]] std::string ReportCsv(const Report& report);

/// Saves that text; False if it could not be written, and a file that was there is as it was.
[[nodiscard]] bool SaveReportCsv(const std::string& path, const Report& report);

/// A share of what is due, 0 to 1, as "98.9 %": never 100.0 unless nothing is missing.
[[nodiscard]] std::string CompletenessText(std::optional<double> completeness);

/// A period in dates, the last one inside: "1/8/24 - 1/14/24", or the one date.
[[nodiscard]] std::string DatesText(const Period& period, const SystemClock& clock);

#endif  // ORVIA_ARCHIVE_REPORT_H
