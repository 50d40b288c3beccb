#ifndef ORVIA_SIMULATOR_SETTINGS_H
#define ORVIA_SIMULATOR_SETTINGS_H

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "simulator/bytes.h"

namespace simulator {

/// One analog channel as its logger is set: two raw counts stand for two engineering values.
struct AnalogSettings {
    std::string Units = "%";
    bool Enabled = true;
    int Decimals = 2;
    std::uint16_t RawLower = 0;
    std::uint16_t RawUpper = 65535;
    double LowerLimit = 0;
    double UpperLimit = 100;
    double DisplayBottom = 0;
    double DisplayTop = 100;
};

struct PulseSettings {
    std::string Units = "Pulses";
    bool Enabled = true;
    int Decimals = 0;
    double UnitsPerPulse = 1;
};

struct AlarmSettings {
    bool Enabled = false;
    int Hour = 0;
    int Minute = 0;
    int Second = 0;
};

/// The codes are those of the logger's memory.
enum class IntervalUnit : std::uint8_t { Seconds = 0, Minutes = 1, Hours = 2, Days = 3 };
enum class FlowMode : std::uint8_t { None = 0, Manning = 1, Flume = 2, Weir = 3, Table = 4 };
enum class LengthUnit : std::uint8_t { Foot = 0, Inch = 1, Meter = 2, Centimeter = 3 };
enum class FlowUnit : std::uint8_t { Cfs = 0, Gpm = 1, Mgd = 2, Cms = 3, Lps = 4 };
enum class VelocityUnit : std::uint8_t { Fps = 0, Mps = 1 };

struct FlowSettings {
    FlowMode Mode = FlowMode::None;
    FlowUnit FlowUnits = FlowUnit::Cfs;
    VelocityUnit VelUnits = VelocityUnit::Fps;
    bool ManningsSPercent = true;
    LengthUnit ManningsDType = LengthUnit::Foot;
    LengthUnit LevelOffsetType = LengthUnit::Inch;
    double ManningsN = 0.014;
    double ManningsS = 1;
    double ManningsD = 1;
    double LevelOffset = 0;
    double FlowTop = 100;
    double VelTop = 100;
    std::string FlumeTag;
    std::string WeirTag;
    std::string TablePath;
};

/// What a logger is programmed with. 1 to 8 analog and 0 to 2 pulse channels.
struct LoggerSettings {
    std::string Name = "Logger";
    std::uint16_t IntervalCount = 15;
    IntervalUnit Interval = IntervalUnit::Minutes;
    std::vector<AnalogSettings> Analog = {AnalogSettings{}};
    std::vector<PulseSettings> Pulse;
    bool WrapAround = true;
    int FixedBaudRate = 0;  ///< 0 to 127
    std::uint16_t WarmupMilliseconds = 3000;
    std::array<AlarmSettings, 2> Alarms{};
    int EnableSod = 0;
    int LoggingStyle = 0;
    std::uint16_t Deadband = 0;
    FlowSettings Flow;
    bool FlowNeverWritten = false;  ///< the block of the flow settings is still all FF
};

/// Writes the settings into a logger's memory (65536 bytes), as the logger holds them: addresses 8
/// to 249, 256 to 303 and 512 to 679. A number that its field cannot hold is cut to the field.
void WriteSettings(const LoggerSettings& settings, std::span<std::uint8_t> memory);

/// Addresses that the logger itself looks at.
inline constexpr std::size_t IntervalCountAddress = 8 + 32;
inline constexpr std::size_t IntervalUnitAddress = 8 + 34;
inline constexpr std::size_t AlarmEnableAddress = 8 + 42;
inline constexpr std::size_t AlarmTimeAddress = 8 + 138;  ///< second, minute, hour, 80; twice

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_SETTINGS_H
