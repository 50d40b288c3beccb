#ifndef ORVIA_CONSOLE_HEX_FIELD_H
#define ORVIA_CONSOLE_HEX_FIELD_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/host.h"

// The rules of the hexadecimal entry fields: which keys they take, what their texts may be, and
// when the focus moves on by itself.

/// Fields of a radio's address in their order: the channel, then the six of the MAC.
inline constexpr int ChannelField = 0;
inline constexpr int FirstMacField = 1;
inline constexpr int HexFields = 7;

/// Highest channel that the fields accept.
inline constexpr int HighestChannel = 0x37;

/// What a field does with a typed character.
enum class HexKey {
    Pass,     ///< takes it as it is
    Replace,  ///< takes the upper-case digit in its place
    Swallow,  ///< drops it without a word
    Refuse    ///< drops it, and the operator is told
};

/// What a field does with this character, in any of its places.
[[nodiscard]] HexKey TakesHexKey(char32_t character);

/// The message of a key refused.
[[nodiscard]] BoxContent HexKeyRefusal();

/// The text that a field shows in place of `text`, two digits; nothing if it is not valid there,
/// of which the operator is told.
[[nodiscard]] std::optional<std::string> ValidateHexField(int field, std::string_view text,
                                                          MessageBoxes& boxes);

/// Which of the fields has the focus, and which is armed to hand it on. A window that loses
/// activation takes the focus from no field.
class HexFocus {
 public:
    /// The focus came to `field`: arms it. True if it was not there before, when its whole text
    /// is to be selected.
    bool Gained(int field);

    /// The focus went to another control of the window: nothing is armed.
    void Lost();

    /// Whether the field's new text of so many characters is to be validated at once, so that the
    /// focus moves on: the field is armed, and the text complete.
    [[nodiscard]] bool IsComplete(int field, std::size_t characters) const;

    /// The field's text was good: it is armed no more.
    void Disarm() { armed_ = 0; }

    /// 0 nothing armed, 1 the channel, i + 2 field i of the MAC.
    [[nodiscard]] int Armed() const { return armed_; }

 private:
    std::optional<int> focused_;
    int armed_ = 0;
};

#endif  // ORVIA_CONSOLE_HEX_FIELD_H
