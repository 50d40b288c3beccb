#include "app/contexts.h"

#include "app/lifecycle.h"

comm::LinkContext Contexts::Radio() const {
    return {.link = state_.LinkRecord,
            .settings = state_.SettingsRecord,
            .view = view_,
            .boxes = state_.Boxes,
            .status = state_.Status,
            .inquiry = state_.Outside.Inquiry,
            .registry = state_.Outside.LocalMachine};
}

comm::SupervisionContext Contexts::Supervision() const {
    return {.link = state_.LinkRecord,
            .sampling = state_.SamplingRecord,
            .operations = state_.OperationsRecord,
            .book = state_.Book,
            .windows = state_.Windows,
            .view = view_,
            .status = state_.Status};
}

comm::SamplingContext Contexts::Machines() const {
    return {.radio = Radio(),
            .sampling = state_.SamplingRecord,
            .operations = state_.OperationsRecord,
            .book = state_.Book,
            .windows = state_.Windows,
            .global = state_.Logger,
            .newest = state_.Newest,
            .exchange = state_.Exchange,
            .clock = state_.Outside.Clock};
}

comm::ToggleContext Contexts::Toggling() const {
    return {
        .radio = Radio(), .sampling = state_.SamplingRecord, .operations = state_.OperationsRecord};
}

BookContext Contexts::Book() const {
    return {.settings = state_.SettingsRecord,
            .book = state_.Book,
            .windows = state_.Windows,
            .operations = state_.OperationsRecord,
            .sampling = state_.SamplingRecord,
            .view = view_,
            .boxes = state_.Boxes,
            .dialogs = state_.Outside.Dialogs,
            .startFolder = state_.Outside.StartFolder(),
            .status = state_.Status};
}

EntryContext Contexts::Entries(ClientListView& list, EntryDialogs& dialogs) const {
    return {.settings = state_.SettingsRecord,
            .book = state_.Book,
            .windows = state_.Windows,
            .sampling = state_.SamplingRecord,
            .view = view_,
            .list = list,
            .dialogs = dialogs,
            .boxes = state_.Boxes,
            .status = state_.Status};
}

DropContext Contexts::Drops(ClientListView& list) const {
    return {.settings = state_.SettingsRecord,
            .book = state_.Book,
            .windows = state_.Windows,
            .operations = state_.OperationsRecord,
            .sampling = state_.SamplingRecord,
            .view = view_,
            .list = list,
            .status = state_.Status};
}

OperationContext Contexts::Operation(OperationLog& log) const {
    return {.radio = Radio(),
            .sampling = state_.SamplingRecord,
            .operations = state_.OperationsRecord,
            .book = state_.Book,
            .windows = state_.Windows,
            .global = state_.Logger,
            .newest = state_.Newest,
            .exchange = state_.Exchange,
            .clock = state_.Outside.Clock,
            .log = log};
}

ClientContext Contexts::Clients(ClientPopup& popup) const {
    return {.Windows = state_.Windows,
            .Book = state_.Book,
            .Global = state_.Logger,
            .Newest = state_.Newest,
            .Devices = state_.CataloguesRecord,
            .Cycles = state_.SamplingRecord,
            .Exchange = state_.Exchange,
            .Outside = state_.OutsideOfWindows,
            .View = view_,
            .Popup = popup,
            .Samples = &state_.Live};
}

HistoryContext Contexts::History() const {
    return {.link = state_.LinkRecord,
            .exchange = state_.Exchange,
            .global = state_.Logger,
            .store = state_.History,
            .settings = state_.SettingsRecord,
            .lastFolder = state_.LastHistoryFolder,
            .outside = state_.Outside,
            .view = view_,
            .status = state_.Status,
            .listener = state_.Filer ? &*state_.Filer : nullptr};
}

SetupRecords Contexts::Setup() const {
    return {.global = state_.Logger,
            .settings = state_.SettingsRecord,
            .catalogues = state_.CataloguesRecord,
            .link = state_.LinkRecord,
            .sampling = state_.SamplingRecord,
            .operations = state_.OperationsRecord,
            .exchange = state_.Exchange,
            .status = state_.Status,
            .outside = state_.Outside,
            .version = VersionText(),
            .showBaudRate = state_.ShowBaudRate};
}

ArchiveContext Contexts::Collected() const {
    return {.outside = state_.Outside, .lastFolder = state_.LastHistoryFolder};
}

ArchiveWork Contexts::Archive() const {
    return {.windows = Collected(),
            .settings = state_.SettingsRecord,
            .filer = state_.Filer ? &*state_.Filer : nullptr,
            .sharing = &state_.Sharing};
}

CollectContext Contexts::Collection(OperationLog& log) const {
    return {.operation = Operation(log),
            .book = state_.Book,
            .windows = state_.Windows,
            .history = state_.History,
            .filer = *state_.Filer,
            .archive = *state_.Outside.Archive,
            .windowBoxes = state_.WindowBoxes,
            .late = state_.Late};
}
