#ifndef ORVIA_APP_CONTEXTS_H
#define ORVIA_APP_CONTEXTS_H

#include "app/shared_state.h"
#include "archive/archive_session.h"
#include "client/client_context.h"
#include "collect/collect_context.h"
#include "console/book_operations.h"
#include "console/entry_editing.h"
#include "console/list_drop.h"
#include "console/logger_operations.h"
#include "history/history_context.h"
#include "link/connecting.h"
#include "link/sampling.h"
#include "link/server_radio.h"
#include "link/supervision.h"
#include "records/main_view.h"
#include "setup/setup_context.h"

/// Picks, of all that the console's procedures share, what each kind of procedure works on. What it
/// gives holds references into `state` and `view`, which outlive it.
class Contexts {
 public:
    Contexts(SharedState& state, MainView& view) : state_(state), view_(view) {}

    [[nodiscard]] comm::LinkContext Radio() const;
    [[nodiscard]] comm::SupervisionContext Supervision() const;
    [[nodiscard]] comm::SamplingContext Machines() const;
    [[nodiscard]] comm::ToggleContext Toggling() const;
    [[nodiscard]] BookContext Book() const;
    [[nodiscard]] EntryContext Entries(ClientListView& list, EntryDialogs& dialogs) const;
    [[nodiscard]] DropContext Drops(ClientListView& list) const;
    [[nodiscard]] OperationContext Operation(OperationLog& log) const;
    [[nodiscard]] ClientContext Clients(ClientPopup& popup) const;
    [[nodiscard]] HistoryContext History() const;
    [[nodiscard]] SetupRecords Setup() const;
    [[nodiscard]] ArchiveContext Collected() const;
    [[nodiscard]] ArchiveWork Archive() const;
    /// There is an archive.
    [[nodiscard]] CollectContext Collection(OperationLog& log) const;

 private:
    SharedState& state_;
    MainView& view_;
};

#endif  // ORVIA_APP_CONTEXTS_H
