#ifndef ORVIA_TESTS_SUPPORT_FAKE_CLIENT_WINDOW_H
#define ORVIA_TESTS_SUPPORT_FAKE_CLIENT_WINDOW_H

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "app/shared_state.h"
#include "logger/commands.h"
#include "logger/settings_transfer.h"
#include "records/client_window.h"

namespace testing_support {

/// A client window without a screen: it speaks to its logger as the real one does, and remembers
/// what was done to it.
class FakeClientWindow final : public ClientWindow {
 public:
    explicit FakeClientWindow(SharedState& state) : state_(state) {
        ++state_.Windows.NumClientWindows;
    }

    Flag IsActive() const override { return Active; }
    std::int16_t ClientIndex() const override { return Index; }
    void SetClientIndex(std::int16_t number) override { Index = number; }
    Flag SettingsValid() const override { return Valid; }
    std::string Caption() const override { return Title; }
    void SetCaption(const std::string& caption) override { Title = caption; }
    std::string LoggerTimeCaption() const override { return State.LoggerTime; }
    bool IsMinimized() const override { return Minimized; }
    void RestoreWindow() override { Minimized = false; }
    void GiveFocus() override { ++Focused; }
    void ShowIcon(std::uint8_t icon) override { Icon = icon; }

    void Unload() override {
        --state_.Windows.NumClientWindows;
        auto& entries = state_.Book.Entries;
        if (entries.Holds(Index) && entries[Index].WindowIndex != NoWindow) {
            const auto slot = static_cast<std::size_t>(entries[Index].WindowIndex);
            entries[Index].WindowIndex = NoWindow;
            entries[Index].SmallIcon = IconNoWindow;
            state_.Windows.Slots[slot] = nullptr;
        }
    }

    void ResetDisplay() override { ++Resets; }
    bool GetStatus() override {
        ++StatusReads;
        return cmd::GetLoggerStatus(state_.Exchange, State);
    }
    std::int32_t NumSamples() const override { return static_cast<std::int32_t>(State.NumSamples); }
    void ClientSetGlobalState() override { CopyStateToGlobal(state_.Logger, State); }
    void ClientGetGlobalState() override { CopyStateFromGlobal(state_.Logger, State); }
    void ClientSetNumChannels() override {
        state_.Logger.NumAnalogChannels = State.NumAnalogChannels;
        state_.Logger.NumDigitalChannels = State.NumDigitalChannels;
    }
    bool GetTime() override {
        return cmd::GetLoggerTime(state_.Exchange, state_.Outside.Clock, State);
    }
    bool ResetPulseAccs() override { return cmd::ResetPulseAccumulators(state_.Exchange); }
    bool GetSettings() override {
        Valid = False;
        ++SettingsReads;
        if (!config::GetLoggerSettings(state_.Exchange, state_.Outside.Clock, State)) {
            return false;
        }
        Valid = True;
        if (WhenSettingsRead) {
            WhenSettingsRead();
        }
        return true;
    }
    void SetDP() override { Points.push_back(state_.Newest); }
    double CalculateFlow(double level, double& velocity) const override {
        velocity = 0;
        return level;
    }
    const FlowTable& FlowPoints() const override { return State.FlowTable; }
    void CalculateFlowVelPrecision() override {}
    void UpdateFlowModeDisplay() override {}

    Flag Active = False;
    std::int16_t Index = 0;
    Flag Valid = False;
    std::string Title;
    bool Minimized = false;
    int Focused = 0;
    std::uint8_t Icon = IconWindowOpen;
    int Resets = 0;
    int StatusReads = 0;
    int SettingsReads = 0;
    std::function<void()> WhenSettingsRead;  ///< happens at the end of a reading: a box, say
    LoggerState State;
    std::vector<DataPoint> Points;

 private:
    SharedState& state_;
};

}  // namespace testing_support

#endif  // ORVIA_TESTS_SUPPORT_FAKE_CLIENT_WINDOW_H
