#include "client/client_model.h"

#include <algorithm>
#include <memory>

#include "client/columns.h"
#include "client/flow_display.h"
#include "client/information.h"
#include "client/layout.h"
#include "client/readings.h"
#include "client/sample_listener.h"
#include "client/view_memory.h"
#include "common/fault.h"
#include "flow/flow_calculation.h"
#include "flow/flow_definition.h"
#include "flow/flow_precision.h"
#include "logger/commands.h"
#include "logger/settings_transfer.h"
#include "records/address_book.h"
#include "records/client_windows.h"

ClientModel::ClientModel(ClientContext& context, ClientSurface& surface)
    : context_(context),
      surface_(surface),
      panel_(DesignPanel()),
      boxes_(context.Outside.Boxes, unloaded_) {}

void ClientModel::Load() {
    ++context_.Windows.NumClientWindows;
    if (context_.Samples != nullptr) {
        context_.Samples->Opened(*this);
    }
    PlaceFixedControls(panel_);
    FixBarGeometry(panel_, Record);
    ArrangeDisplay();
}

void ClientModel::TakeClientIndex(std::int16_t number) {
    const bool first = Record.ClientIndex == 0;
    Record.ClientIndex = number;
    if (!first || !context_.Book.Entries.Holds(number)) {
        return;
    }
    if (const auto kept = KeptView(context_.Outside.Store, context_.Book.Entries[number].Mac)) {
        Record.DisplayMode = *kept;
        ArrangeDisplay();
    }
}

void ClientModel::ResetDisplay() {
    BlankDisplay(panel_);
    Show();
}

bool ClientModel::GetStatus() {
    const bool answered = cmd::GetLoggerStatus(context_.Exchange, Record.LoggerState);
    ShowStatus(Record.LoggerState, panel_);
    Show();
    return answered;
}

std::int32_t ClientModel::NumSamples() const {
    return static_cast<std::int32_t>(Record.LoggerState.NumSamples);
}

void ClientModel::ClientSetGlobalState() {
    CopyStateToGlobal(context_.Global, Record.LoggerState);
}

void ClientModel::ClientGetGlobalState() {
    CopyStateFromGlobal(context_.Global, Record.LoggerState);
}

void ClientModel::ClientSetNumChannels() {
    context_.Global.NumAnalogChannels = Record.LoggerState.NumAnalogChannels;
    context_.Global.NumDigitalChannels = Record.LoggerState.NumDigitalChannels;
}

bool ClientModel::GetTime() {
    const bool answered =
        cmd::GetLoggerTime(context_.Exchange, context_.Outside.Clock, Record.LoggerState);
    ShowLoggerTime(Record.LoggerState, panel_);
    Show();
    return answered;
}

bool ClientModel::ResetPulseAccs() {
    return cmd::ResetPulseAccumulators(context_.Exchange);
}

bool ClientModel::GetSettings() {
    Record.SettingsValid = False;
    if (!config::GetLoggerSettings(context_.Exchange, context_.Outside.Clock, Record.LoggerState)) {
        return false;
    }
    ShowSettings(Record.LoggerState, panel_);
    Show();
    config::LoadFlowDefinition(Record.LoggerState, context_.Devices, context_.Outside.AppPath,
                               boxes_);
    CalculateFlowVelPrecision();
    Record.SettingsValid = True;
    ArrangeDisplay();
    CheckFlowDisplay();
    return true;
}

void ClientModel::SetDP() {
    FileDataPoint(context_.Newest, Record.LoggerState);
    RefreshReadings(Record, panel_);
    Show();
    if (context_.Samples != nullptr && unloaded_ == False) {
        context_.Samples->Sampled(*this);
    }
}

double ClientModel::CalculateFlow(double level, double& velocity) const {
    return ::CalculateFlow(Record.LoggerState, Record.LoggerState.FlowTable, level, velocity);
}

void ClientModel::CalculateFlowVelPrecision() {
    ::CalculateFlowVelPrecision(Record.LoggerState, context_.Global);
}

void ClientModel::UpdateFlowModeDisplay() {
    ShowFlowParameters(Record, panel_);
    Show();
}

