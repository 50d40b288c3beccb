#include "history/fill_list.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "common/number_text.h"
#include "history/record_time.h"

namespace {

std::vector<std::string> HeadingsOf(const HistoryColumns& columns) {
    std::vector<std::string> headings = {TimeHeading};
    for (const HistoryColumn& column : columns.Columns) {
        headings.push_back(column.Heading);
    }
    return headings;
}

/// Counts that a channel can have.
constexpr std::size_t CountsOfChannel = 65536;

/// Computes the figures of records, column by column. Columns of a kind stand together, and a row
/// is computed before it is formatted: how long a text is nobody can foretell, and a processor that
/// guesses wrong there guesses wrong at what stands between as well.
class RowFigures {
 public:
    RowFigures(const HistorySource& source, const HistoryColumns& columns)
        : flow_(source.flow),
          showVelocity_(columns.ShowVel),
          figures_(columns.ShowFlow ? CountsOfChannel : 0),
          known_(figures_.size()) {
        const LoggerRecord& logger = source.logger;
        const std::size_t analog = std::min<std::size_t>(logger.NumAnalogChannels, AnalogChannels);
        for (const HistoryColumn& column : columns.Columns) {
            const auto channel = static_cast<std::size_t>(column.Channel);
            places_.push_back(column.Places);
            if (column.Kind == ColumnKind::Analog) {
                analog_.push_back({channel, ChannelScale(logger, channel)});
            } else if (column.Kind == ColumnKind::Pulse) {
                pulse_.push_back({analog + channel, logger.PulseUnit[channel]});
            }
        }
        values_.resize(places_.size());
    }

    [[nodiscard]] std::size_t Columns() const { return places_.size(); }

    /// Writes the texts of a record into the row of the table that begins at `out`.
    void Write(const HistoryRecord& record, char* out, HistoryTable& table) {
        Compute(record);
        const double* value = values_.data();
        for (const int places : places_) {
            out = FormatFixedTo(out, *value++, places);
            table.EndCell(out);
        }
    }

 private:
    struct AnalogColumn {
        std::size_t Slot;  ///< of the record's counts
        ChannelScale Scale;
    };
    struct PulseColumn {
        std::size_t Slot;
        double Unit;  ///< of one pulse
    };
    struct FlowFigures {
        double Flow = 0;
        double Velocity = 0;
    };

    void Compute(const HistoryRecord& record) {
        double* value = values_.data();
        for (const AnalogColumn& column : analog_) {
            *value++ = column.Scale.ValueOf(record.Raw[column.Slot]);
        }
        for (const PulseColumn& column : pulse_) {
            *value++ = record.Raw[column.Slot] * column.Unit;
        }
        if (!figures_.empty()) {
            const FlowFigures& figures = FiguresAt(record.Raw[0], values_[0]);
            *value++ = figures.Flow;
            if (showVelocity_) {
                *value = figures.Velocity;
            }
        }
    }

    // The level follows from the count alone, so what was worked out for a count holds for all
    // records that have it.
    [[nodiscard]] const FlowFigures& FiguresAt(std::uint16_t raw, double level) {
        FlowFigures& figures = figures_[raw];
        if (!known_[raw]) {
            figures.Flow = flow_(level, figures.Velocity);
            known_[raw] = true;
        }
        return figures;
    }

    const FlowFunction& flow_;
    const bool showVelocity_;
    std::vector<AnalogColumn> analog_;
    std::vector<PulseColumn> pulse_;
    std::vector<int> places_;           ///< of all columns
    std::vector<FlowFigures> figures_;  ///< by count of the first channel; empty without flow
    std::vector<bool> known_;           ///< which of them were worked out
    std::vector<double> values_;        ///< of the record being written
};

}  // namespace

void FillTable(const HistorySource& source, const HistoryColumns& columns, bool pack,
               ProgressBar& bar, HistoryTable& table) {
    const auto records = source.store.Records();
    table.Reset(HeadingsOf(columns), source.store.HistoryCount());
    RecordTimeTexts times(source.clock);
    RowFigures figures(source, columns);
    std::int32_t number = 0;
    for (const HistoryRecord& record : records) {
        bar.SetValue(number);
        ++number;
        char* out = table.BeginRow(times.RoomFor(record.Time) + figures.Columns() * FixedTextRoom);
        out = times.Write(out, record.Time);
        table.EndCell(out);
        figures.Write(record, out, table);
        if (!pack || !table.RowRepeats()) {
            table.AddRow();
        }
    }
}

std::int32_t FillBarMaximum(const HistoryStore& store) {
    return std::max(store.HistoryCount() - 1, 1);
}

BoxContent PackQuestion() {
    return {.Text =
                "This operation will remove each record from the displayed data that has "
                "identical\nmeasurements compared with the previous record. \n\n"
                "Note that this will not change the history data in the logger.\n\n"
                "Select YES to proceed.",
            .Title = "Pack History Data",
            .Icon = BoxIcon::Information,
            .Buttons = BoxButtons::YesNo};
}
