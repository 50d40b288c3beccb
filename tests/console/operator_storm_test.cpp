#include "operator_storm.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "app/lifecycle.h"
#include "console/book_file.h"
#include "console/client_list.h"
#include "console/for_all.h"
#include "console/logger_orders.h"

namespace operator_storm {

using namespace testing_support;

namespace {

constexpr int Sites = 5;
constexpr int Books = 3;
constexpr int StormSeconds = 60;

std::string BookPath(const std::string& folder, int number) {
    return folder + "/book" + std::to_string(number) + ".obk";
}

bool SameEntry(const ClientRadio& a, const ClientRadio& b) {
    return a.Name == b.Name && a.Channel == b.Channel && a.Mac == b.Mac;
}

}  // namespace

Storm::Storm(std::uint32_t seed) : random_(seed), folder_(FreshFolder("storm")) {
    for (int number = 1; number <= Sites; ++number) {
        console_.AddSite(BasicSite(number, 2, 1));
    }
    for (int book = 0; book < Books; ++book) {
        SaveAddressBook(BookPath(folder_, book), console_.State.Book);
    }
    console_.State.SettingsRecord.AddressBookPath = BookPath(folder_, 0);
    console_.State.SettingsRecord.AutoDisconnect = Chance(50) ? "1" : "0";
    console_.View.WhenClosingAll = [this] { CloseAllWindows(); };
    console_.Outside.Boxes.WhileShown = [this] { StandBox(); };
    console_.Outside.Network.KeepsRecord = false;
    console_.Connect();
}

int Storm::Draw(int below) {
    return static_cast<int>(random_() % static_cast<std::uint32_t>(below));
}

void Storm::Run(int actions) {
    Schedule(actions);
    console_.Outside.Time.Run(StormSeconds * Second);
    Settle();
}

Storm::~Storm() {
    std::filesystem::remove_all(folder_);
}

void Storm::Schedule(int actions) {
    for (int i = 0; i < actions; ++i) {
        console_.Outside.Time.In(Draw(StormSeconds * 1000) * Millisecond, [this] { Act(); });
    }
}

void Storm::Act() {
    static constexpr std::array<Action, 18> Actions{
        &Storm::OpenWindow,      &Storm::OpenWindow,  &Storm::ActivateWindow, &Storm::CloseWindow,
        &Storm::AddEntry,        &Storm::DeleteEntry, &Storm::Drag,           &Storm::Drag,
        &Storm::EditEntryOfList, &Storm::PressButton, &Storm::PressButton,    &Storm::PressButton,
        &Storm::StartWalk,       &Storm::StartWalk,   &Storm::PressLog,       &Storm::TurnLink,
        &Storm::ChangeBook,      &Storm::Disturb};
    const Action action = Actions.at(static_cast<std::size_t>(Draw(Actions.size())));
    if (Draw(400) == 0) {
        CloseProgram();
    } else if (modal_ == 0 && console_.State.LinkRecord.ShuttingDown == False) {
        ++done_;
        (this->*action)();
    }
    if (firstFault_.empty()) {
        firstFault_ = FaultOfBook();
    }
}

// ----- the operator

std::shared_ptr<FakeClientWindow> Storm::DrawWindow() {
    const ClientWindows& windows = console_.State.Windows;
    const auto window = windows.At(windows.Slots.empty() ? 0 : Draw(windows.UpperBound() + 1));
    return std::static_pointer_cast<FakeClientWindow>(window);
}

void Storm::OpenWindow() {
    console_.View.Selected = Draw(console_.State.Book.Entries.UpperBound() + 2);
    OpenOrActivateClient(console_.State.Book, console_.State.Windows, console_.View);
    ActivateWindow();
}

void Storm::ActivateWindow() {
    for (const auto& window : console_.State.Windows.Slots) {
        if (window) {
            std::static_pointer_cast<FakeClientWindow>(window)->Active = False;
        }
    }
    if (const auto window = DrawWindow()) {
        window->Active = True;
    }
}

void Storm::CloseWindow() {
    if (const auto window = DrawWindow()) {
        Unload(*window);
    }
}

/// Unloads a window as the real one does, its item in the list included.
void Storm::Unload(ClientWindow& window) {
    const int number = window.ClientIndex();
    window.Unload();
    if (console_.State.Book.Entries.Holds(number)) {
        console_.View.SetClientIcon(number, console_.State.Book.Entries[number].SmallIcon);
    }
}

void Storm::AddEntry() {
    AddClientRadio(Entries());
}

void Storm::EditEntryOfList() {
    console_.View.Selected = Draw(console_.View.ClientCount() + 1);
    if (Chance(80) || ChooseClientFromList(Entries())) {
        EditClientRadio(Entries());
    }
}

void Storm::DeleteEntry() {
    console_.View.Selected = Draw(console_.View.ClientCount() + 1);
    DeleteClientRadio(Entries());
}

void Storm::Drag() {
    const int count = console_.View.ClientCount();
    if (count > 0) {
        const std::string text = list_.ItemText(1 + Draw(count));
        const int y = Draw((count + 2) * FakeClientList::ItemHeight);
        DragOverList(list_, y);
        DropOnList(console_.Make.Drops(list_), text, y);
    }
}

void Storm::PressButton() {
    using Operation = void (*)(const OperationContext&);
    static constexpr std::array<Operation, 6> Buttons{
        GetSample,    SampleContinuously,  SyncTime,
        ClearHistory, ShowFirmwareVersion, ResetPulseAccumulators};
    const auto button = static_cast<std::size_t>(Draw(Buttons.size() + 1));
    if (button < Buttons.size()) {
        Buttons[button](console_.Operation());
    } else {
        ShowSignalLevel(console_.Operation(), *this);
    }
}

void Storm::StartWalk() {
    using Row = void (*)(const ForAllContext&);
    static constexpr std::array<Row, 6> Rows{GetSampleForAll,  ClearHistoryForAll,
                                             SyncTimeForAll,   RestartSamplingForAll,
                                             ToggleAutoUpdate, ToggleAutoUpdate};
    Rows.at(static_cast<std::size_t>(Draw(Rows.size())))(console_.ForAll());
}

void Storm::PressLog() {
    if (Chance(50)) {
        console_.Log.Cancel = true;
    } else {
        console_.Log.Open = false;
    }
}

void Storm::TurnLink() {
    switch (comm::ToggleConnection(console_.Toggling())) {
        case comm::Toggle::Connect:
            ConnectAnew();
            break;
        case comm::Toggle::Postponed:
            console_.Outside.Time.In(100 * Millisecond, [this] {
                if (modal_ == 0) {
                    TurnLink();
                }
            });
            break;
        case comm::Toggle::Nothing:
            break;
    }
}

void Storm::ConnectAnew() {
    const std::string before = console_.State.SettingsRecord.AddressBookPath;
    ++modal_;
    if (Chance(70)) {
        comm::ConnectDialog dialog;
        comm::Connect(console_.Radio(), dialog, [](Pointer) {});
    }
    if (Chance(30)) {
        console_.State.SettingsRecord.AddressBookPath = BookPath(folder_, Draw(Books));
    }
    --modal_;
    TakeBookOfConnectDialog(console_.BookWork(), before);
    console_.State.OperationsRecord.OperationBusy = False;
}

void Storm::ChangeBook() {
    console_.Outside.Dialogs.Picks = {BookPath(folder_, Draw(Books))};
    Chance(85) ? LoadOtherBook(console_.BookWork()) : CreateBlankBook(console_.BookWork());
    console_.Outside.Dialogs.Picks.clear();
}

// ----- the world

void Storm::Disturb() {
    simulator::Network& network = console_.Outside.Network;
    simulator::Logger& logger =
        *network.Loggers().at(static_cast<std::size_t>(Draw(static_cast<int>(Sites))));
    switch (Draw(9)) {
        case 0:
            network.Faults().Probability(0.3, random_());
            break;
        case 1:
            network.RadioFaults().Probability(0.2, random_());
            break;
        case 2:
            network.Faults().Clear();
            network.RadioFaults().Clear();
            network.Radio().Wake();
            break;
        case 3:
            logger.Silence();
            break;
        case 4:
            logger.Wake();
            break;
        case 5:
            console_.Outside.Port.PullOut();
            break;
        case 6:
            network.Radio().Silence();
            break;
        case 7:
            network.Radio().Wake();
            break;
        default:
            console_.Outside.Port.Receive({0xFA, 0xF8, 0x03, 0xCC});
            break;
    }
}

void Storm::CloseProgram() {
    if (console_.State.LinkRecord.ShuttingDown == False) {
        static_cast<void>(QueryUnload(console_.State, console_.View, {}, [this] {
            static_cast<void>(MayCloseMonitor(monitor_));
            CloseAllWindows();
        }));
    }
}

void Storm::CloseAllWindows() {
    const ClientWindows open = console_.State.Windows;
    for (auto window = open.Slots.rbegin(); window != open.Slots.rend(); ++window) {
        if (*window) {
            Unload(**window);
        }
    }
    console_.Log.Open = false;
}

void Storm::StandBox() {
    console_.Outside.Boxes.WhileShown = [this] { StandBox(); };
    PassModalTime();
    static constexpr std::array<BoxAnswer, 6> Answers{BoxAnswer::Yes, BoxAnswer::Ok,
                                                      BoxAnswer::Yes, BoxAnswer::Ok,
                                                      BoxAnswer::No,  BoxAnswer::Cancel};
    console_.Outside.Boxes.Answers.push_back(
        Answers.at(static_cast<std::size_t>(Draw(Answers.size()))));
    console_.Outside.Boxes.Shown.clear();
    console_.Outside.Boxes.Shown.emplace_back();
}

/// A dialog stands: time goes on, and with it timers and waits further up the stack.
void Storm::PassModalTime() {
    ++modal_;
    console_.Outside.Time.Run(Draw(2000) * Millisecond);
    --modal_;
}

AddressTexts Storm::DrawAddress() {
    const auto number = static_cast<std::uint8_t>(1 + Draw(2 * Sites));
    return TextsOf(Chance(80) ? 0x10 : 0x11, {0x00, 0xA0, 0x96, 0x00, 0x00, number});
}

std::optional<std::string> Storm::AskName() {
    PassModalTime();
    return Chance(80) ? std::optional("New " + std::to_string(Draw(50))) : std::nullopt;
}

std::optional<AddressTexts> Storm::AskAddress(const AddressTexts& /*offered*/) {
    PassModalTime();
    return Chance(80) ? std::optional(DrawAddress()) : std::nullopt;
}

std::optional<EntryTexts> Storm::EditEntry(const EntryTexts& shown) {
    PassModalTime();
    const std::string name = Chance(50) ? shown.Name : "Edited " + std::to_string(Draw(50));
    return Chance(80) ? std::optional(EntryTexts{name, DrawAddress()}) : std::nullopt;
}

std::optional<int> Storm::PickClient(const std::vector<std::string>& names) {
    PassModalTime();
    return Chance(80) ? std::optional(1 + Draw(static_cast<int>(names.size()))) : std::nullopt;
}

void Storm::ShowMonitor(const OperationContext& context, std::int16_t clientIndex) {
    monitor_ = {clientIndex, MonitorNotStarted, false};
    ++modal_;
    DisplayClient(context.book, monitor_, *this);
    for (int presses = Draw(3); presses > 0; --presses) {
        console_.Outside.Time.In(Draw(8000) * Millisecond,
                                 [this] { monitor_.NextRequested = true; });
    }
    console_.Outside.Time.In(Draw(10000) * Millisecond, [this] { ExitMonitor(monitor_, *this); });
    RunMonitor(context, monitor_, *this);
    --modal_;
}

EntryContext Storm::Entries() {
    return console_.Make.Entries(list_, *this);
}

// ----- what must hold

void Storm::Settle() {
    simulator::Network& network = console_.Outside.Network;
    network.Faults().Clear();
    network.RadioFaults().Clear();
    console_.Outside.Time.Run(120 * Second);
    if (console_.State.SamplingRecord.ContinuousMode != SamplingIdle) {
        console_.State.SamplingRecord.StopContinuous = True;
    }
    console_.Outside.Time.Run(120 * Second);
}

std::string Storm::FaultOfRest() const {
    const SharedState& state = console_.State;
    std::string fault;
    const auto expect = [&fault](bool holds, const char* what) { fault += holds ? "" : what; };
    expect(state.OperationsRecord.OperationBusy == False, "OperationBusy ");
    expect(state.OperationsRecord.ForAllActive == False, "ForAllActive ");
    expect(state.LinkRecord.CommBusy == False, "CommBusy ");
    expect(state.SamplingRecord.StepRuns == False, "StepRuns ");
    expect(state.SamplingRecord.SingleSample == 0, "SingleSample ");
    expect(state.SamplingRecord.ContinuousMode == SamplingIdle, "ContinuousMode ");
    expect(state.SamplingRecord.StopContinuous == False, "StopContinuous ");
    expect(console_.View.Shape == Pointer::Normal, "pointer ");
    expect(modal_ == 0, "modal ");
    return fault;
}

std::string Storm::FaultOfBook() {
    const auto& entries = console_.State.Book.Entries;
    std::string fault = FaultOfSlots();
    if (console_.View.ClientCount() != entries.UpperBound()) {
        return fault + "list and book differ in length";
    }
    for (int number = 1; number <= entries.UpperBound(); ++number) {
        fault += FaultOfEntry(number);
    }
    // While the operator is asked about a new book, its path is set and the old one in memory.
    return modal_ == 0 ? fault + FaultOfFile() : fault;
}

std::string Storm::FaultOfEntry(int number) {
    const ClientRadio& entry = console_.State.Book.Entries[number];
    const auto& item = console_.View.Clients.at(static_cast<std::size_t>(number - 1));
    const std::string which = " of entry " + std::to_string(number) + "; ";
    const auto window = console_.State.Windows.At(entry.WindowIndex);
    if (item.Name != entry.Name || item.Icon != entry.SmallIcon) {
        return "item" + which;
    }
    if ((entry.WindowIndex != NoWindow) != (window != nullptr) ||
        (window && window->ClientIndex() != number)) {
        return "window" + which;
    }
    return (entry.SmallIcon != IconNoWindow) != (window != nullptr) ? "icon" + which : "";
}

std::string Storm::FaultOfSlots() const {
    const ClientWindows& windows = console_.State.Windows;
    const auto& entries = console_.State.Book.Entries;
    int open = 0;
    for (int slot = 0; slot <= windows.UpperBound(); ++slot) {
        const auto window = windows.At(slot);
        open += window ? 1 : 0;
        if (window && (!entries.Holds(window->ClientIndex()) ||
                       entries[window->ClientIndex()].WindowIndex != slot)) {
            return "slot " + std::to_string(slot) + "; ";
        }
    }
    return open == windows.NumClientWindows ? "" : "count of windows; ";
}

std::string Storm::FaultOfFile() {
    AddressBook filed;
    ReadBookFile(console_.State.SettingsRecord.AddressBookPath, filed.Entries);
    const auto& entries = console_.State.Book.Entries;
    return std::equal(entries.begin(), entries.end(), filed.Entries.begin(), filed.Entries.end(),
                      SameEntry)
               ? ""
               : "file; ";
}

namespace {

int FromEnvironment(const char* name, int usual) {
    const char* text = std::getenv(name);
    return text == nullptr ? usual : std::atoi(text);
}

// ORVIA_STORM_ROUNDS plays more of them, from ORVIA_STORM_SEED on.
TEST(OperatorStormTest, AnythingAtAnyMomentLeavesAllConsistent) {
    constexpr int ActionsOfARound = 120;
    constexpr int LeastActionsOfARound = 45;
    const int rounds = FromEnvironment("ORVIA_STORM_ROUNDS", 200);
    const int first = FromEnvironment("ORVIA_STORM_SEED", 1);
    std::cout << "operator storm: " << rounds << " rounds from seed " << first << std::endl;
    int actions = 0;
    for (int seed = first; seed < first + rounds; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Storm storm(static_cast<std::uint32_t>(seed));
        storm.Run(ActionsOfARound);
        ASSERT_EQ(storm.FirstFault(), "") << "in the middle";
        ASSERT_EQ(storm.FaultOfRest(), "");
        ASSERT_EQ(storm.FaultOfBook(), "");
        actions += storm.ActionsDone();
    }
    std::cout << "operator storm: " << actions << " actions done" << std::endl;
    EXPECT_GT(actions, rounds * LeastActionsOfARound);
}

}  // namespace
}  // namespace operator_storm
