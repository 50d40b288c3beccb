#include "console/frmEntryDialogs.h"

#include "console/frmAddClient1.h"
#include "console/frmAddClient2.h"
#include "console/frmEditClient.h"
#include "console/frmSelectClient.h"

std::optional<std::string> EntryForms::AskName() {
    frmAddClient1 form(book_, boxes_, &main_);
    form.exec();
    return form.Tag == "NEXT" ? std::optional(form.Name()) : std::nullopt;
}

std::optional<AddressTexts> EntryForms::AskAddress(const AddressTexts& offered) {
    frmAddClient2 form(offered, boxes_, &main_);
    form.exec();
    return form.Tag == "FINISH" ? std::optional(form.Texts()) : std::nullopt;
}

std::optional<EntryTexts> EntryForms::EditEntry(const EntryTexts& shown) {
    frmEditClient form(shown, boxes_, &main_);
    form.exec();
    return form.Tag == "FINISH" ? std::optional(form.Texts()) : std::nullopt;
}

std::optional<int> EntryForms::PickClient(const std::vector<std::string>& names) {
    frmSelectClient form(names, &main_);
    form.exec();
    return form.Tag == "Okay" ? std::optional(form.Chosen()) : std::nullopt;
}
