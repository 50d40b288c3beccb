#ifndef ORVIA_SIMULATOR_TEXT_H
#define ORVIA_SIMULATOR_TEXT_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/bytes.h"

namespace simulator {

/// The text without blanks and tabs at its ends.
[[nodiscard]] std::string_view Trimmed(std::string_view text);

/// The pieces between blanks and tabs, none of them empty.
[[nodiscard]] std::vector<std::string_view> Words(std::string_view text);

/// The parts before and behind the first `mark`, both trimmed; nothing if it is not there.
struct TextPair {
    std::string_view First;
    std::string_view Second;
};
[[nodiscard]] std::optional<TextPair> SplitAt(std::string_view text, char mark);

/// A finite decimal number that is the whole text, in any locale; nothing otherwise.
[[nodiscard]] std::optional<double> NumberOf(std::string_view text);

/// A whole number that is the whole text and lies from `low` to `high`.
[[nodiscard]] std::optional<std::int64_t> IntegerOf(std::string_view text, std::int64_t low,
                                                    std::int64_t high);

/// Pairs of hexadecimal digits, nothing between them.
[[nodiscard]] std::optional<Bytes> HexBytesOf(std::string_view text);

/// The value with exactly `decimals` decimals, 0 to 9.
[[nodiscard]] std::string FixedText(double value, int decimals);

}  // namespace simulator

#endif  // ORVIA_SIMULATOR_TEXT_H
