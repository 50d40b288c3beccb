#ifndef ORVIA_PLATFORM_LINE_SETTINGS_H
#define ORVIA_PLATFORM_LINE_SETTINGS_H

#include <cstdint>
#include <string>

enum class LineParity { None, Even, Odd, Mark, Space };
enum class LineStopBits { One, OneAndHalf, Two };

/// How bytes go over a serial line.
struct LineSettings {
    std::int32_t BaudRate = 9600;  ///< above 0; what the device cannot do fails when it opens
    LineParity Parity = LineParity::None;
    int DataBits = 8;  ///< 5 to 8
    LineStopBits StopBits = LineStopBits::One;
};

/// Reads "38400,N,8,1": baud rate, parity (N, E, O, M or S), data bits (5 to 8), stop bits (1, 1.5
/// or 2). Anything else is a Fault.
[[nodiscard]] LineSettings ReadLineSettings(const std::string& text);

#endif  // ORVIA_PLATFORM_LINE_SETTINGS_H
