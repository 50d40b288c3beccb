#ifndef ORVIA_CONSOLE_ENTRY_DIALOGS_H
#define ORVIA_CONSOLE_ENTRY_DIALOGS_H

#include <optional>
#include <string>
#include <vector>

#include "console/entry_texts.h"

/// The dialogs on entries of the book. Each is modal and gives nothing when it was cancelled.
class EntryDialogs {
 public:
    virtual ~EntryDialogs() = default;

    /// First page of the add wizard: the new entry's name.
    [[nodiscard]] virtual std::optional<std::string> AskName() = 0;
    /// Its second page: channel and MAC.
    [[nodiscard]] virtual std::optional<AddressTexts> AskAddress(const AddressTexts& offered) = 0;
    /// All fields of an entry, `shown` first.
    [[nodiscard]] virtual std::optional<EntryTexts> EditEntry(const EntryTexts& shown) = 0;
    /// Number of the name picked, counted from 1.
    [[nodiscard]] virtual std::optional<int> PickClient(const std::vector<std::string>& names) = 0;
};

#endif  // ORVIA_CONSOLE_ENTRY_DIALOGS_H
