#include "archive/report.h"

#include <algorithm>

#include "archive/flow_device_text.h"
#include "archive/quoted_csv.h"
#include "archive/report_table.h"
#include "common/file_rewrite.h"
#include "common/number_text.h"
#include "logger/date_text.h"

namespace {

std::string DateText(Moment moment, const SystemClock& clock) {
    const LocalTime time = TimeOfMoment(moment);
    return cmd::ShortDateText(clock, time.Year, time.Month, time.Day);
}

/// Date and time of day as in the viewer's rows.
std::string MomentText(Moment moment, const SystemClock& clock) {
    // An ISO time ends as the viewer's does.
    return DateText(moment, clock) + " " + IsoText(moment).substr(sizeof "2024-01-14");
}

/// The settings of the period's records, each once, in the order in which they come.
std::vector<const LoggerRecord*> LoggersOf(const SeriesValues& values, const Period& period) {
    const Series& series = values.Source();
    std::vector<bool> known(series.Settings.size());
    std::vector<const LoggerRecord*> loggers;
    for (std::size_t record = 0; record < values.RecordCount(); ++record) {
        const std::size_t settings = series.Records[record].Settings;
        if (settings < known.size() && !known[settings] &&
            period.Holds(values.Times().At(record))) {
            known[settings] = true;
            loggers.push_back(&series.Settings[settings].Logger);
        }
    }
    return loggers;
}

/// Adds a line for each different text that is not empty.
class HeadLines {
 public:
    explicit HeadLines(std::vector<ReportLine>& head) : head_(head) {}

    void Add(const std::string& label, const std::string& text) {
        const ReportLine line{label, text};
        if (!text.empty() && std::find(head_.begin(), head_.end(), line) == head_.end()) {
            head_.push_back(line);
        }
    }

 private:
    std::vector<ReportLine>& head_;
};

}  // namespace

std::string HeadingOf(const ReportColumn& column) {
    return column.Group.empty() ? column.Heading : column.Group + " " + column.Heading;
}

std::vector<ReportLine> ReportHeadOf(const SeriesValues& values, const ReportRequest& request,
                                     const SystemClock& clock) {
    std::vector<ReportLine> head;
    HeadLines lines(head);
    const std::vector<const LoggerRecord*> loggers = LoggersOf(values, request.Span);
    lines.Add("Site", request.Site);
    for (const LoggerRecord* logger : loggers) {
        lines.Add("Logger", logger->LoggerName);
    }
    for (const LoggerRecord* logger : loggers) {
        lines.Add("Flow Device", FlowDeviceText(*logger));
    }
    if (!request.Span.IsEmpty()) {
        lines.Add("Period", MomentText(request.Span.Begin, clock) + " - " +
                                MomentText(request.Span.End - 1, clock));
    }
    const LocalTime now = clock.Now();
    lines.Add("Made", clock.DateText(now) + " " + clock.TimeText(now));
    lines.Add("Made By", request.MadeBy);
    return head;
}

Report MakeReport(const SeriesValues& values, const ReportRequest& request,
                  const SystemClock& clock) {
    const VolumeUnit unit = request.Unit.value_or(VolumeUnitsFor(values.FlowUnits()).front());
    Report report;
    report.Head = ReportHeadOf(values, request, clock);
    report.Columns = ReportColumnsOf(values, unit);
    report.Rows = ReportRowsOf(values, unit, Periods(request.Span, request.Step), clock);
    const auto whole = ReportRowsOf(values, unit, Periods(request.Span), clock);
    if (!whole.empty()) {
        report.Total = whole.front();
    }
    return report;
}

std::string ReportCsv(const Report& report) {
    std::string text;
    for (const ReportLine& line : report.Head) {
        AddCsvLine(std::vector{line.Label, line.Text}, text);
    }
    AddCsvLine({}, text);
    std::vector<std::string> headings;
    for (const ReportColumn& column : report.Columns) {
        headings.push_back(HeadingOf(column));
    }
    AddCsvLine(headings, text);
    for (const std::vector<std::string>& row : report.Rows) {
        AddCsvLine(row, text);
    }
    if (!report.Total.empty()) {
        AddCsvLine(report.Total, text);
    }
    return text;
}

bool SaveReportCsv(const std::string& path, const Report& report) {
    return RewriteFile(path, ReportCsv(report));
}

std::string CompletenessText(std::optional<double> completeness) {
    constexpr double Percent = 100;
    constexpr double MostOfMissing = 99.9;
    if (!completeness) {
        return {};
    }
    const double shown =
        *completeness < 1 ? std::min(*completeness * Percent, MostOfMissing) : Percent;
    return FormatFixed(shown, 1) + " %";
}

std::string DatesText(const Period& period, const SystemClock& clock) {
    const std::string first = DateText(period.Begin, clock);
    const std::string last = DateText(period.End - 1, clock);
    return first == last ? first : first + " - " + last;
}
