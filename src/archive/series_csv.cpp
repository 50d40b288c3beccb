#include "archive/series_csv.h"

#include <algorithm>
#include <array>
#include <vector>

#include "archive/quoted_csv.h"
#include "common/file_rewrite.h"
#include "common/number_text.h"
#include "history/csv.h"
#include "history/record_time.h"

namespace {

int CountRecords(const SeriesTimes& times, const Period& period) {
    const auto all = times.All();
    return static_cast<int>(
        std::count_if(all.begin(), all.end(), [&](Moment at) { return period.Holds(at); }));
}

std::vector<std::string> HeadingsOf(const SeriesValues& values) {
    std::vector<std::string> headings = {TimeHeading};
    for (const SeriesColumn& column : values.Columns()) {
        headings.push_back(column.Heading);
    }
    return headings;
}

void AddRow(const SeriesValues& values, std::size_t record, RecordTimeTexts& times,
            HistoryTable& table) {
    const auto& time = values.Source().Records[record].Record.Time;
    const std::vector<SeriesColumn>& columns = values.Columns();
    char* out = table.BeginRow(times.RoomFor(time) + columns.size() * FixedTextRoom);
    out = times.Write(out, time);
    table.EndCell(out);
    for (std::size_t column = 0; column < columns.size(); ++column) {
        if (values.Has(column, record)) {
            out = FormatFixedTo(out, values.At(column, record), columns[column].Places);
        }
        table.EndCell(out);
    }
    table.AddRow();
}

void AddMachineRow(const SeriesValues& values, std::size_t record, std::string& text) {
    std::array<char, FixedTextRoom> room{};
    text += IsoText(values.Times().At(record));
    for (std::size_t column = 0; column < values.Columns().size(); ++column) {
        text += ',';
        if (values.Has(column, record)) {
            text.append(room.data(), FormatFixedTo(room.data(), values.At(column, record),
                                                   values.Columns()[column].Places));
        }
    }
    text += "\r\n";
}

}  // namespace

void FillSeriesTable(const SeriesValues& values, const Period& period, const SystemClock& clock,
                     ProgressBar& bar, HistoryTable& table) {
    table.Reset(HeadingsOf(values), CountRecords(values.Times(), period));
    RecordTimeTexts times(clock);
    for (std::size_t record = 0; record < values.RecordCount(); ++record) {
        bar.SetValue(static_cast<std::int32_t>(record));
        if (period.Holds(values.Times().At(record))) {
            AddRow(values, record, times, table);
        }
    }
}

bool SaveSeriesCsv(const std::string& path, const SeriesValues& values, const Period& period,
                   bool singleColumn, const SystemClock& clock, ProgressBar& bar) {
    HistoryTable table;
    FillSeriesTable(values, period, clock, bar, table);
    const SeriesSettings* const newest = values.NewestSettings();
    const LoggerRecord& logger = newest != nullptr ? newest->Logger : LoggerRecord{};
    const bool showFlow = values.FlowColumn().has_value();
    return WriteCsv(path, {CsvTitleLine(logger, showFlow, clock), table, singleColumn}, bar);
}

std::string MachineCsv(const SeriesValues& values, const Period& period) {
    std::vector<std::string> headings = {"Time"};
    for (const SeriesColumn& column : values.Columns()) {
        headings.push_back(TitleOf(column));
    }
    std::string text;
    AddCsvLine(headings, text);
    for (std::size_t record = 0; record < values.RecordCount(); ++record) {
        if (period.Holds(values.Times().At(record))) {
            AddMachineRow(values, record, text);
        }
    }
    return text;
}

bool SaveMachineCsv(const std::string& path, const SeriesValues& values, const Period& period) {
    return RewriteFile(path, MachineCsv(values, period));
}
