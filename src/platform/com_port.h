#ifndef ORVIA_PLATFORM_COM_PORT_H
#define ORVIA_PLATFORM_COM_PORT_H

#include <cstdint>
#include <string>

#include "platform/line_settings.h"

// What there is to know of a serial port where the system itself calls it COM1: names, the numbers
// by which its calls are told of a line, and what they answer.

/// The numbers that a port can have.
inline constexpr int FirstPort = 1;
inline constexpr int LastPort = 16;

/// "COM5". A number out of range is a Fault.
[[nodiscard]] std::string ComPortName(int number);
/// "\\.\COM5", the name by which every number opens; the short one does so up to 9 alone.
[[nodiscard]] std::string ComPortPath(int number);

/// A line in the system's numbers.
struct ComLineCodes {
    std::uint32_t BaudRate = 0;
    std::uint8_t DataBits = 0;
    std::uint8_t Parity = 0;    ///< none, odd, even, mark, space, from 0
    std::uint8_t StopBits = 0;  ///< 1, 1.5, 2, from 0

    friend bool operator==(const ComLineCodes&, const ComLineCodes&) = default;
};

[[nodiscard]] ComLineCodes ComLineCodesOf(const LineSettings& settings);

/// Why a port does not open.
enum class ComRefusal { Missing, InUse, Other };

/// By the system's number of the error.
[[nodiscard]] ComRefusal ComRefusalOf(std::uint32_t error);

#endif  // ORVIA_PLATFORM_COM_PORT_H
