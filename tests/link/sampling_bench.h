#ifndef ORVIA_TESTS_LINK_SAMPLING_BENCH_H
#define ORVIA_TESTS_LINK_SAMPLING_BENCH_H

#include <gtest/gtest.h>

#include "console/logger_operations.h"
#include "link/sampling.h"
#include "support/virtual_console.h"

/// A console whose sampling machines are watched.
class SamplingTest : public ::testing::Test {
 protected:
    std::shared_ptr<testing_support::FakeClientWindow> OpenSite(int number, int analog = 8,
                                                                int pulse = 2) {
        auto window = console_.OpenWindow(
            console_.AddSite(testing_support::BasicSite(number, analog, pulse)));
        if (link_.Connected == False) {
            console_.Connect();
        }
        return window;
    }

    /// Starts one sample a second on the active window, whose settings are read.
    void StartContinuously() {
        SampleContinuously(console_.Operation());
        ASSERT_EQ(sampling_.ContinuousMode, ContinuousFirstRequest);
        console_.Outside.Network.ClearRecord();
    }

    /// Starts Auto Update over windows whose settings are read.
    void StartAutoUpdate() {
        for (const auto& window : console_.State.Windows.Slots) {
            if (window && comm::SelectClient(console_.Radio(),
                                             console_.State.Book.Entries[window->ClientIndex()])) {
                static_cast<void>(window->GetSettings());
            }
        }
        sampling_.ContinuousMode = AutoUpdateStart;
        sampling_.SampleTicks = 0;
        console_.Outside.Network.ClearRecord();
    }

    std::vector<simulator::Bytes> RequestsTo(int site) {
        return console_.Outside.Network.RequestsTo(
            *console_.Outside.Network.Loggers()[static_cast<std::size_t>(site - 1)]);
    }

    testing_support::VirtualConsole console_;
    Link& link_ = console_.State.LinkRecord;
    Sampling& sampling_ = console_.State.SamplingRecord;
    Operations& operations_ = console_.State.OperationsRecord;
    DataPoint& newest_ = console_.State.Newest;
    simulator::FaultScript& faults_ = console_.Outside.Network.Faults();
};

#endif  // ORVIA_TESTS_LINK_SAMPLING_BENCH_H
