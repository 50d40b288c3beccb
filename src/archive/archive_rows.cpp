#include "archive/archive_rows.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "logger/settings_image.h"

namespace {

constexpr int BitsPerByte = 8;
constexpr std::uint32_t ByteMask = 0xFF;
constexpr std::int32_t MostDecimals = 6;
// The fields of a packed time.
constexpr int DayBits = 5;
constexpr int HourBits = 5;
constexpr int MinuteBits = 6;
constexpr int SecondBits = 6;
constexpr int FirstYear = 2000;
constexpr int MonthsPerYear = 12;
constexpr int PackedMonths = 1024;

static_assert(ArchiveRecord::Channels == AllChannels);

/// The bytes of the settings as they stand; empty if some do not fit.
Bytes EncodedImage(const LoggerRecord& logger) {
    Bytes image;
    static_cast<void>(config::EncodeSettingsImage(logger, image));
    return image;
}

/// Whether decoding `image` gives the settings of `logger`.
bool IsImageOf(const Bytes& image, const LoggerRecord& logger) {
    LoggerState decoded;
    static_cast<LoggerRecord&>(decoded) = logger;
    return config::DecodeSettingsImage(image, decoded) &&
           EncodedImage(decoded) == EncodedImage(logger);
}

double Finite(double value) {
    return std::isfinite(value) ? value : 0;
}

std::int16_t Decimals(std::int32_t stored) {
    return static_cast<std::int16_t>(std::clamp(stored, 0, MostDecimals));
}

void TakeCounts(const ArchiveSettings& row, LoggerRecord& logger) {
    logger.FirmwareVersion = static_cast<std::uint8_t>(row.Firmware);
    logger.SODAvailable = ToFlag(row.SampleOnDemand != 0);
    logger.NumAnalogChannels =
        static_cast<std::uint8_t>(std::clamp(row.AnalogChannels, 0, AnalogChannels));
    logger.NumDigitalChannels =
        static_cast<std::uint8_t>(std::clamp(row.PulseChannels, 0, PulseChannels));
}

void TakeFlow(const ArchiveSettings& row, LoggerRecord& logger) {
    logger.FlowDecPlaces = Decimals(row.FlowDecimals);
    logger.VelDecPlaces = Decimals(row.VelocityDecimals);
    logger.FlowEqOffset = Finite(row.EquationOffset);
    logger.FlowEqExponent = Finite(row.EquationExponent);
    logger.FlowEqMultiplier = Finite(row.EquationMultiplier);
    logger.FlowDeviceName = row.DeviceName;
}

}  // namespace

std::uint32_t TimeNumber(const std::array<std::uint8_t, cmd::PackedTimeSize>& packed) {
    std::uint32_t number = 0;
    for (std::size_t i = packed.size(); i-- > 0;) {
        number = number << BitsPerByte | packed[i];
    }
    return number;
}

std::array<std::uint8_t, cmd::PackedTimeSize> PackedTimeOf(std::uint32_t number) {
    std::array<std::uint8_t, cmd::PackedTimeSize> packed = {};
    for (std::uint8_t& byte : packed) {
        byte = static_cast<std::uint8_t>(number & ByteMask);
        number >>= BitsPerByte;
    }
    return packed;
}

std::uint32_t TimeNumberAt(Moment moment) {
    if (moment < 0) {
        return 0;
    }
    const LocalTime time = TimeOfMoment(std::min(moment, LatestMoment));
    const int months = (time.Year - FirstYear) * MonthsPerYear + time.Month - 1;
    if (months >= PackedMonths) {
        return std::numeric_limits<std::uint32_t>::max();
    }
    auto number = static_cast<std::uint32_t>(months);
    number = number << DayBits | static_cast<std::uint32_t>(time.Day);
    number = number << HourBits | static_cast<std::uint32_t>(time.Hour);
    number = number << MinuteBits | static_cast<std::uint32_t>(time.Minute);
    return number << SecondBits | static_cast<std::uint32_t>(time.Second);
}

HistoryRecord HistoryRecordOf(const ArchiveRecord& row) {
    return {.Time = PackedTimeOf(row.Time), .Raw = row.Counts};
}

RecordIdentity IdentityOf(const HistoryRecord& record, std::int32_t nth) {
    return {.Time = TimeNumber(record.Time), .Nth = nth, .Counts = record.Raw};
}

RecordIdentity IdentityOf(const ArchiveRecord& row) {
    return {.Time = row.Time, .Nth = row.Nth, .Counts = row.Counts};
}

std::size_t RecordIdentityHash::operator()(const RecordIdentity& identity) const {
    constexpr std::uint64_t odd = 0x9E3779B97F4A7C15U;
    constexpr int half = 32;
    std::uint64_t hash =
        (std::uint64_t{identity.Time} << half | static_cast<std::uint32_t>(identity.Nth)) * odd;
    for (std::size_t i = 0; i < identity.Counts.size(); i += 2) {
        const std::uint64_t pair =
            std::uint64_t{identity.Counts[i]} << half | identity.Counts[i + 1];
        hash = (hash ^ hash >> half ^ pair) * odd;
    }
    return static_cast<std::size_t>(hash ^ hash >> half);
}

ArchiveSettings SettingsRow(const LoggerRecord& logger, const FlowTable& table) {
    ArchiveSettings row;
    row.Image =
        IsImageOf(logger.SettingsImage, logger) ? logger.SettingsImage : EncodedImage(logger);
    row.Firmware = logger.FirmwareVersion;
    row.AnalogChannels = logger.NumAnalogChannels;
    row.PulseChannels = logger.NumDigitalChannels;
    row.SampleOnDemand = logger.SODAvailable != False ? 1 : 0;
    row.FlowDecimals = logger.FlowDecPlaces;
    row.VelocityDecimals = logger.VelDecPlaces;
    row.EquationOffset = Finite(logger.FlowEqOffset);
    row.EquationExponent = Finite(logger.FlowEqExponent);
    row.EquationMultiplier = Finite(logger.FlowEqMultiplier);
    row.DeviceName = logger.FlowDeviceName;
    for (const FlowTablePoint& point : table) {
        row.Points.push_back({Finite(point.Level), Finite(point.Flow)});
    }
    return row;
}

SeriesSettings SettingsOfRow(const ArchiveSettings& row) {
    LoggerState state;
    TakeCounts(row, state);
    if (config::DecodeSettingsImage(row.Image, state)) {
        state.SettingsImage = row.Image;
    } else {
        SetDefaultSettings(state);
    }
    TakeFlow(row, state);
    SeriesSettings settings{.Logger = static_cast<const LoggerRecord&>(state), .Table = {}};
    for (const ArchivePoint& point : row.Points) {
        settings.Table.Append({Finite(point.Level), Finite(point.Flow)});
    }
    return settings;
}
