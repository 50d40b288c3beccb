#ifndef ORVIA_TESTS_CLIENT_CLIENT_FAKES_H
#define ORVIA_TESTS_CLIENT_CLIENT_FAKES_H

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "client/client_context.h"
#include "client/client_surface.h"
#include "logger/settings_image.h"

// What a client window meets in its tests: a logger that answers frames, and the few pieces of the
// host and of the main window that it uses. Each records what it was asked.

namespace client_test {

/// A logger at the other end of a faultless link.
class LoggerOnTheLink final : public FrameExchange {
 public:
    LoggerRecord Settings;              ///< what its memory and its replies are made from
    bool Answers = true;                ///< acknowledges frames
    int Asked = 0;                      ///< frames that reached it
    std::function<void()> InEveryWait;  ///< runs where the console waits for an answer

    bool SendFrame(std::span<const std::uint8_t> payload, std::int16_t& /*retries*/) override {
        Wait();
        ++Asked;
        request_.assign(payload.begin(), payload.end());
        return Answers;
    }

    bool ReceiveFrame(Bytes& payload) override {
        Wait();
        const Bytes reply = Reply();
        if (!Answers || reply.size() != payload.size()) {
            return false;
        }
        payload = reply;
        return true;
    }

    std::int16_t ReadReplyByte() override {
        Wait();
        return Answers ? 0xFC : -1;
    }

 private:
    void Wait() const {
        if (InEveryWait) {
            InEveryWait();
        }
    }

    [[nodiscard]] Bytes Reply() const {
        const auto low = [](std::uint32_t value, unsigned place) {
            return static_cast<std::uint8_t>(value >> (8 * place));
        };
        switch (request_.at(0)) {
            case 0x00:
                return {0x09, 0x05, 0x12, 0x01, 0x30, 0x09, 0x23};
            case 0x08:
                return MemoryReply();
            case 0x0C:
                return {low(Settings.NumSamples, 0), low(Settings.NumSamples, 1),
                        low(Settings.NumSamples, 2), low(Settings.StatusWord, 0),
                        low(Settings.StatusWord, 1)};
            case 0x0F:
                return {7, Settings.NumAnalogChannels, Settings.NumDigitalChannels, 0, 0, 0, 0, 0};
            default:
                return {};
        }
    }

    [[nodiscard]] Bytes MemoryReply() const {
        Bytes image;
        if (!config::EncodeSettingsImage(Settings, image)) {
            return {};
        }
        const int address = request_.at(1) | request_.at(2) << 8;
        Bytes reply(request_.begin() + 1, request_.begin() + 4);
        for (const config::ImageBlock& block : config::ImageBlocks) {
            if (block.Address == address) {
                reply.insert(reply.end(), image.begin() + block.Offset,
                             image.begin() + block.Offset + block.Size);
            }
        }
        return reply;
    }

    Bytes request_;
};

class RecordedBoxes final : public MessageBoxes {
 public:
    std::vector<MessageBox> Shown;
    std::function<void()> WhileShown;

    BoxAnswer Show(const MessageBox& box) override {
        Shown.push_back(box);
        if (WhileShown) {
            WhileShown();
        }
        return BoxAnswer::Ok;
    }
};

class CountingPump : public EventPump {
 public:
    int Turns = 0;
    std::function<void(int turn)> OnTurn;  ///< turns count from 1

    void RunPendingEvents() override {
        ++Turns;
        if (OnTurn) {
            OnTurn(Turns);
        }
    }
    void WaitForMoreEvents() override { RunPendingEvents(); }
};

class FixedClock final : public SystemClock {
 public:
    [[nodiscard]] LocalTime Now() const override { return {2023, 9, 30, 12, 5, 9}; }
    [[nodiscard]] std::string DateText(const LocalTime& time) const override {
        return std::to_string(time.Month) + "/" + std::to_string(time.Day) + "/" +
               std::to_string(time.Year);
    }
    [[nodiscard]] std::string TimeText(const LocalTime& /*time*/) const override {
        return "12:05:09";
    }
};

class NoPort final : public SerialPort {
 public:
    [[nodiscard]] int CommPort() const override { return 1; }
    void SetCommPort(int /*number*/) override {}
    [[nodiscard]] std::string Settings() const override { return {}; }
    void SetSettings(const std::string& /*settings*/) override {}
    [[nodiscard]] bool PortOpen() const override { return false; }
    void SetPortOpen(bool /*open*/) override {}
    void SetDTREnable(bool /*enable*/) override {}
    [[nodiscard]] int InBufferCount() const override { return 0; }
    void ClearInBuffer() override {}
    [[nodiscard]] Bytes Input(int /*InputLen*/) override { return {}; }
    void Output(std::span<const std::uint8_t> /*bytes*/) override {}
    void LookForHangUp() override {}
};

class NoDialogs final : public FileDialogs {
 public:
    std::optional<std::string> PickExisting(const FileQuery& /*query*/) override { return {}; }
    std::optional<std::string> PickForSaving(const FileQuery& /*query*/,
                                             bool /*promptOverwrite*/) override {
        return {};
    }
};

class NoStore final : public SettingsStore {
 public:
    [[nodiscard]] std::optional<std::string> Read(const std::string& /*section*/,
                                                  const std::string& /*key*/) const override {
        return {};
    }
    void Write(const std::string& /*section*/, const std::string& /*key*/,
               const std::string& /*value*/) override {}
};

class NoHelp final : public HelpViewer {
 public:
    void Open(const std::string& /*path*/) override {}
};

/// The main window: keeps the pictures of the client list.
class ListView final : public MainView {
 public:
    std::map<int, int> Icons;

