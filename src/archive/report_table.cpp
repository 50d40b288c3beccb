#include "archive/report_table.h"

#include <array>

#include "archive/pulse_counts.h"
#include "archive/statistics.h"
#include "common/number_text.h"
#include "history/record_time.h"

namespace {

using Rows = std::vector<std::vector<std::string>>;

std::string TimeText(const SeriesValues& values, std::size_t record, RecordTimeTexts& texts) {
    const auto& time = values.Source().Records[record].Record.Time;
    std::string text(texts.RoomFor(time), ' ');
    text.resize(static_cast<std::size_t>(texts.Write(text.data(), time) - text.data()));
    return text;
}

/// Adds the cells of one kind of column to the rows.
class RowWriter {
 public:
    RowWriter(const SeriesValues& values, const Periods& periods, const SystemClock& clock,
              Rows& rows)
        : values_(values), periods_(periods), clock_(clock), times_(clock), rows_(rows) {}

    void AddAttendance() {
        const std::vector<Attendance> counts = AttendanceOf(values_.Times(), periods_);
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            const Attendance& count = counts[i];
            const auto completeness = count.Completeness();
            rows_[i] = {DatesText(periods_.At(i), clock_),
                        IntegerToText(count.Records),
                        completeness ? IntegerToText(count.Due) : "",
                        CompletenessText(completeness),
                        IntegerToText(count.Gaps),
                        IntegerToText(count.ClockChanges)};
        }
    }

    void AddStatistics(std::size_t column) {
        const int places = values_.Columns()[column].Places;
        const auto statistics = StatisticsOf(values_, column, periods_);
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            AddExtreme(statistics[i].Minimum, places, rows_[i]);
            const auto& mean = statistics[i].Mean;
            rows_[i].push_back(mean ? FormatFixed(*mean, places) : "");
            AddExtreme(statistics[i].Maximum, places, rows_[i]);
        }
    }

    void AddVolumes(VolumeUnit unit) {
        const auto volumes = VolumesOf(values_, unit, periods_);
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            rows_[i].push_back(volumes[i] ? VolumeText(volumes[i]->Volume) : "");
        }
    }

    void AddPulses(std::size_t column) {
        const int places = values_.Columns()[column].Places;
        const auto totals = PulseTotalsOf(values_, column, periods_);
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            rows_[i].push_back(totals[i] ? FormatFixed(totals[i]->Total, places) : "");
        }
    }

 private:
    void AddExtreme(const std::optional<Extreme>& extreme, int places,
                    std::vector<std::string>& row) {
        row.push_back(extreme ? FormatFixed(extreme->Value, places) : "");
        row.push_back(extreme ? TimeText(values_, extreme->Record, times_) : "");
    }

    const SeriesValues& values_;
    const Periods& periods_;
    const SystemClock& clock_;
    RecordTimeTexts times_;
    Rows& rows_;
};

}  // namespace

std::vector<ReportColumn> ReportColumnsOf(const SeriesValues& values, VolumeUnit unit) {
    std::vector<ReportColumn> columns = {{"", "Period", false}, {"", "Records"},
                                         {"", "Due"},           {"", "Complete"},
                                         {"", "Gaps"},          {"", "Clock Set Back"}};
    for (const SeriesColumn& column : values.Columns()) {
        const std::string title = TitleOf(column);
        if (column.Kind == ColumnKind::Pulse) {
            columns.push_back({title, "Total"});
            continue;
        }
        columns.push_back({title, "Minimum"});
        columns.push_back({title, "At", false});
        columns.push_back({title, "Mean"});
        columns.push_back({title, "Maximum"});
        columns.push_back({title, "At", false});
        if (column.Kind == ColumnKind::Flow) {
            columns.push_back({title, "Volume (" + VolumeUnitName(unit) + ")"});
        }
    }
    return columns;
}

Rows ReportRowsOf(const SeriesValues& values, VolumeUnit unit, const Periods& periods,
                  const SystemClock& clock) {
    Rows rows(periods.Count());
    RowWriter writer(values, periods, clock, rows);
    writer.AddAttendance();
    for (std::size_t column = 0; column < values.Columns().size(); ++column) {
        const ColumnKind kind = values.Columns()[column].Kind;
        if (kind == ColumnKind::Pulse) {
            writer.AddPulses(column);
        } else {
            writer.AddStatistics(column);
        }
        if (kind == ColumnKind::Flow) {
            writer.AddVolumes(unit);
        }
    }
    return rows;
}
