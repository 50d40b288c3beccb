#ifndef ORVIA_COMMON_NUMBER_TEXT_H
#define ORVIA_COMMON_NUMBER_TEXT_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Every number that the program reads or writes as text passes here. No locale takes part: the
// decimal mark is a full stop on every system.

/// A whole number, with a "-" before a negative one.
[[nodiscard]] std::string IntegerToText(std::int64_t value);

/// General form at up to 15 significant digits, exponent form ("1E+15", "1E-05", at least two
/// exponent digits) from 1E+15 up and below 1E-04. Infinities and NaN give "0".
[[nodiscard]] std::string DoubleToText(double value);

/// `value` with exactly `places` decimals (held to 0 to 6) and at least one digit before the
/// point; nearest on the exact binary value, ties to even; never a "-0". Infinities and NaN
/// give zero.
[[nodiscard]] std::string FormatFixed(double value, int places);

/// FormatFixed into a buffer: writes at `out`, which has room for FixedTextRoom characters, and
/// returns one past the last.
inline constexpr int FixedTextRoom = 330;
[[nodiscard]] char* FormatFixedTo(char* out, double value, int places);

/// `value` with `digits` (1 to 15) significant digits, closing zeros kept, or with all its whole
/// digits where those are more; nearest on the exact binary value, ties to even. Below 1E-04 in
/// exponent form, "1.23457E-05". Zero, infinities and NaN give "0".
[[nodiscard]] std::string FormatSignificant(double value, int digits);

/// Reads as far as a decimal number goes: blanks, sign, digits, point, digits, exponent; stops at
/// the first other character, a comma included. 0 if there is none; a number that overflows is a
/// Fault, underflow is 0.
[[nodiscard]] double LeadingNumber(std::string_view text);

/// What a whole text is, as a number.
enum class NumberForm {
    None,      ///< not a number: hexadecimal, "inf" and "nan" included
    TooLarge,  ///< well formed, but beyond a double
    Number     ///< ".5" and "5." too; underflow is 0
};

/// Reads the whole text (blanks around it allowed) as a decimal number into `value`, which is 0
/// unless the result is Number.
[[nodiscard]] NumberForm ReadNumber(std::string_view text, double& value);

/// The number that the whole text is, nothing if it is none or too large.
[[nodiscard]] std::optional<double> WholeNumber(std::string_view text);

/// Turns each "," of the text into ".", in place, then takes its leading number. Never fails:
/// what overflows is 0.
[[nodiscard]] double TextToDouble(std::string& text);

/// True and the nearest 32-bit integer (ties to even) if the whole text reads as a number in
/// that range; False and 0 otherwise.
[[nodiscard]] bool TextToLong(std::string_view text, std::int32_t& value);

/// Nearest integer on the exact value, ties to even, whatever the rounding mode of the machine.
[[nodiscard]] double RoundTiesToEven(double value);

#endif  // ORVIA_COMMON_NUMBER_TEXT_H
