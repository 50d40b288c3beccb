#ifndef ORVIA_TESTS_ARCHIVE_FILING_BENCH_H
#define ORVIA_TESTS_ARCHIVE_FILING_BENCH_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "history/get_history.h"
#include "history/upload_bench.h"

namespace testing_support {

/// "Get History" on the virtual console, with an archive behind it.
class FilingBench final : public HistoryDialogs {
 public:
    FilingBench(const simulator::LoggerSetup& setup, ArchiveStore* archive)
        : bench(setup, archive) {}

    std::string RunUploadDialog(std::int32_t totalRecords) override {
        RunUpload(bench.Context(), bench.view, totalRecords);
        return bench.view.TagText;
    }
    void ShowViewer(const std::shared_ptr<ClientWindow>&) override { ++Viewers; }

    /// One click on the button.
    void Run() {
        bench.Rewind();
        bench.console.Outside.Network.ClearRecord();
        GetHistory(bench.console.Operation(), bench.console.State.History, *this,
                   bench.Context().listener);
    }

    /// Does `act` every so often from now on.
    void Every(Microseconds interval, const std::function<void()>& act) {
        bench.console.Outside.Time.StartTimer(interval, act);
    }
    void In(Microseconds delay, std::function<void()> act) {
        bench.console.Outside.Time.In(delay, std::move(act));
    }
    [[nodiscard]] Microseconds Now() const { return bench.console.Outside.Time.Now(); }

    UploadBench bench;
    int Viewers = 0;
};

}  // namespace testing_support

#endif  // ORVIA_TESTS_ARCHIVE_FILING_BENCH_H
