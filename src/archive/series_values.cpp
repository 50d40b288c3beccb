#include "archive/series_values.h"

#include <algorithm>
#include <tuple>

#include "common/number_text.h"
#include "flow/flow_calculation.h"
#include "flow/unit_names.h"

namespace {

/// Counts that a channel can have.
constexpr std::size_t CountsOfChannel = 65'536;

bool ShowsFlow(const LoggerRecord& logger) {
    return HasFlow(logger) && config::IsFlowUnit(logger.EngUnits[0]);
}

HistoryColumns ShownColumns(const LoggerRecord& logger) {
    return ColumnsOf(logger, !ShowsFlow(logger));
}

// Flow and velocity are one column whatever their units were.
bool IsSameColumn(const HistoryColumn& column, const SeriesColumn& known) {
    const bool channel = column.Kind == ColumnKind::Analog || column.Kind == ColumnKind::Pulse;
    return column.Kind == known.Kind && column.Channel == known.Channel &&
           (!channel || column.Heading == known.Heading);
}

/// Settings that records use, in the order in which they appear first; the last known ones where
/// there is no record. `newest` takes them by their last record instead.
std::vector<std::uint32_t> UsedSettings(const Series& series, bool newest) {
    std::vector<std::uint32_t> used;
    std::vector<bool> known(series.Settings.size());
    const auto take = [&](const SeriesRecord& record) {
        if (record.Settings < known.size() && !known[record.Settings]) {
            known[record.Settings] = true;
            used.push_back(record.Settings);
        }
    };
    if (newest) {
        std::for_each(series.Records.rbegin(), series.Records.rend(), take);
    } else {
        std::for_each(series.Records.begin(), series.Records.end(), take);
    }
    if (used.empty() && !series.Settings.empty()) {
        used.push_back(static_cast<std::uint32_t>(series.Settings.size() - 1));
    }
    return used;
}

/// Works out the flow of records by one logger's settings. The level follows from the count alone,
/// so what was worked out for a count holds for all records that have it.
class FlowOfCounts {
 public:
    struct Figures {
        double Flow = 0;
        double Velocity = 0;
    };

    FlowOfCounts() : figures_(CountsOfChannel), known_(CountsOfChannel) {}

    void Begin(const SeriesSettings& settings, int flowUnits, int velUnits) {
        logger_ = settings.Logger;
        logger_.FlowUnits = static_cast<std::uint8_t>(flowUnits);
        logger_.VelUnits = static_cast<std::uint8_t>(velUnits);
        table_ = &settings.Table;
        scale_ = ChannelScale(logger_, 0);
        known_.assign(CountsOfChannel, false);
    }

    [[nodiscard]] const Figures& At(std::uint16_t raw) {
        Figures& figures = figures_[raw];
        if (!known_[raw]) {
            figures.Flow = CalculateFlow(logger_, *table_, scale_->ValueOf(raw), figures.Velocity);
            if (!std::isfinite(figures.Velocity)) {
                figures.Velocity = 0;
            }
            known_[raw] = true;
        }
        return figures;
    }

 private:
    LoggerRecord logger_;
    const FlowTable* table_ = nullptr;
    std::optional<ChannelScale> scale_;
    std::vector<Figures> figures_;
    std::vector<bool> known_;
};

/// Adds the columns of a logger that are not known yet.
void AddColumns(const HistoryColumns& shown, std::vector<SeriesColumn>& columns) {
    for (const HistoryColumn& column : shown.Columns) {
        const auto same = [&](const SeriesColumn& known) { return IsSameColumn(column, known); };
        if (std::none_of(columns.begin(), columns.end(), same)) {
            columns.push_back({column.Kind, column.Channel, column.Heading, column.Places});
        }
    }
}

/// Gives the columns of a logger its decimals and headings.
void TakeLooks(const HistoryColumns& shown, std::vector<SeriesColumn>& columns) {
    for (const HistoryColumn& column : shown.Columns) {
        for (SeriesColumn& known : columns) {
            if (IsSameColumn(column, known)) {
                known.Heading = column.Heading;
                known.Places = column.Places;
            }
        }
    }
}

/// Calls `take(settings, records)` for each settings with the numbers of its records.
template <typename Take>
void BySettings(const Series& series, Take take) {
    std::vector<std::vector<std::uint32_t>> starts(series.Settings.size());
    const std::vector<SeriesRecord>& records = series.Records;
    // Records of the same settings stand together mostly: their stretches are few.
    for (std::size_t begin = 0; begin < records.size();) {
        std::size_t end = begin + 1;
        while (end < records.size() && records[end].Settings == records[begin].Settings) {
            ++end;
        }
        if (records[begin].Settings < starts.size()) {
            auto& stretches = starts[records[begin].Settings];
            stretches.push_back(static_cast<std::uint32_t>(begin));
            stretches.push_back(static_cast<std::uint32_t>(end));
        }
        begin = end;
    }
    for (std::size_t settings = 0; settings < starts.size(); ++settings) {
        take(settings, starts[settings]);
    }
}

}  // namespace

