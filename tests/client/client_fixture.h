#ifndef ORVIA_TESTS_CLIENT_CLIENT_FIXTURE_H
#define ORVIA_TESTS_CLIENT_CLIENT_FIXTURE_H

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>

#include "client/client_model.h"
#include "client_fakes.h"

namespace client_test {

/// A window's surface that remembers what it was last given.
class RecordedSurface final : public ClientSurface {
 public:
    ClientPanel Shown;
    int Shows = 0;
    int Repaints = 0;
    int FocusRequests = 0;
    bool Active = false;

    void ShowPanel(const ClientPanel& panel) override {
        Shown = panel;
        ++Shows;
    }
    void RepaintColumns() override { ++Repaints; }
    void TakeFocus() override { ++FocusRequests; }
    bool IsActiveChild() const override { return Active; }
};

/// One client window without widgets, and a logger to read.
class ClientTest : public ::testing::Test {
 protected:
    ClientTest() { window.Load(); }

    LoggerState& State() { return window.Record.LoggerState; }
    [[nodiscard]] const ClientPanel& Shown() const { return surface.Shown; }
    MeterEntry& Meter(int column) { return window.Record.Meters[static_cast<std::size_t>(column)]; }

    /// Gives the window a logger's settings, as if it had read them.
    void Know(const LoggerState& state) {
        State() = state;
        window.Record.SettingsValid = True;
        window.Resize();
    }

    /// A sample arrives: the given counts from channel 1 on, 0 for the rest.
    void Sample(std::initializer_list<std::int32_t> raw) {
        console.State.Newest = {};
        console.State.Newest.Time = "09/30/23 12:05:09";
        std::copy(raw.begin(), raw.end(), console.State.Newest.Raw.begin());
        window.SetDP();
    }
    void SampleNothing() {
        console.State.Newest.MarkNoSample();
        window.SetDP();
    }

    Console<> console;
    RecordedSurface surface;
    ClientModel window{console.Context, surface};
};

}  // namespace client_test

#endif  // ORVIA_TESTS_CLIENT_CLIENT_FIXTURE_H
