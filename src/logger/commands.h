#ifndef ORVIA_LOGGER_COMMANDS_H
#define ORVIA_LOGGER_COMMANDS_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "logger/frame_exchange.h"
#include "logger/logger_state.h"
#include "platform/host.h"

// What the console can ask of a logger. The radio is tuned to it already. Each is one attempt and
// gives False when an acknowledge, a frame or the status byte failed to come; none tells anybody.

namespace cmd {

// Status bytes of a logger.
inline constexpr std::int16_t StatusSampleFollows = 0xFA;
inline constexpr std::int16_t StatusDone = 0xFC;
inline constexpr std::int16_t StatusNoSample = 0xFD;

/// Reads the clock into `LoggerTime`, which is "00/00/00 00:00:00" when that failed.
[[nodiscard]] bool GetLoggerTime(FrameExchange& exchange, const SystemClock& clock,
                                 LoggerRecord& record);

/// Reads the clock as a moment, whichever form it runs in; nothing when that failed.
[[nodiscard]] std::optional<LocalTime> ReadLoggerClock(FrameExchange& exchange);

/// Sets the clock from "month/day/year hour:minute:second", with or without " AM" or " PM". A
/// text of another shape is False with nothing sent.
[[nodiscard]] bool SetLoggerTime(FrameExchange& exchange, std::string_view text);

/// Reads number of records, status word and what it says of the logging.
[[nodiscard]] bool GetLoggerStatus(FrameExchange& exchange, LoggerRecord& record);

/// Reads firmware, channel counts and abilities. Counts that no logger has are a failure, though
/// `FirmwareVersion` has changed by then.
[[nodiscard]] bool GetLoggerVersion(FrameExchange& exchange, LoggerRecord& record);

/// Erases the records in the logger's memory. There is no way back.
[[nodiscard]] bool ClearLoggerHistory(FrameExchange& exchange);
/// Has the logger start its sampling anew, its alarm timers included, under the settings it holds.
[[nodiscard]] bool RestartSampling(FrameExchange& exchange);
/// Sets the logger's pulse counts back to 0.
[[nodiscard]] bool ResetPulseAccumulators(FrameExchange& exchange);

/// Ways of asking for a sample.
inline constexpr std::uint8_t SampleNow = 0x01;    ///< live sampling and calibration
inline constexpr std::uint8_t SampleLater = 0x00;  ///< to be fetched at the next pass

/// Asks the logger to take a sample; its status byte says nothing the console uses.
void RequestSample(FrameExchange& exchange, std::uint8_t way);

/// What came of reading a sample.
enum class SampleResult {
    NotSent,  ///< the logger did not acknowledge
    None,     ///< the logger has no sample; `point` has the marks
    Failed,   ///< another status byte, or no good frame; `point` stays
    Read      ///< `point` holds the sample
};

/// Reads the sample asked for, of a logger with these channel counts.
[[nodiscard]] SampleResult ReadSample(FrameExchange& exchange, const LoggerRecord& counts,
                                      const SystemClock& clock, DataPoint& point);

/// What a status word says of the logging.
[[nodiscard]] std::string LoggingStateText(std::uint32_t statusWord);

}  // namespace cmd

#endif  // ORVIA_LOGGER_COMMANDS_H
