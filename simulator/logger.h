#ifndef ORVIA_SIMULATOR_LOGGER_H
#define ORVIA_SIMULATOR_LOGGER_H

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "simulator/answer.h"
#include "simulator/bytes.h"
#include "simulator/calendar.h"
#include "simulator/history.h"
#include "simulator/settings.h"
#include "simulator/signal.h"
#include "simulator/true_flow.h"

namespace simulator {

/// All that makes one logger and its radio.
struct LoggerSetup {
    std::uint8_t Channel = 0x10;
    std::array<std::uint8_t, 6> Mac = {0x00, 0xA0, 0x96, 0x00, 0x00, 0x01};

    LoggerSettings Settings;

    /// What the sensors stand in, by channel: engineering units for an analog channel, the amount
    /// that has run through so far for a pulse channel. A channel without one rests in the middle
    /// of its limits, or counts nothing.
    std::vector<SignalPtr> AnalogSignals;
    std::vector<SignalPtr> PulseSignals;
    SiteRating Rating;  ///< of a flume, weir or table site

    std::uint8_t FirmwareVersion = 21;
    bool SodAvailable = false;
    ClockForm Clock = ClockForm::Hours24;
    CivilSeconds ClockOffset = 0;  ///< how far the clock is ahead of the true time at the start

    bool Logging = true;
    std::uint32_t HistoryRecords = 0;  ///< in memory at the start, the last one just taken
    std::optional<std::uint32_t> ReportedSamples;  ///< NumSamples of the status, where it lies
    std::optional<std::uint16_t> StatusWord;       ///< fixed, where it shall not follow the logging

    Microseconds SampleDelay = 100 * Millisecond;  ///< from the request to the sample
    std::uint8_t Signal = 43;      ///< strength that the server radio reports: 0 strong, 255 weak
    std::uint8_t SignalSwing = 0;  ///< the strength wanders that far to both sides in a minute
};

/// A remote logger, from its end of the wire. Anything that it is asked, it answers from its
/// memory, its clock and its sensors as they are at that moment.
///
/// It acknowledges a good frame with a known command, the right length and the right guard bytes;
/// all else it meets with silence, and notes it in `Refused`.
class Logger {
 public:
    /// `start` is the true time at moment 0 of the engine.
    Logger(LoggerSetup setup, CivilSeconds start);

    [[nodiscard]] const std::string& Name() const { return setup_.Settings.Name; }
    [[nodiscard]] std::uint8_t Channel() const { return setup_.Channel; }
    [[nodiscard]] Mac3 Mac() const { return {setup_.Mac[3], setup_.Mac[4], setup_.Mac[5]}; }
    [[nodiscard]] const LoggerSetup& Setup() const { return setup_; }
    [[nodiscard]] std::size_t AnalogChannels() const { return setup_.Settings.Analog.size(); }
    [[nodiscard]] std::size_t PulseChannels() const { return setup_.Settings.Pulse.size(); }

    /// Carries a request out and gives the answer; nothing for one that is met with silence.
    [[nodiscard]] std::optional<Answer> Carry(std::span<const std::uint8_t> request,
                                              Microseconds now);

    // What the sensors truly say; a pulse channel's amount is that since its count was 0.
    [[nodiscard]] double TrueValue(std::size_t analogChannel, Microseconds now) const;
    [[nodiscard]] double TruePulseAmount(std::size_t pulseChannel, Microseconds now) const;
    [[nodiscard]] std::uint16_t RawCount(std::size_t analogChannel, Microseconds now) const;
    [[nodiscard]] std::uint16_t PulseCount(std::size_t pulseChannel, Microseconds now) const;
    /// Flow at the level of the first channel, in the units that the logger was set up with.
    [[nodiscard]] Flow TrueFlowNow(Microseconds now) const;
    /// Puts another sensor on an analog channel; calibration is tried so.
    void SetAnalogSignal(std::size_t analogChannel, SignalPtr signal);

