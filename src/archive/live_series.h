#ifndef ORVIA_ARCHIVE_LIVE_SERIES_H
#define ORVIA_ARCHIVE_LIVE_SERIES_H

#include <deque>
#include <map>
#include <memory>
#include <string>

#include "archive/named_series.h"
#include "archive/periods.h"
#include "client/sample_listener.h"
#include "platform/archive_store.h"
#include "platform/host.h"

/// The hour up to now, by the host's clock, both ends inside.
[[nodiscard]] Period LastHour(const SystemClock& clock);

/// Keeps the readings of the last hour of each open client window, by the host's clock: samples
/// taken once, continuously or by auto update. Those of a window go when it closes.
class LiveSeries final : public SampleListener {
 public:
    /// No window keeps more readings, whatever the clock does.
    static constexpr std::size_t MostReadings = 36'000;

    explicit LiveSeries(const SystemClock& clock) : clock_(clock) {}

    void Opened(const ClientModel& window) override;
    void Sampled(const ClientModel& window) override;
    void Closed(const ClientModel& window) override;

    /// The readings of an open window as a series, under a name: the same object until there is a
    /// newer reading. Without any reading an empty series; nothing if the window is not open.
    [[nodiscard]] std::shared_ptr<const NamedSeries> Of(const ClientModel& window,
                                                        const std::string& name);

 private:
    struct Reading {
        HistoryRecord Record;
        std::shared_ptr<const SeriesSettings> Settings;
    };
    struct Window {
        std::deque<Reading> Readings;
        std::shared_ptr<const SeriesSettings> Settings;  ///< of the newest reading
        ArchiveSettings Row;                             ///< what they were made from
        std::shared_ptr<const NamedSeries> Shown;        ///< none if a reading came since
    };

    static void LookAtSettings(Window& window, const LoggerState& logger);
    void Prune(Window& window) const;
    [[nodiscard]] static std::shared_ptr<const NamedSeries> Make(const Window& window,
                                                                 const std::string& name);

    const SystemClock& clock_;
    std::map<const ClientModel*, Window> windows_;
};

#endif  // ORVIA_ARCHIVE_LIVE_SERIES_H
