#include "app/lifecycle.h"

#include <fstream>

#include "app/stored_settings.h"
#include "app/version.h"
#include "common/fault.h"
#include "common/file_path.h"
#include "common/number_text.h"
#include "common/path_text.h"
#include "console/book_operations.h"
#include "link/connecting.h"
#include "link/supervision.h"

namespace {

constexpr std::int16_t SplashTicks = 10;

}  // namespace

std::string ApplicationTitle() {
    return "Orvia - v" + VersionText();
}

std::string VersionText() {
    return IntegerToText(VersionMajor) + "." + IntegerToText(VersionMinor) + "." +
           IntegerToText(VersionRevision);
}

void BeginStart(SharedState& state, MainView& view) {
    state.Book.Entries.Reset();
    state.SettingsRecord = ReadSettings(state.Outside.Store);
    if (!FileExists(state.SettingsRecord.AddressBookPath)) {
        state.SettingsRecord.AddressBookPath.clear();
    }
    state.LinkRecord.LinkState = LinkDisconnected;
    comm::UpdateServerState(state.LinkRecord, view);
    view.SetSystemID("");
    view.SetComPort("");
    view.ShowLinkFields(false);
    state.Sharing.Begin();
}

void AwaitSplash(Link& link) {
    link.WaitTicks = SplashTicks;
    while (link.WaitTicks > 0) {
        link.Events.WaitForMoreEvents();
    }
}

void ReadCatalogues(SharedState& state) {
    const auto read = [&outside = state.Outside](std::string_view name, FlowDeviceList& list) {
        config::ReadFlowDeviceList(JoinPath(outside.AppPath, name), outside.AppPath, list);
        if (!outside.UserFolder.empty()) {
            config::AddFlowDeviceList(JoinPath(outside.UserFolder, name), outside.UserFolder, list);
        }
    };
    read("flumes.lst", state.CataloguesRecord.FlumeList);
    read("weirs.lst", state.CataloguesRecord.WeirList);
}

void EndStart(SharedState& state, MainView& view) {
    const std::string& path = state.SettingsRecord.AddressBookPath;
    const bool loaded = LoadAddressBook(path, state.Book, view);
    if (!path.empty()) {
        TellBookLoaded(state.Status, path, state.Book, loaded);
    }
    state.LinkRecord.CurrentChannel = UnknownChannel;
    state.LinkRecord.CurrentMAC.fill(0xFF);
    TakeEntryDefaults(state.Book);
}

void WriteVersionFile(Flag errorTrapping, std::string_view appPath, WindowSize size) {
    if (errorTrapping != False) {
        return;
    }
    std::ofstream file(FilePath(JoinPath(appPath, "orvia.ini")), std::ios::binary);
    file << "VERSION = " << VersionText() << "\r\n"
         << "WIDTH = " << IntegerToText(size.Width) << "\r\n"
         << "HEIGHT = " << IntegerToText(size.Height) << "\r\n";
}

bool QueryUnload(SharedState& state, MainView& view, WindowSize size,
                 const std::function<void()>& unloadForms) {
    Link& link = state.LinkRecord;
    if (link.CommBusy != False) {
        return false;
    }
    // A close that has begun comes to its end, whatever faults on the way.
    TrapFault([&state] { SaveSettings(state.SettingsRecord, state.Outside.Store); });
    TrapFault([&] { WriteVersionFile(state.ErrorTrapping, state.Outside.AppPath, size); });
    TrapFault([&] { comm::Disconnect(link, view); });
    TrapFault(unloadForms);
    link.ShuttingDown = True;
    link.CommBusy = False;
    return true;
}
