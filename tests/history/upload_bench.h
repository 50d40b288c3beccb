#ifndef ORVIA_TESTS_HISTORY_UPLOAD_BENCH_H
#define ORVIA_TESTS_HISTORY_UPLOAD_BENCH_H

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "history/upload.h"
#include "support/virtual_console.h"

namespace testing_support {

/// A progress dialog without a screen, which presses its "Okay" a while after it can be pressed.
class FakeUploadView final : public UploadView {
 public:
    explicit FakeUploadView(VirtualTime& time) : time_(time) {}

    std::string Tag() const override { return TagText; }
    void SetTag(const std::string& tag) override { TagText = tag; }
    void SetBarMaximum(std::int32_t maximum) override { BarMaximum = maximum; }
    void SetBarValue(std::int32_t value) override {
        BarValue = value;
        BarValues.push_back(value);
    }
    void SetRetries(const std::string& text) override { Retries = text; }
    void SetProgress(const std::string& text) override { Progress.push_back(text); }
    void AllowOkay() override {
        OkayAllowed = true;
        time_.In(300 * Millisecond, [this] { TagText = TagOkay; });
    }
    void Hide() override { ++Hidden; }

    std::string TagText = TagStarting;
    std::int32_t BarMaximum = -1;
    std::int32_t BarValue = -1;
    std::vector<std::int32_t> BarValues;
    std::string Retries = "unset";
    std::vector<std::string> Progress;
    bool OkayAllowed = false;
    int Hidden = 0;

 private:
    VirtualTime& time_;
};

/// An upload from one logger of the simulated network, whose radio is selected.
class UploadBench {
 public:
    explicit UploadBench(const simulator::LoggerSetup& setup, ArchiveStore* archive = nullptr)
        : console("/nowhere", archive) {
        console.Outside.Network.KeepsRecord = true;
        console.Connect();
        entry = console.AddSite(setup);
        logger = console.Outside.Network.FindLogger(setup.Settings.Name);
        window = console.OpenWindow(entry);
        Prepare();
    }

    void Prepare() {
        if (!comm::SelectClient(console.Radio(), console.State.Book.Entries[entry]) ||
            !window->GetSettings()) {
            throw std::logic_error("the logger did not answer");
        }
        window->ClientSetGlobalState();
    }

    [[nodiscard]] UploadContext Context() {
        return {.link = console.State.LinkRecord,
                .exchange = console.State.Exchange,
                .global = console.State.Logger,
                .store = console.State.History,
                .boxes = console.State.Boxes,
                .listener = console.State.Filer ? &*console.State.Filer : nullptr};
    }

    /// Runs an upload of the records that the logger says it has.
    void Run() { Run(window->NumSamples()); }
    void Run(std::int32_t totalRecords) {
        console.Outside.Network.ClearRecord();
        RunUpload(Context(), view, totalRecords);
    }

    /// Makes the dialog anew.
    void Rewind() {
        view.TagText = TagStarting;
        view.Progress.clear();
        view.Hidden = 0;
        console.Outside.Boxes.Shown.clear();
    }

    [[nodiscard]] simulator::FaultScript& Faults() { return console.Outside.Network.Faults(); }
    [[nodiscard]] const HistoryStore& Store() const { return console.State.History; }
    [[nodiscard]] const std::vector<BoxContent>& Boxes() const {
        return console.Outside.Boxes.Shown;
    }

    /// Second bytes of the history requests that reached the logger, good answer or not.
    [[nodiscard]] std::string Requests() const {
        std::string text;
        for (const simulator::Exchange& exchange : console.Outside.Network.Record()) {
            if (!exchange.OfRadio && exchange.Request.size() == 2 && exchange.Request[0] == 0x0D) {
                text += static_cast<char>('0' + exchange.Request[1]);
            }
        }
        return text;
    }

    /// Whether record `i` of the store is record `i` of the logger: its time as the bytes stand,
    /// then a count of two bytes, low byte first, for each channel that the logger has, and no
    /// other.
    [[nodiscard]] bool IsRecord(std::int32_t i) const {
        const HistoryRecord& stored = Store().Records()[static_cast<std::size_t>(i)];
        const simulator::Bytes bytes = logger->Record(static_cast<std::uint32_t>(i));
        constexpr std::size_t TimeSize = 4;
        bool same = std::equal(stored.Time.begin(), stored.Time.end(), bytes.begin(),
                               bytes.begin() + TimeSize);
        for (std::size_t slot = 0; slot < stored.Raw.size(); ++slot) {
            const std::size_t at = TimeSize + 2 * slot;
            const int count = at < bytes.size() ? bytes.at(at) + 256 * bytes.at(at + 1) : 0;
            same = same && stored.Raw[slot] == count;
        }
        return same;
    }

    /// Number of the first record that is not the logger's; -1 if there is none.
    [[nodiscard]] std::int32_t FirstWrong() const {
        for (std::int32_t i = 0; i < Store().HistoryCount(); ++i) {
            if (!IsRecord(i)) {
                return i;
            }
        }
        return -1;
    }

    VirtualConsole console;
    FakeUploadView view{console.Outside.Time};
    simulator::Logger* logger = nullptr;
    std::shared_ptr<FakeClientWindow> window;
    int entry = 0;
};

/// A logger that has stopped with so many records in its memory.
[[nodiscard]] inline simulator::LoggerSetup SiteWithHistory(std::uint32_t records, int analog = 8,
                                                            int pulse = 2) {
    simulator::LoggerSetup setup = BasicSite(1, analog, pulse);
    setup.Logging = false;
    setup.HistoryRecords = records;
    return setup;
}

}  // namespace testing_support

#endif  // ORVIA_TESTS_HISTORY_UPLOAD_BENCH_H