void ClientModel::ChooseDisplay(std::int16_t displayMode) {
    Record.DisplayMode = displayMode;
    ArrangeDisplay();
    if (displayMode == DisplayFlow && Record.SettingsValid != False) {
        CheckFlowDisplay();
    }
    KeepDisplay();
}

void ClientModel::KeepDisplay() {
    const auto& entries = context_.Book.Entries;
    if (entries.Holds(Record.ClientIndex) && unloaded_ == False) {
        KeepView(context_.Outside.Store, entries[Record.ClientIndex].Mac, Record.DisplayMode);
    }
}

void ClientModel::Resize() {
    ArrangeDisplay();
}

void ClientModel::Paint() {
    ForgetDrawnBars(Record);
}

std::vector<BarFill> ClientModel::Tick() {
    return ChangedBars(Record, panel_.fraMeter[0].Place.Top);
}

void ClientModel::ArrangeDisplay() {
    ShowFlowParameters(Record, panel_);
    if (!IsDisplayMode(Record.DisplayMode)) {
        return;
    }
    ArrangeControls(Record.DisplayMode, panel_);
    GreyMissingChannels(Record, panel_);
    if (ShowsBars(Record.DisplayMode)) {
        SetUpColumns(Record, panel_);
    }
    if (Record.DisplayMode == DisplayFlow) {
        RefreshReadings(Record, panel_);
    }
    Show();
}

void ClientModel::CheckFlowDisplay() {
    // A window that was closed meanwhile has no display to speak of.
    if (Record.DisplayMode != DisplayFlow || unloaded_ != False) {
        return;
    }
    if (const auto refusal = FlowModeRefusal(Record.LoggerState)) {
        boxes_.Show(*refusal);
        Record.DisplayMode = DisplayMeter;
        KeepDisplay();
        ArrangeDisplay();
        if (unloaded_ == False) {
            surface_.RepaintColumns();
        }
    }
}

void ClientModel::ShowClientPopup() {
    if (WaitUntilActive()) {
        const bool sampling = context_.Cycles.ContinuousMode != SamplingIdle;
        context_.Popup.ShowClientPopup(sampling ? "Stop Sample Continuously"
                                                : "Sample Continuously");
    }
}

// The click comes before the activation that it causes; that arrives as an event.
bool ClientModel::WaitUntilActive() {
    constexpr int turns = 32;
    try {
        surface_.TakeFocus();
        for (int turn = 0; turn < turns; ++turn) {
            context_.Outside.Events.RunPendingEvents();
            if (IsOnlyActive()) {
                return true;
            }
        }
    } catch (const Fault&) {
        return false;
    }
    return false;
}

bool ClientModel::IsOnlyActive() const {
    const auto& slots = context_.Windows.Slots;
    const auto active = std::count_if(slots.begin(), slots.end(), [](const auto& window) {
        return window != nullptr && window->IsActive() != False;
    });
    return active == 1 && surface_.IsActiveChild();
}

void ClientModel::Unload() {
    if (unloaded_ != False) {
        return;
    }
    unloaded_ = True;
    if (context_.Samples != nullptr) {
        context_.Samples->Closed(*this);
    }
    ClientWindows& windows = context_.Windows;
    if (windows.NumClientWindows > 0) {
        --windows.NumClientWindows;
    }
    if (!context_.Book.Entries.Holds(Record.ClientIndex)) {
        return;
    }
    ClientRadio& entry = context_.Book.Entries[Record.ClientIndex];
    if (entry.WindowIndex < 0) {
        return;
    }
    // Held to the end: the slot may be the last to hold this window.
    const std::shared_ptr<ClientWindow> last = windows.At(entry.WindowIndex);
    if (last != nullptr) {
        windows.Slots[static_cast<std::size_t>(entry.WindowIndex)].reset();
    }
    entry.WindowIndex = NoWindow;
    context_.View.SetClientIcon(Record.ClientIndex, IconNoWindow);
    entry.SmallIcon = IconNoWindow;
}

void ClientModel::Show() {
    if (unloaded_ == False) {
        surface_.ShowPanel(panel_);
    }
}
