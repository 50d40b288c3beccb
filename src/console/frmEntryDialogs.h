#ifndef ORVIA_CONSOLE_FRM_ENTRY_DIALOGS_H
#define ORVIA_CONSOLE_FRM_ENTRY_DIALOGS_H

#include "console/entry_dialogs.h"
#include "platform/host.h"
#include "records/address_book.h"

class QWidget;

/// Shows the dialogs on entries of the book over the main window.
class EntryForms final : public EntryDialogs {
 public:
    EntryForms(const AddressBook& book, MessageBoxes& boxes, QWidget& main)
        : book_(book), boxes_(boxes), main_(main) {}

    [[nodiscard]] std::optional<std::string> AskName() override;
    [[nodiscard]] std::optional<AddressTexts> AskAddress(const AddressTexts& offered) override;
    [[nodiscard]] std::optional<EntryTexts> EditEntry(const EntryTexts& shown) override;
    [[nodiscard]] std::optional<int> PickClient(const std::vector<std::string>& names) override;

 private:
    const AddressBook& book_;
    MessageBoxes& boxes_;
    QWidget& main_;
};

#endif  // ORVIA_CONSOLE_FRM_ENTRY_DIALOGS_H
