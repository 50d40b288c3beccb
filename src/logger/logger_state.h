#ifndef ORVIA_LOGGER_LOGGER_STATE_H
#define ORVIA_LOGGER_LOGGER_STATE_H

#include <array>
#include <cstdint>
#include <string>

#include "common/bytes.h"
#include "common/flag.h"
#include "common/numbered_array.h"
#include "logger/data_point.h"

/// One point of a rating table.
struct FlowTablePoint {
    double Level = 0;  ///< feet
    double Flow = 0;   ///< cubic feet per second
};

using FlowTable = NumberedArray<FlowTablePoint>;

/// Settings and status of one logger, and what the console works out from them: the part of
/// LoggerState that one routine hands to another through the global copy.
struct LoggerRecord {
    std::uint8_t FirmwareVersion = 0;
    Flag SODAvailable = False;  ///< the logger offers sample-on-demand
    std::uint8_t NumAnalogChannels = 0;
    std::uint8_t NumDigitalChannels = 0;
    std::string LoggerName;
    std::string LoggerTime;
    std::string SampleInterval;  ///< count, blank, unit: "5 minutes"
    std::array<std::uint8_t, AnalogChannels> AnalogEnable = {};
    std::array<std::uint8_t, PulseChannels> DigitalEnable = {};
    std::uint8_t DataWrapAroundFlag = 0;
    std::uint8_t FixedBaudRate = 0;
    std::uint8_t SensorWarmupTime = 0;              ///< seconds
    std::array<std::string, AllChannels> EngUnits;  ///< 0 to 7 analog, 8 and 9 pulse
    std::array<std::int16_t, 2> AlarmSec = {};
    std::array<std::int16_t, 2> AlarmMin = {};
    std::array<std::int16_t, 2> AlarmHour = {};  ///< 0 to 23
    std::array<std::uint8_t, 2> AlarmEnable = {};
    std::uint8_t LoggingStyle = 0;
    std::int32_t Deadband = 0;  ///< raw counts
    std::uint8_t EnableSOD = 0;
    std::array<std::uint8_t, AllChannels> DecPlaces = {};
    std::array<std::int32_t, AnalogChannels> RawScaleLower = {};
    std::array<std::int32_t, AnalogChannels> RawScaleUpper = {};
    std::array<double, PulseChannels> PulseUnit = {};  ///< engineering units of one pulse
    std::array<double, AnalogChannels> LowerLimit = {};
    std::array<double, AnalogChannels> UpperLimit = {};
    std::array<double, AnalogChannels> DisplayTop = {};
    std::array<double, AnalogChannels> DisplayBottom = {};
    std::uint32_t NumSamples = 0;  ///< records in the logger's memory
    std::uint32_t StatusWord = 0;
    std::string LoggingState;
    std::int16_t FlowDecPlaces = 0;
    std::int16_t VelDecPlaces = 0;
    std::uint8_t FlowMode = 0;   ///< 0 none, 1 Manning, 2 flume, 3 weir, 4 table
    std::uint8_t FlowUnits = 0;  ///< 0 CFS, 1 GPM, 2 MGD, 3 CMS, 4 LPS
    double FlowTop = 0;
    std::uint8_t VelUnits = 0;  ///< 1 metres per second, else feet per second
    double VelTop = 0;
    double ManningsN = 0;
    double ManningsS = 0;
    std::uint8_t ManningsSType = 0;  ///< not 0: percent
    double ManningsD = 0;
    std::uint8_t ManningsDType = 0;  ///< 0 feet, 1 inches, 2 metres, 3 centimetres
    std::string FlumeTag;
    std::string WeirTag;
    double LevelOffset = 0;
    std::uint8_t LevelOffsetType = 0;  ///< as ManningsDType
    std::string TablePath;
    double FlowEqOffset = 0;  ///< A of Q = C (H + A)^B
    double FlowEqExponent = 0;
    double FlowEqMultiplier = 0;
    std::string FlowDeviceName;
    Bytes SettingsImage;  ///< the image last read from the logger, empty before; never edited
};

/// All of one logger. Each client window has one; the process has one more, the record of the
/// current logger, on which set-up, encoding, files and history work.
struct LoggerState : LoggerRecord {
    std::array<DataPoint, 4> DataPoints;  ///< newest first
    std::int16_t NumDataPoints = 0;       ///< 0 to 4
    ::FlowTable FlowTable;
};

/// Makes `state` the current logger. Samples and flow table of both stay.
void CopyStateToGlobal(LoggerState& global, const LoggerState& state);

/// Takes the current logger into `state`. Samples and flow table of both stay.
void CopyStateFromGlobal(const LoggerState& global, LoggerState& state);

/// Fills the current logger with the settings of a logger fresh from the box, for its present
/// channel counts. Counts, firmware and baud rate stay.
void SetDefaultSettings(LoggerState& global);

/// The part of the defaults that concerns flow.
void SetDefaultFlowSettings(LoggerRecord& record);

#endif  // ORVIA_LOGGER_LOGGER_STATE_H
