#include "support/virtual_console.h"

#include <algorithm>
#include <stdexcept>

#include "console/client_list.h"

namespace testing_support {

namespace {

Host WithArchive(Host host, ArchiveStore* archive) {
    host.Archive = archive;
    return host;
}

}  // namespace

VirtualConsole::VirtualConsole(const std::string& appPath, ArchiveStore* archive)
    : State(WithArchive(Outside.AsHost(appPath), archive)) {
    State.SettingsRecord.PortName = "COM1";
    State.SettingsRecord.BaudRate = "38400";
    View.MakeWindow = [this] { return std::make_shared<FakeClientWindow>(State); };
    Outside.Time.StartTimer(100 * Millisecond, [this] {
        comm::SuperviseTick(Make.Supervision());
        if (State.Filer) {
            State.Filer->Tick();
        }
        State.Collecting.Tick();
        State.Late.Tick();
        if (!State.Collecting.Text().empty()) {
            Log.SetFoot(State.Collecting.Text());
        }
    });
    Outside.Time.StartTimer(100 * Millisecond, [this] { comm::SampleTick(Make.Machines()); });
}

void VirtualConsole::Connect() {
    comm::ConnectDialog dialog;
    comm::Connect(Radio(), dialog, [this](Pointer pointer) { View.SetPointer(pointer); });
    if (State.LinkRecord.Connected == False) {
        throw std::logic_error("the server radio did not answer");
    }
}

int VirtualConsole::AddSite(const simulator::LoggerSetup& setup) {
    Outside.Network.AddLogger(setup);
    ClientRadio entry;
    entry.Name = setup.Settings.Name;
    entry.Channel = setup.Channel;
    std::copy(setup.Mac.begin(), setup.Mac.end(), entry.Mac.begin());
    const int number = State.Book.Entries.Append(entry);
    RefreshClientList(State.Book, View);
    return number;
}

std::shared_ptr<FakeClientWindow> VirtualConsole::OpenWindow(int entry) {
    View.Selected = entry;
    OpenOrActivateClient(State.Book, State.Windows, View);
    for (const auto& window : State.Windows.Slots) {
        if (window) {
            std::static_pointer_cast<FakeClientWindow>(window)->Active = False;
        }
    }
    auto window = std::static_pointer_cast<FakeClientWindow>(
        State.Windows.At(State.Book.Entries[entry].WindowIndex));
    window->Active = True;
    return window;
}

simulator::LoggerSetup BasicSite(int number, int analog, int pulse) {
    simulator::LoggerSetup setup;
    setup.Mac[5] = static_cast<std::uint8_t>(number);
    setup.Settings.Name = "Site " + std::to_string(number);
    setup.Settings.Analog.resize(static_cast<std::size_t>(analog));
    setup.Settings.Pulse.resize(static_cast<std::size_t>(pulse));
    for (int i = 0; i < analog; ++i) {
        setup.AnalogSignals.push_back(simulator::ConstantSignal(10.0 * (i + 1)));
    }
    return setup;
}

}  // namespace testing_support
