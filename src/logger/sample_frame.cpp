#include "logger/sample_frame.h"

#include <algorithm>
#include <array>

#include "common/fault.h"
#include "logger/date_text.h"
#include "logger/image_bytes.h"

namespace cmd {

namespace {

constexpr int LastAnalogOffset = PackedTimeSize + (AnalogChannels - 1) * CountSize;
constexpr int PulseOffset = PackedTimeSize + AnalogChannels * CountSize;
static_assert(PulseOffset + PulseChannels * CountSize == SampleFrameSize);

char* WriteTwoDigits(char* out, char before, int value) {
    out[0] = before;
    out[1] = static_cast<char>('0' + value / 10);
    out[2] = static_cast<char>('0' + value % 10);
    return out + 3;
}

std::string RecordTimeText(const PackedTime& time, const SystemClock& clock) {
    std::array<char, RecordClockLength> behind{};
    char* const end = WriteRecordClock(behind.data(), time);
    return ShortDateText(clock, time.Year, time.Month, time.Day).append(behind.data(), end);
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
        std::copy_n(at(LastAnalogOffset), CountSize, at(PackedTimeSize + (analog - 1) * CountSize));
    }
    std::copy_n(at(PulseOffset), pulse * CountSize, at(PackedTimeSize + analog * CountSize));
}

std::span<const std::uint8_t> RecordBytes(std::span<const std::uint8_t> frame, int first,
                                          int channels) {
    if (channels < 0 || channels > AllChannels || first < 0 ||
        first + RecordSize(channels) > static_cast<int>(frame.size())) {
        throw Fault("record outside the frame");
    }
    return frame.subspan(static_cast<std::size_t>(first),
                         static_cast<std::size_t>(RecordSize(channels)));
}

std::uint16_t CountOf(std::span<const std::uint8_t> record, int channel) {
    return static_cast<std::uint16_t>(config::GetU16(record, PackedTimeSize + channel * CountSize));
}

char* WriteRecordClock(char* out, const PackedTime& time) {
    out = WriteTwoDigits(out, ' ', time.Hour);
    out = WriteTwoDigits(out, ':', time.Minute);
    return WriteTwoDigits(out, ':', time.Second);
}

void DecodeRecord(std::span<const std::uint8_t> frame, int first, int channels,
                  const SystemClock& clock, DataPoint& point) {
    const auto record = RecordBytes(frame, first, channels);
    for (int i = 0; i < channels; ++i) {
        point.Raw[static_cast<std::size_t>(i)] = CountOf(record, i);
    }
    point.Time = RecordTimeText(DecodePackedTime(record.first<PackedTimeSize>()), clock);
}

}  // namespace cmd
