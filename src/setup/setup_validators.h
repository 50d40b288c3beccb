#ifndef ORVIA_SETUP_SETUP_VALIDATORS_H
#define ORVIA_SETUP_SETUP_VALIDATORS_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/host.h"

/// Numbers of this magnitude and above are no numbers of the logger, whose floats end at 999999.
inline constexpr double FloatLimit = 1000000;
/// Largest raw count, and largest number of all that the logger keeps in 16 bits.
inline constexpr int LargestU16 = 65535;

/// What a validator says of the text of a field that is about to be left.
struct FieldCheck {
    bool Accepted = false;            ///< the focus may go on
    std::optional<std::string> Text;  ///< what the field shows from now on
    std::optional<BoxContent> Box;    ///< to be shown, once
};

/// A number as a three-byte float will hold it, as text.
[[nodiscard]] std::string Float24Text(double value);

/// A decimal number, held to +-999999 and shown as the logger will hold it.
[[nodiscard]] FieldCheck CheckFloat(std::string_view text);

/// The name of a logger: trimmed and cut, never refused.
[[nodiscard]] FieldCheck CheckName(std::string_view text);

/// The name of a unit: trimmed and cut, never refused.
[[nodiscard]] FieldCheck CheckUnit(std::string_view text);

/// A number from 0 to `last`: what a list of numbers takes.
[[nodiscard]] FieldCheck CheckListNumber(std::string_view text, int last);

/// The same as a value; nothing if the text is no such number.
[[nodiscard]] std::optional<int> ListNumber(std::string_view text, int last);

/// A raw count, 0 to 65535.
[[nodiscard]] FieldCheck CheckRaw(std::string_view text);

/// The number of a sample interval, 1 to 65535; refused with a message.
[[nodiscard]] FieldCheck CheckSampleInterval(std::string_view text);

/// A change worth logging, 0 to 65535 raw counts; refused with a message.
[[nodiscard]] FieldCheck CheckException(std::string_view text);

/// A 12-hour time, "h", "h:mm" or "h:mm:ss"; refused with a message.
[[nodiscard]] FieldCheck CheckAlarm(std::string_view text);

/// A roughness number, alone or before a blank. Zero and less are refused with a message, and
/// shown all the same.
[[nodiscard]] FieldCheck CheckRoughness(std::string_view text);

/// The three numbers of a time as text, nothing held to any range: leading numbers, rounded, 0
/// where the text has none. Nothing if one is beyond 16 bits.
struct TimeParts {
    std::int16_t Hour = 0;
    std::int16_t Minute = 0;
    std::int16_t Second = 0;
};
[[nodiscard]] std::optional<TimeParts> ReadTime(std::string_view text);

/// `value`, rounded to a 32-bit integer; a Fault where it does not fit.
[[nodiscard]] std::int32_t RoundToLong(double value);

#endif  // ORVIA_SETUP_SETUP_VALIDATORS_H
