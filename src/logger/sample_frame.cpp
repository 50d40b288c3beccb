#include "logger/sample_frame.h"

#include <algorithm>

#include "common/fault.h"
#include "common/text.h"
#include "logger/date_text.h"
#include "logger/image_bytes.h"

namespace cmd {

namespace {

constexpr int ValueSize = 2;
constexpr int LastAnalogOffset = PackedTimeSize + (AnalogChannels - 1) * ValueSize;
constexpr int PulseOffset = PackedTimeSize + AnalogChannels * ValueSize;
static_assert(PulseOffset + PulseChannels * ValueSize == SampleFrameSize);

std::string RecordTimeText(const PackedTime& time, const SystemClock& clock) {
    return ShortDateText(clock, time.Year, time.Month, time.Day) + " " + TwoDigits(time.Hour) +
           ":" + TwoDigits(time.Minute) + ":" + TwoDigits(time.Second);
}

}  // namespace

PackedTime DecodePackedTime(std::span<const std::uint8_t, PackedTimeSize> bytes) {
    const int months = bytes[2] >> 6 | bytes[3] << 2;
    PackedTime time;
    time.Second = bytes[0] & 0x3F;
    time.Minute = bytes[0] >> 6 | (bytes[1] & 0x0F) << 2;
    time.Hour = bytes[1] >> 4 | (bytes[2] & 0x01) << 4;
    time.Day = bytes[2] >> 1 & 0x1F;
    time.Month = months % 12 + 1;
    time.Year = 2000 + months / 12;
    return time;
}

void CompactSampleFrame(Bytes& frame, int analog, int pulse) {
    if (frame.size() != SampleFrameSize || analog < 1 || analog > AnalogChannels || pulse < 0 ||
        pulse > PulseChannels) {
        throw Fault("no sample frame of a logger");
    }
    if (analog == AnalogChannels) {
        return;
    }
    const auto at = [&frame](int offset) { return frame.begin() + offset; };
    if (analog != 1) {
        std::copy_n(at(LastAnalogOffset), ValueSize, at(PackedTimeSize + (analog - 1) * ValueSize));
    }
    std::copy_n(at(PulseOffset), pulse * ValueSize, at(PackedTimeSize + analog * ValueSize));
}

void DecodeRecord(std::span<const std::uint8_t> frame, int first, int channels,
                  const SystemClock& clock, DataPoint& point) {
    const int size = PackedTimeSize + channels * ValueSize;
    if (channels < 0 || channels > AllChannels || first < 0 ||
        first + size > static_cast<int>(frame.size())) {
        throw Fault("record outside the frame");
    }
    const auto record = frame.subspan(static_cast<std::size_t>(first));
    std::fill_n(point.Raw.begin(), channels, 0);
    for (int i = 0; i < channels; ++i) {
        point.Raw[static_cast<std::size_t>(i)] =
            config::GetU16(record, PackedTimeSize + i * ValueSize);
    }
    point.Time = RecordTimeText(DecodePackedTime(record.first<PackedTimeSize>()), clock);
}

}  // namespace cmd