    /// What the logger's own clock reads.
    [[nodiscard]] CivilSeconds ClockAt(Microseconds now) const;
    /// Records in memory.
    [[nodiscard]] std::uint32_t RecordsAt(Microseconds now) const;
    [[nodiscard]] std::uint16_t StatusWordAt(Microseconds now) const;
    /// The bytes of record `index`, 0 the oldest: packed time, analog counts, pulse counts.
    [[nodiscard]] Bytes Record(std::uint32_t index) const;
    /// The moment of record `index`, before 0 for those that were there at the start: what was true
    /// then is what the record should say.
    [[nodiscard]] Microseconds RecordMoment(std::uint32_t index) const;
    /// The moment of the sample that can be read now; nothing if there is none.
    [[nodiscard]] std::optional<Microseconds> SampleMoment(Microseconds now) const;
    /// Strength of its radio's signal: 0 strong to 255 weak.
    [[nodiscard]] std::uint8_t SignalAt(Microseconds now) const;

    /// The 65536 bytes of memory.
    [[nodiscard]] Bytes& Memory() { return memory_; }
    /// From now on a write leaves this byte as it is.
    void IgnoreWritesAt(std::size_t address) { stubborn_.insert(address); }

    /// From now on the command is answered with this, and not carried out.
    void Answers(std::uint8_t command, Answer answer) { fixed_[command] = std::move(answer); }
    /// The same with an acknowledge and a frame of that payload.
    void Answers(std::uint8_t command, Bytes payload) {
        fixed_[command] = {{Acknowledge}, {}, std::move(payload)};
    }

    /// A silent logger hears nothing and says nothing.
    void Silence() { silent_ = true; }
    void Wake() { silent_ = false; }
    [[nodiscard]] bool IsSilent() const { return silent_; }

    /// Requests met with silence, in words: "04: guard bytes".
    [[nodiscard]] const std::vector<std::string>& Refused() const { return refused_; }

 private:
    using Request = std::span<const std::uint8_t>;
    using Reply = std::optional<Answer>;

    Reply ReadClock(Request request, Microseconds now);
    Reply SetClock(Request request, Microseconds now);
    Reply ClearHistory(Request request, Microseconds now);
    Reply WriteMemory(Request request);
    Reply ReadMemory(Request request);
    Reply RequestSample(Request request, Microseconds now);
    Reply ReadSample(Request request, Microseconds now);
    Reply RestartSampling(Request request, Microseconds now);
    Reply ReadStatus(Request request, Microseconds now);
    Reply ReadHistory(Request request, Microseconds now);
    Reply ResetPulses(Request request, Microseconds now);
    Reply ReadVersion(Request request);

    Reply Refuse(std::uint8_t command, const std::string& why);
    Reply Dispatch(Request request, Microseconds now);
    [[nodiscard]] bool IsPlain(Request request);
    [[nodiscard]] bool HasGuards(Request request, std::uint8_t first, std::uint8_t second);

    [[nodiscard]] SiteSeconds TrueTime(Microseconds now) const;
    [[nodiscard]] double AnalogAt(std::size_t channel, SiteSeconds time) const;
    [[nodiscard]] double PulseAmountAt(std::size_t channel, SiteSeconds time) const;
    [[nodiscard]] std::uint16_t RawAt(std::size_t channel, SiteSeconds time) const;
    [[nodiscard]] std::uint16_t PulsesAt(std::size_t channel, SiteSeconds time) const;
    [[nodiscard]] Bytes SampleFrame(Microseconds taken) const;
    [[nodiscard]] Bytes NextBlock(Microseconds now);

    [[nodiscard]] CivilSeconds IntervalSeconds() const;
    [[nodiscard]] std::optional<CivilSeconds> NextAlarm(std::size_t alarm,
                                                        CivilSeconds after) const;
    void BeginFirstRun();
    void BeginRun(Microseconds now, CivilSeconds earliest, std::optional<CivilSeconds> until);

    LoggerSetup setup_;
    CivilSeconds start_;
    Bytes memory_;
    std::set<std::size_t> stubborn_;
    std::map<std::uint8_t, Answer> fixed_;
    bool silent_ = false;
    std::vector<std::string> refused_;

    CivilSeconds clock_;  ///< what the clock read at `clockSet_`
    Microseconds clockSet_ = 0;

    std::optional<Microseconds> sampleTaken_;

    bool logging_;
    CivilSeconds logFrom_ = 0;              ///< logging waits for its first alarm till then
    std::optional<CivilSeconds> logUntil_;  ///< logging is stopped by its second alarm then
    History history_;
    std::uint32_t nextRecord_ = 0;
    Bytes lastBlock_;

    /// Moments at which the pulse counts went back to 0, the first being the start of the history.
    std::vector<SiteSeconds> pulseResets_;
};

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_LOGGER_H
