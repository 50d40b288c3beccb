#include "archive/report_words.h"

#include <algorithm>

namespace {

/// The columns in front of those of the channels.
enum AttendanceCell : std::size_t {
    PeriodCell,
    RecordsCell,
    DueCell,
    CompleteCell,
    GapsCell,
    SetBackCell
};

std::string Counted(const std::string& count, const std::string& one, const std::string& many) {
    return count + (count == "1" ? one : many);
}

void AddTabLine(std::span<const std::string> cells, std::string& text) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        text += i == 0 ? "" : "\t";
        text += cells[i];
    }
    text += '\n';
}

}  // namespace

std::string ReportTitle(PeriodStep step) {
    switch (step) {
        case PeriodStep::Week:
            return "Weekly Report";
        case PeriodStep::Month:
            return "Monthly Report";
        default:
            return "Daily Report";
    }
}

bool HasRecords(const Report& report) {
    return !report.Total.empty() && report.Total[RecordsCell] != "0";
}

std::string SummaryText(const Report& report) {
    if (report.Total.empty()) {
        return "There is no period to report on.";
    }
    const std::vector<std::string>& whole = report.Total;
    if (!HasRecords(report)) {
        return "There are no records in this period.";
    }
    std::string text = Counted(whole[RecordsCell], " record", " records");
    if (!whole[DueCell].empty()) {
        text += " of " + whole[DueCell] + " due, " + whole[CompleteCell] + " complete";
    }
    text += ", " + Counted(whole[GapsCell], " gap", " gaps");
    if (whole[SetBackCell] != "0") {
        text += ", clock set back " + Counted(whole[SetBackCell], " time", " times");
    }
    return text;
}

std::vector<ReportLine> PageHeadOf(const Report& report) {
    std::vector<ReportLine> head = report.Head;
    const auto made = std::find_if(head.begin(), head.end(),
                                   [](const ReportLine& line) { return line.Label == "Made"; });
    head.insert(made, {"Records", SummaryText(report)});
    return head;
}

std::string PeriodSummary(const Report& report) {
    const auto period = std::find_if(report.Head.begin(), report.Head.end(),
                                     [](const auto& line) { return line.Label == "Period"; });
    return (period == report.Head.end() ? "" : period->Text + ": ") + SummaryText(report);
}

std::vector<ColumnGroup> GroupsOf(std::span<const ReportColumn> columns) {
    std::vector<ColumnGroup> groups;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::string& name = columns[i].Group;
        if (!name.empty() && !groups.empty() && groups.back().Name == name) {
            ++groups.back().Count;
        } else {
            groups.push_back({name, i, 1});
        }
    }
    return groups;
}

std::string ReportTabText(const Report& report) {
    std::vector<std::string> headings;
    for (const ReportColumn& column : report.Columns) {
        headings.push_back(HeadingOf(column));
    }
    std::string text;
    AddTabLine(headings, text);
    for (const std::vector<std::string>& row : report.Rows) {
        AddTabLine(row, text);
    }
    if (!report.Total.empty()) {
        AddTabLine(report.Total, text);
    }
    return text;
}

std::string RowsTabText(const Report& report, std::span<const std::size_t> rows) {
    std::string text;
    for (const std::size_t row : rows) {
        AddTabLine(row < report.Rows.size() ? report.Rows[row] : report.Total, text);
    }
    return text;
}