    [[nodiscard]] bool IsVisible() const override { return true; }
    void SetPointer(Pointer /*pointer*/) override {}
    void SetComPort(const std::string& /*text*/) override {}
    void SetServerState(const std::string& /*text*/, Colour /*colour*/) override {}
    void SetSystemID(const std::string& /*text*/) override {}
    void ShowLinkFields(bool /*linked*/) override {}
    void SetCommandStates(const CommandStates& /*states*/) override {}
    void SetAddressBookName(const std::string& /*text*/) override {}
    void ClearClients() override {}
    void AddClient(const std::string& /*name*/, std::uint8_t /*icon*/) override {}
    void SetClientIcon(int item, std::uint8_t icon) override { Icons[item] = icon; }
    [[nodiscard]] int ClientCount() const override { return 0; }
    [[nodiscard]] int SelectedClient() const override { return 0; }
    [[nodiscard]] std::shared_ptr<ClientWindow> NewClientWindow() override { return nullptr; }
};

class RecordedPopup final : public ClientPopup {
 public:
    std::vector<std::string> Captions;
    void ShowClientPopup(const std::string& sampleCaption) override {
        Captions.push_back(sampleCaption);
    }
};

/// Another client window, of which only the activation matters.
class OtherWindow final : public ClientWindow {
 public:
    Flag Active = False;

    [[nodiscard]] Flag IsActive() const override { return Active; }
    [[nodiscard]] std::int16_t ClientIndex() const override { return 0; }
    void SetClientIndex(std::int16_t /*number*/) override {}
    [[nodiscard]] Flag SettingsValid() const override { return False; }
    [[nodiscard]] std::string Caption() const override { return {}; }
    void SetCaption(const std::string& /*caption*/) override {}
    [[nodiscard]] std::string LoggerTimeCaption() const override { return {}; }
    [[nodiscard]] bool IsMinimized() const override { return false; }
    void RestoreWindow() override {}
    void GiveFocus() override {}
    void ShowIcon(std::uint8_t /*icon*/) override {}
    void Unload() override {}
    void ResetDisplay() override {}
    bool GetStatus() override { return false; }
    [[nodiscard]] std::int32_t NumSamples() const override { return 0; }
    void ClientSetGlobalState() override {}
    void ClientGetGlobalState() override {}
    void ClientSetNumChannels() override {}
    bool GetTime() override { return false; }
    bool ResetPulseAccs() override { return false; }
    bool GetSettings() override { return false; }
    void SetDP() override {}
    [[nodiscard]] double CalculateFlow(double /*level*/, double& /*velocity*/) const override {
        return 0;
    }
    void CalculateFlowVelPrecision() override {}
    void UpdateFlowModeDisplay() override {}
};

/// The rest of the console, as one client window sees it.
template <typename Pump = CountingPump>
struct Console {
    NoPort Port;
    Pump Events;
    RecordedBoxes Boxes;
    NoDialogs Dialogs;
    NoStore Store;
    FixedClock Clock;
    NoHelp Help;
    Host Outside{Port, Events, Boxes, Dialogs, Store, Clock, Help, "/nowhere"};
    ClientWindows Windows;
    AddressBook Book;
    LoggerState Global;
    DataPoint Newest;
    Catalogues Devices;
    Sampling Cycles;
    LoggerOnTheLink Logger;
    ListView View;
    RecordedPopup Popup;
    ClientContext Context{Windows, Book,   Global,  Newest, Devices,
                          Cycles,  Logger, Outside, View,   Popup};
};

/// A logger with so many channels, fresh from the box.
inline LoggerState FreshLogger(std::uint8_t analog, std::uint8_t digital) {
    LoggerState state;
    state.NumAnalogChannels = analog;
    state.NumDigitalChannels = digital;
    SetDefaultSettings(state);
    return state;
}

/// A logger at a pipe: level in feet, battery, and Manning's equation.
inline LoggerState PipeLogger() {
    LoggerState state = FreshLogger(3, 2);
    state.LoggerName = "North outfall";
    state.SampleInterval = "5 minutes";
    state.EngUnits[0] = "Feet";
    state.UpperLimit[0] = state.DisplayTop[0] = 2;
    state.DecPlaces[0] = 3;
    state.FlowMode = 1;
    state.FlowTop = 4;
    state.VelTop = 6;
    return state;
}

}  // namespace client_test

#endif  // ORVIA_TESTS_CLIENT_CLIENT_FAKES_H
