#ifndef ORVIA_CLIENT_READINGS_H
#define ORVIA_CLIENT_READINGS_H

#include <cstdint>
#include <string>

#include "client/client_panel.h"
#include "client/client_record.h"

/// Text of a channel that had nothing to read.
inline constexpr const char* NoSampleText = "No sample";

/// Raw count of analog channel `channel` (0 to 7) in engineering units, not limited to the
/// channel's span. The live window's own rule: equal raw limits give the lower limit, a span below
/// 0.0001 the upper one. A value that is not finite is a Fault.
[[nodiscard]] double ScaleLiveReading(const LoggerRecord& record, int channel, std::int32_t raw);

/// What pulse channel `channel` (0 or 1) shows for a raw count; empty for a disabled one. A value
/// that is not finite is a Fault.
[[nodiscard]] std::string PulseText(const LoggerRecord& record, int channel, std::int32_t raw);

/// Files `point` as the newest of the last four samples.
void FileDataPoint(const DataPoint& point, LoggerState& state);

/// Shows the samples on file: labels of the channels, values of the bar columns and, in the flow
/// mode, flow and velocity. A fault ends it quietly, with the labels as far as they got.
void RefreshReadings(ClientRecord& record, ClientPanel& panel);

#endif  // ORVIA_CLIENT_READINGS_H
