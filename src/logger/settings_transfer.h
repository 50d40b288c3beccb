#ifndef ORVIA_LOGGER_SETTINGS_TRANSFER_H
#define ORVIA_LOGGER_SETTINGS_TRANSFER_H

#include "common/bytes.h"
#include "logger/frame_exchange.h"
#include "logger/logger_state.h"
#include "platform/host.h"

namespace config {

/// Reads identity, settings, status and clock of the selected logger, with several attempts at
/// each. False at the first that fails for good; the settings are decoded only when all of them
/// came.
[[nodiscard]] bool GetLoggerSettings(FrameExchange& exchange, const SystemClock& clock,
                                     LoggerState& state);

/// Encodes `global`, writes it to the selected logger, reads it back and compares. True only if
/// every byte is there; sampling is not restarted.
[[nodiscard]] bool WriteLoggerSettings(FrameExchange& exchange, const LoggerRecord& global);

}  // namespace config

#endif  // ORVIA_LOGGER_SETTINGS_TRANSFER_H
