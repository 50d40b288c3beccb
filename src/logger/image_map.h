#ifndef ORVIA_LOGGER_IMAGE_MAP_H
#define ORVIA_LOGGER_IMAGE_MAP_H

// Offsets and sizes of the fields of the settings image, in bytes. A field of several channels
// starts at its offset and repeats at its stride.
namespace config::image {

inline constexpr int LoggerName = 0;
inline constexpr int LoggerNameSize = 32;
inline constexpr int IntervalCount = 32;
inline constexpr int IntervalUnit = 34;
inline constexpr int NumAnalogChannels = 35;
inline constexpr int NumDigitalChannels = 36;
inline constexpr int AnalogEnable = 37;
inline constexpr int DigitalEnable = 38;
inline constexpr int WrapAndBaud = 39;  ///< bit 0 wrap-around, bits 1 on baud rate
inline constexpr int SensorWarmupTime = 40;
inline constexpr int AlarmEnable = 42;
inline constexpr int EnableSOD = 44;
inline constexpr int LoggingStyle = 45;
inline constexpr int Deadband = 46;
inline constexpr int EngUnits = 48;
inline constexpr int EngUnitsSize = 9;
inline constexpr int Alarm = 138;  ///< second, minute, hour, constant
inline constexpr int AlarmStride = 4;
inline constexpr int AlarmConstant = 0x80;
inline constexpr int DecPlaces = 146;
inline constexpr int RawScaleLower = 156;
inline constexpr int RawScaleUpper = 172;
inline constexpr int RawStride = 2;
inline constexpr int PulseUnit = 188;
inline constexpr int LowerLimit = 194;
inline constexpr int UpperLimit = 218;
inline constexpr int DisplayBottom = 242;
inline constexpr int DisplayTop = 266;
inline constexpr int FloatStride = 3;
inline constexpr int FlowMode = 290;
inline constexpr int FlowNeverWritten = 0xFF;
inline constexpr int ManningsN = 291;
inline constexpr int ManningsS = 294;
inline constexpr int ManningsSType = 297;
inline constexpr int ManningsD = 298;
inline constexpr int ManningsDType = 301;
inline constexpr int FlumeTag = 302;
inline constexpr int WeirTag = 310;
inline constexpr int TagSize = 8;
inline constexpr int LevelOffset = 318;
inline constexpr int LevelOffsetType = 321;
inline constexpr int FlowUnits = 322;
inline constexpr int FlowTop = 323;
inline constexpr int VelUnits = 326;
inline constexpr int VelTop = 327;
inline constexpr int TablePath = 330;
inline constexpr int TablePathSize = 128;

static_assert(EngUnits + 10 * EngUnitsSize == Alarm);
static_assert(Alarm + 2 * AlarmStride == DecPlaces);
static_assert(DecPlaces + 10 == RawScaleLower);
static_assert(RawScaleLower + 8 * RawStride == RawScaleUpper);
static_assert(RawScaleUpper + 8 * RawStride == PulseUnit);
static_assert(PulseUnit + 2 * FloatStride == LowerLimit);
static_assert(LowerLimit + 8 * FloatStride == UpperLimit);
static_assert(UpperLimit + 8 * FloatStride == DisplayBottom);
static_assert(DisplayBottom + 8 * FloatStride == DisplayTop);
static_assert(DisplayTop + 8 * FloatStride == FlowMode);
static_assert(FlowMode + 1 == ManningsN);
static_assert(ManningsN + FloatStride == ManningsS);
static_assert(ManningsS + FloatStride == ManningsSType);
static_assert(ManningsSType + 1 == ManningsD);
static_assert(ManningsD + FloatStride == ManningsDType);
static_assert(ManningsDType + 1 == FlumeTag);
static_assert(FlumeTag + TagSize == WeirTag);
static_assert(WeirTag + TagSize == LevelOffset);
static_assert(LevelOffset + FloatStride == LevelOffsetType);
static_assert(LevelOffsetType + 1 == FlowUnits);
static_assert(FlowUnits + 1 == FlowTop);
static_assert(FlowTop + FloatStride == VelUnits);
static_assert(VelUnits + 1 == VelTop);
static_assert(VelTop + FloatStride == TablePath);

}  // namespace config::image

#endif  // ORVIA_LOGGER_IMAGE_MAP_H
