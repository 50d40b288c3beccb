#include "archive/live_series.h"

#include <algorithm>

#include "archive/archive_rows.h"
#include "client/client_model.h"
#include "common/fault.h"

namespace {

/// The settings of a logger as they are for readings that come while somebody looks: they follow no
/// interval and no alarm of the logger's. A minute and a half without one is a gap, as auto update
/// brings one a minute.
SeriesSettings LiveSettings(const LoggerState& logger) {
    const LoggerRecord& record = logger;
    SeriesSettings settings{record, logger.FlowTable};
    settings.Logger.SampleInterval = "1 minute";
    settings.Logger.LoggingStyle = 0;
    settings.Logger.AlarmEnable = {};
    return settings;
}

bool HasReading(const LoggerState& logger) {
    const auto& raw = logger.DataPoints[0].Raw;
    const auto channels =
        std::clamp(logger.NumAnalogChannels + logger.NumDigitalChannels, 0, AllChannels);
    return channels > 0 && std::none_of(raw.begin(), raw.begin() + channels,
                                        [](std::int32_t count) { return count < 0; });
}

}  // namespace

Period LastHour(const SystemClock& clock) {
    const Moment now = MomentOf(clock.Now());
    return {now - SecondsPerHour, now + 1};
}

void LiveSeries::Opened(const ClientModel& window) {
    windows_[&window] = {};
}

void LiveSeries::Closed(const ClientModel& window) {
    windows_.erase(&window);
}

void LiveSeries::Sampled(const ClientModel& window) {
    const auto found = windows_.find(&window);
    const LoggerState& logger = window.Record.LoggerState;
    if (found == windows_.end() || window.Record.SettingsValid == False || !HasReading(logger)) {
        return;
    }
    Window& kept = found->second;
    Reading reading;
    reading.Record.Time = PackedTimeOf(TimeNumberAt(MomentOf(clock_.Now())));
    std::transform(logger.DataPoints[0].Raw.begin(), logger.DataPoints[0].Raw.end(),
                   reading.Record.Raw.begin(), [](std::int32_t count) {
                       return static_cast<std::uint16_t>(std::clamp(count, 0, 0xFFFF));
                   });
    LookAtSettings(kept, logger);
    reading.Settings = kept.Settings;
    kept.Readings.push_back(std::move(reading));
    kept.Shown.reset();
    Prune(kept);
}

void LiveSeries::LookAtSettings(Window& window, const LoggerState& logger) {
    ArchiveSettings row;
    // Settings that no image holds are those of before.
    TrapFault([&] { row = SettingsRow(logger, logger.FlowTable); });
    if (window.Settings == nullptr || !(row == window.Row)) {
        window.Settings = std::make_shared<const SeriesSettings>(LiveSettings(logger));
        window.Row = std::move(row);
    }
}

void LiveSeries::Prune(Window& window) const {
    const Period hour = LastHour(clock_);
    const auto lies = [&](const Reading& reading) {
        return hour.Holds(MomentOf(reading.Record.Time));
    };
    // A clock that is set back leaves readings that lie ahead.
    const bool outside = !window.Readings.empty() && !lies(window.Readings.front());
    if (outside || window.Readings.size() > MostReadings) {
        std::erase_if(window.Readings, [&](const Reading& reading) { return !lies(reading); });
    }
    while (window.Readings.size() > MostReadings) {
        window.Readings.pop_front();
    }
}

std::shared_ptr<const NamedSeries> LiveSeries::Make(const Window& window, const std::string& name) {
    Series series;
    const SeriesSettings* last = nullptr;
    for (const Reading& reading : window.Readings) {
        if (reading.Settings.get() != last) {
            last = reading.Settings.get();
            series.Settings.push_back(*last);
        }
        series.Records.push_back(
            {reading.Record, static_cast<std::uint32_t>(series.Settings.size() - 1)});
    }
    return std::make_shared<const NamedSeries>(name, std::move(series));
}

std::shared_ptr<const NamedSeries> LiveSeries::Of(const ClientModel& window,
                                                  const std::string& name) {
    const auto found = windows_.find(&window);
    if (found == windows_.end()) {
        return nullptr;
    }
    Window& kept = found->second;
    if (kept.Shown == nullptr || kept.Shown->Name() != name) {
        Prune(kept);
        kept.Shown = Make(kept, name);
    }
    return kept.Shown;
}