std::string TitleOf(const SeriesColumn& column) {
    if (column.Kind == ColumnKind::Flow || column.Kind == ColumnKind::Velocity) {
        return column.Heading;
    }
    const std::string name = column.Kind == ColumnKind::Pulse ? "Pulse Chan " : "Channel ";
    return name + IntegerToText(column.Channel + 1) +
           (column.Heading.empty() ? "" : " (" + column.Heading + ")");
}

SeriesValues::SeriesValues(const Series& series) : series_(series), times_(series) {
    const std::vector<std::uint32_t> newestFirst = UsedSettings(series, true);
    for (const std::uint32_t settings : UsedSettings(series, false)) {
        AddColumns(ShownColumns(series.Settings[settings].Logger), columns_);
    }
    for (auto settings = newestFirst.rbegin(); settings != newestFirst.rend(); ++settings) {
        const LoggerRecord& logger = series.Settings[*settings].Logger;
        TakeLooks(ShownColumns(logger), columns_);
        if (ShowsFlow(logger)) {
            flowUnits_ = logger.FlowUnits;
            velUnits_ = logger.VelUnits;
        }
    }
    std::stable_sort(columns_.begin(), columns_.end(),
                     [](const SeriesColumn& a, const SeriesColumn& b) {
                         return std::tie(a.Kind, a.Channel) < std::tie(b.Kind, b.Channel);
                     });
    MakeReaders();
    ComputeFlow();
}

std::optional<std::size_t> SeriesValues::Find(ColumnKind kind) const {
    for (std::size_t column = 0; column < columns_.size(); ++column) {
        if (columns_[column].Kind == kind) {
            return column;
        }
    }
    return std::nullopt;
}

void SeriesValues::MakeReaders() {
    readers_.resize((series_.Settings.size() + 1) * columns_.size());
    Reader* reader = readers_.data();
    for (const SeriesSettings& settings : series_.Settings) {
        const HistoryColumns shown = ShownColumns(settings.Logger);
        for (const SeriesColumn& column : columns_) {
            const auto has = [&](const HistoryColumn& own) { return IsSameColumn(own, column); };
            if (std::any_of(shown.Columns.begin(), shown.Columns.end(), has)) {
                *reader = ReaderFor(settings.Logger, column);
            }
            ++reader;
        }
    }
}

SeriesValues::Reader SeriesValues::ReaderFor(const LoggerRecord& logger,
                                             const SeriesColumn& column) {
    const auto channel = static_cast<std::size_t>(column.Channel);
    switch (column.Kind) {
        case ColumnKind::Analog:
            return {.Kind = Reader::Way::Analog,
                    .Slot = channel,
                    .Scale = ChannelScale(logger, channel)};
        case ColumnKind::Pulse:
            return {
                .Kind = Reader::Way::Pulse,
                .Slot = std::min<std::size_t>(logger.NumAnalogChannels, AnalogChannels) + channel,
                .Unit = logger.PulseUnit[channel]};
        case ColumnKind::Flow:
            return {.Kind = Reader::Way::Flow};
        default:
            return {.Kind = Reader::Way::Velocity};
    }
}

void SeriesValues::ComputeFlow() {
    const std::vector<SeriesRecord>& records = series_.Records;
    if (!FlowColumn()) {
        return;
    }
    flow_.resize(records.size());
    velocity_.resize(Find(ColumnKind::Velocity) ? records.size() : 0);
    FlowOfCounts figures;
    BySettings(series_, [&](std::size_t number, const std::vector<std::uint32_t>& stretches) {
        const SeriesSettings& settings = series_.Settings[number];
        if (stretches.empty() || !ShowsFlow(settings.Logger)) {
            return;
        }
        figures.Begin(settings, flowUnits_, velUnits_);
        for (std::size_t i = 0; i < stretches.size(); i += 2) {
            for (std::size_t record = stretches[i]; record < stretches[i + 1]; ++record) {
                const FlowOfCounts::Figures& at = figures.At(records[record].Record.Raw[0]);
                flow_[record] = at.Flow;
                if (!velocity_.empty()) {
                    velocity_[record] = at.Velocity;
                }
            }
        }
    });
}

std::uint16_t SeriesValues::CountAt(std::size_t column, std::size_t record) const {
    return series_.Records[record].Record.Raw[ReaderOf(column, record).Slot];
}

double SeriesValues::PulseUnitAt(std::size_t column, std::size_t record) const {
    return Finite(ReaderOf(column, record).Unit);
}

const SeriesSettings* SeriesValues::NewestSettings() const {
    const std::vector<std::uint32_t> newest = UsedSettings(series_, true);
    return newest.empty() ? nullptr : &series_.Settings[newest.front()];
}
