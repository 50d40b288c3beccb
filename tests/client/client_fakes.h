#ifndef ORVIA_TESTS_CLIENT_CLIENT_FAKES_H
#define ORVIA_TESTS_CLIENT_CLIENT_FAKES_H

#include <functional>
#include <string>
#include <vector>

#include "app/shared_state.h"
#include "client/client_context.h"
#include "logger/settings_image.h"
#include "support/fake_client_window.h"
#include "support/fake_main_view.h"
#include "support/virtual_host.h"

// What a client window meets in its tests: a logger that answers frames without a link between,
// the menu of the main window, and a pump whose turns are counted.

namespace client_test {

/// A logger at the other end of a faultless link.
class LoggerOnTheLink final : public FrameExchange {
 public:
    LoggerState Settings;               ///< what its memory and its replies are made from
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

class RecordedPopup final : public ClientPopup {
 public:
    std::vector<std::string> Captions;
    void ShowClientPopup(const std::string& sampleCaption) override {
        Captions.push_back(sampleCaption);
    }
};

/// The rest of the console, as one client window sees it.
template <typename Pump = CountingPump>
struct Console {
    testing_support::VirtualHost Outside;
    Pump Events;
    SharedState State{HostWith(Outside, Events)};
    LoggerOnTheLink Logger;
    testing_support::FakeMainView View;
    RecordedPopup Popup;
    ClientContext Context{.Windows = State.Windows,
                          .Book = State.Book,
                          .Global = State.Logger,
                          .Newest = State.Newest,
                          .Devices = State.CataloguesRecord,
                          .Cycles = State.SamplingRecord,
                          .Exchange = Logger,
                          .Outside = State.Outside,
                          .View = View,
                          .Popup = Popup};

    [[nodiscard]] const std::vector<BoxContent>& Boxes() const { return Outside.Boxes.Shown; }

 private:
    static Host HostWith(testing_support::VirtualHost& outside, EventPump& events) {
        const Host host = outside.AsHost("/nowhere");
        return {host.MSComm1, events,     host.Boxes,  host.Dialogs,
                host.Store,   host.Clock, host.Help,   host.LocalMachine,
                host.Inquiry, host.Sound, host.AppPath};
    }
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
