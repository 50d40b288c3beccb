#ifndef ORVIA_ARCHIVE_SERIES_VALUES_H
#define ORVIA_ARCHIVE_SERIES_VALUES_H

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "archive/series_times.h"
#include "history/history_columns.h"

/// A column of a series: a channel in one unit, flow or velocity.
struct SeriesColumn {
    ColumnKind Kind = ColumnKind::Analog;
    int Channel = 0;      ///< of its kind, from 0
    std::string Heading;  ///< as in the viewer: the unit of a channel, "Flow (GPM)", "Vel (FPS)"
    int Places = 0;       ///< decimals, of the newest settings that have the column
};

/// What a column is called where it stands among others: "Channel 1 (Feet)", "Pulse Chan 2 (Gal)",
/// "Flow (GPM)", "Vel (FPS)".
[[nodiscard]] std::string TitleOf(const SeriesColumn& column);

/// The records of a series as figures, each scaled by the settings with which it is read. A channel
/// whose unit was changed has a column for each unit; flow and velocity have one each, in the
/// units of the newest record that has a flow. Channels are computed when asked for; kept are eight
/// bytes a record for the time, and eight each for flow and velocity. The series is referred to,
/// and must outlive this.
class SeriesValues {
 public:
    explicit SeriesValues(const Series& series);

    [[nodiscard]] const Series& Source() const { return series_; }
    [[nodiscard]] const SeriesTimes& Times() const { return times_; }
    [[nodiscard]] std::size_t RecordCount() const { return times_.Count(); }

    /// In the order of the viewer's columns; those of one channel as they first appear.
    [[nodiscard]] const std::vector<SeriesColumn>& Columns() const { return columns_; }
    /// The column of flow; nothing if there is none.
    [[nodiscard]] std::optional<std::size_t> FlowColumn() const { return Find(ColumnKind::Flow); }
    /// Unit of the column of flow: 0 CFS, 1 GPM, 2 MGD, 3 CMS, 4 LPS.
    [[nodiscard]] int FlowUnits() const { return flowUnits_; }

    /// Whether the settings of a record have the column.
    [[nodiscard]] bool Has(std::size_t column, std::size_t record) const {
        return ReaderOf(column, record).Kind != Reader::Way::None;
    }
    /// The figure, always finite; what no double holds is 0, as the viewer shows it, and so is what
    /// the record's settings do not have.
    [[nodiscard]] double At(std::size_t column, std::size_t record) const {
        const HistoryRecord& from = series_.Records[record].Record;
        const Reader& reader = ReaderOf(column, record);
        switch (reader.Kind) {
            case Reader::Way::Analog:
                return Finite(reader.Scale->ValueOf(from.Raw[reader.Slot]));
            case Reader::Way::Pulse:
                return Finite(from.Raw[reader.Slot] * reader.Unit);
            case Reader::Way::Flow:
                return flow_[record];
            case Reader::Way::Velocity:
                return velocity_[record];
            default:
                return 0;
        }
    }
    /// Count of a pulse channel's column and its unit of one pulse, for records that have it.
    [[nodiscard]] std::uint16_t CountAt(std::size_t column, std::size_t record) const;
    [[nodiscard]] double PulseUnitAt(std::size_t column, std::size_t record) const;

    /// Settings of the newest record; of the series' last ones without records, null without any.
    [[nodiscard]] const SeriesSettings* NewestSettings() const;

 private:
    /// How the column of some settings is read.
    struct Reader {
        enum class Way : std::uint8_t { None, Analog, Pulse, Flow, Velocity };
        Way Kind = Way::None;
        std::size_t Slot = 0;  ///< of the record's counts
        double Unit = 0;       ///< of one pulse
        std::optional<ChannelScale> Scale = std::nullopt;
    };

    [[nodiscard]] static double Finite(double value) { return std::isfinite(value) ? value : 0; }
    [[nodiscard]] const Reader& ReaderOf(std::size_t column, std::size_t record) const {
        const std::size_t settings =
            std::min<std::size_t>(series_.Records[record].Settings, series_.Settings.size());
        return readers_[settings * columns_.size() + column];
    }
    [[nodiscard]] std::optional<std::size_t> Find(ColumnKind kind) const;
    [[nodiscard]] static Reader ReaderFor(const LoggerRecord& logger, const SeriesColumn& column);
    void MakeReaders();
    void ComputeFlow();

    const Series& series_;
    SeriesTimes times_;
    std::vector<SeriesColumn> columns_;
    std::vector<Reader> readers_;  ///< by settings, then by column; behind them those of none
    int flowUnits_ = 0;
    int velUnits_ = 0;
    std::vector<double> flow_;      ///< by record; empty without such a column
    std::vector<double> velocity_;  ///< by record; empty without such a column
};

#endif  // ORVIA_ARCHIVE_SERIES_VALUES_H
