#ifndef ORVIA_LINK_SUPERVISION_H
#define ORVIA_LINK_SUPERVISION_H

#include "records/address_book.h"
#include "records/client_windows.h"
#include "records/link.h"
#include "records/main_view.h"
#include "records/operation_status.h"
#include "records/operations_state.h"
#include "records/sampling_state.h"

namespace comm {

/// What the supervising tick looks at and keeps in step.
struct SupervisionContext {
    Link& link;
    Sampling& sampling;
    const Operations& operations;
    AddressBook& book;
    const ClientWindows& windows;
    MainView& view;
    OperationStatus& status;
};

/// One tick of the main timer: counts waits and the idle limit, notices a device that vanished,
/// which ends a sampling mode, and keeps buttons, texts and icons in step with the state. Never
/// waits, never shows a box.
void SuperviseTick(const SupervisionContext& context);

/// Writes text and colour of the link's state to the main window.
void UpdateServerState(Link& link, MainView& view);

}  // namespace comm

#endif  // ORVIA_LINK_SUPERVISION_H
