#ifndef ORVIA_LOGGER_SAMPLE_FRAME_H
#define ORVIA_LOGGER_SAMPLE_FRAME_H

#include <cstddef>
#include <cstdint>
#include <span>

#include "common/bytes.h"
#include "logger/data_point.h"
#include "platform/host.h"

namespace cmd {

/// Size of a sample frame's payload: packed time, eight analog and two pulse values.
inline constexpr int SampleFrameSize = 24;
/// Size of the packed time that begins a sample or a history record.
inline constexpr int PackedTimeSize = 4;
/// Size of a raw count behind it.
inline constexpr int CountSize = 2;

/// The fields of a packed time.
struct PackedTime {
    int Second = 0;
    int Minute = 0;
    int Hour = 0;
    int Day = 0;
    int Month = 1;
    int Year = 2000;
};

/// Unpacks four bytes: 6 bits second, 6 minute, 5 hour, 5 day, 10 months since January 2000, low
/// bits first.
[[nodiscard]] PackedTime DecodePackedTime(std::span<const std::uint8_t, PackedTimeSize> bytes);

/// Brings the values of a sample frame together: the logger's last analog channel stands in slot
/// 7 and the pulses behind it, whatever the number of channels. Afterwards `analog` (1 to 8)
/// analog and `pulse` (0 to 2) pulse values follow each other; other counts, or a frame of
/// another size, are a Fault.
void CompactSampleFrame(Bytes& frame, int analog, int pulse);

/// Size in bytes of a record with so many channels.
[[nodiscard]] constexpr int RecordSize(int channels) {
    return PackedTimeSize + CountSize * channels;
}

/// The bytes of the record at `first`, of a logger with `channels` (0 to 10) channels: packed time,
/// then the counts. One that runs over the end is a Fault.
[[nodiscard]] std::span<const std::uint8_t> RecordBytes(std::span<const std::uint8_t> frame,
                                                        int first, int channels);

/// Raw count of a channel of that record, from 0.
[[nodiscard]] std::uint16_t CountOf(std::span<const std::uint8_t> record, int channel);

/// Length of " hh:mm:ss"; no field of a packed time has a third digit.
inline constexpr std::size_t RecordClockLength = 9;
/// Writes what stands behind the date in the text of a record's time; returns one past its end.
[[nodiscard]] char* WriteRecordClock(char* out, const PackedTime& time);

/// Decodes the record at `first`: time, then `channels` (0 to 10) raw counts into the first
/// slots of `point`; other slots stay. A record that runs over the end is a Fault.
void DecodeRecord(std::span<const std::uint8_t> frame, int first, int channels,
                  const SystemClock& clock, DataPoint& point);

}  // namespace cmd

#endif  // ORVIA_LOGGER_SAMPLE_FRAME_H
