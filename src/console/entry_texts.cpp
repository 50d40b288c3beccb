#include "console/entry_texts.h"

#include <algorithm>

#include "common/text.h"
#include "console/hex_text.h"

namespace {

void TellMissingName(MessageBoxes& boxes) {
    boxes.Show({.Text = "You need to enter a name for this client radio.",
                .Title = "Missing Client Name",
                .Icon = BoxIcon::Information});
}

void TellNameTaken(MessageBoxes& boxes) {
    boxes.Show({.Text = "A Client Radio already is configured with the same name.\nYou need to "
                        "enter a unique name.",
                .Title = "Name not Unique",
                .Icon = BoxIcon::Information});
}

}  // namespace

AddressTexts TextsOf(std::uint8_t channel, const MacAddress& mac) {
    AddressTexts texts;
    texts.Channel = ByteToHex(channel);
    std::transform(mac.begin(), mac.end(), texts.Mac.begin(), ByteToHex);
    return texts;
}

void ReadAddress(const AddressTexts& texts, ClientRadio& entry) {
    entry.Channel = HexByte(texts.Channel);
    std::transform(texts.Mac.begin(), texts.Mac.end(), entry.Mac.begin(), HexByte);
}

std::string KeptName(std::string_view text) {
    std::string name(text);
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    return std::string(Trim(name));
}

std::string ShownName(std::string_view name) {
    constexpr std::size_t most = 1000;
    std::size_t length = std::min(name.size(), most);
    // The bytes behind the first of a character are 10xxxxxx; a character has three of them at
    // most.
    const auto continues = [&] {
        return (static_cast<unsigned char>(name[length]) & 0xC0) == 0x80;
    };
    for (int i = 0; i < 3 && length < name.size() && continues(); ++i) {
        --length;
    }
    return std::string(name.substr(0, length));
}

AddressTexts OfferedAddress(const AddressBook& book) {
    const auto& prefix = book.LastMacPrefix;
    return TextsOf(book.LastChannel, {prefix[0], prefix[1], prefix[2], 0, 0, 0});
}

bool ValidateNewName(const AddressBook& book, std::string_view text, const LowerCase& lower,
                     MessageBoxes& boxes) {
    const std::string name = lower(KeptName(text));
    if (name.empty()) {
        TellMissingName(boxes);
    }
    const auto matches =
        std::count_if(book.Entries.begin(), book.Entries.end(),
                      [&](const ClientRadio& entry) { return lower(entry.Name) == name; });
    for (auto left = matches; left > 0; --left) {
        TellNameTaken(boxes);
    }
    return !name.empty() && matches == 0;
}

std::optional<int> EntryWithAddress(const AddressBook& book, const ClientRadio& wanted) {
    for (int number = 1; number <= book.Entries.UpperBound(); ++number) {
        const ClientRadio& entry = book.Entries[number];
        if (entry.Channel == wanted.Channel && entry.Mac == wanted.Mac) {
            return number;
        }
    }
    return std::nullopt;
}
