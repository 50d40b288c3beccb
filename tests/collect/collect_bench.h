#ifndef ORVIA_TESTS_COLLECT_COLLECT_BENCH_H
#define ORVIA_TESTS_COLLECT_COLLECT_BENCH_H

#include <memory>
#include <string>
#include <vector>

#include "collect/collect_walk.h"
#include "support/virtual_console.h"

namespace testing_support {

/// A logger whose history is as long as told; it takes no further records.
[[nodiscard]] inline simulator::LoggerSetup CollectedSite(int number, std::uint32_t records,
                                                          int analog = 8, int pulse = 2) {
    simulator::LoggerSetup setup = BasicSite(number, analog, pulse);
    setup.Logging = false;
    setup.HistoryRecords = records;
    return setup;
}

/// A console with an archive, connected to sites that have something to collect.
class CollectBench {
 public:
    explicit CollectBench(ArchiveStore& archive) : console("/nowhere", &archive) {
        console.Connect();
        // The clocks of the loggers stand as the computer's does.
        console.Outside.Clock.Start = {2024, 3, 5, 8, 0, 0, 0};
    }

    void Add(const simulator::LoggerSetup& setup) { console.AddSite(setup); }
    void OpenAll() {
        for (int number = 1; number <= console.State.Book.Entries.UpperBound(); ++number) {
            windows.push_back(console.OpenWindow(number));
        }
    }
    void Run(const CollectChoice& choice = {}) {
        CollectFromAll(console.Collection(), choice, Limits, console.Log, console.State.Collecting);
    }
    [[nodiscard]] simulator::Logger& Logger(int number) {
        return *console.Outside.Network.Loggers().at(static_cast<std::size_t>(number - 1));
    }
    [[nodiscard]] const std::string& Log() const { return console.Log.Text; }
    [[nodiscard]] const std::vector<BoxContent>& Boxes() const {
        return console.Outside.Boxes.Shown;
    }
    /// Requests with that code that reached the logger.
    [[nodiscard]] int Requests(int number, std::uint8_t code) {
        int count = 0;
        for (const auto& request : console.Outside.Network.RequestsTo(Logger(number))) {
            count += request.front() == code ? 1 : 0;
        }
        return count;
    }

    VirtualConsole console;
    DigestLimits Limits;
    std::vector<std::shared_ptr<FakeClientWindow>> windows;
};

}  // namespace testing_support

#endif  // ORVIA_TESTS_COLLECT_COLLECT_BENCH_H
