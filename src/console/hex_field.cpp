#include "console/hex_field.h"

#include "console/hex_text.h"

namespace {

constexpr std::size_t CompleteLength = 2;

/// The armed field's number in the form.
int ArmedNumber(int field) {
    return field + 1;
}

BoxContent BadField(int field) {
    if (field == ChannelField) {
        return {.Text = "Channel number is not a valid hex number between 00 and 37",
                .Title = "Bad Channel Number",
                .Icon = BoxIcon::Exclamation};
    }
    return {.Text = "MAC number is not a valid hex number between 00 and FF",
            .Title = "Bad MAC Number",
            .Icon = BoxIcon::Exclamation};
}

bool IsIn(char32_t character, char32_t first, char32_t last) {
    return character >= first && character <= last;
}

}  // namespace

HexKey TakesHexKey(char32_t character) {
    if (character < U' ' || IsIn(character, U'0', U'9') || IsIn(character, U'A', U'F')) {
        return HexKey::Pass;
    }
    if (IsIn(character, U'a', U'f')) {
        return HexKey::Replace;
    }
    return character == U' ' ? HexKey::Swallow : HexKey::Refuse;
}

BoxContent HexKeyRefusal() {
    return {.Text = "Error: hex numbers can only have digits 0 to 9, or letters A to F",
            .Title = ""};
}

std::optional<std::string> ValidateHexField(int field, std::string_view text, MessageBoxes& boxes) {
    int value = 0;
    const bool isNumber = ParseHex(text, CompleteLength, value);
    if (isNumber && (field != ChannelField || value <= HighestChannel)) {
        return ByteToHex(value);
    }
    boxes.Show(BadField(field));
    return std::nullopt;
}

bool HexFocus::Gained(int field) {
    if (focused_ == field) {
        return false;
    }
    focused_ = field;
    armed_ = ArmedNumber(field);
    return true;
}

void HexFocus::Lost() {
    focused_.reset();
    armed_ = 0;
}

bool HexFocus::IsComplete(int field, std::size_t characters) const {
    return armed_ == ArmedNumber(field) && characters >= CompleteLength;
}
