#include "history/get_history.h"

#include "history/upload_bench.h"

namespace testing_support {
namespace {

/// The dialogs of Get History, which run the upload and note what they are shown.
class FakeDialogs final : public HistoryDialogs {
 public:
    explicit FakeDialogs(UploadBench& bench) : bench_(bench) {}

    std::string RunUploadDialog(std::int32_t totalRecords) override {
        ++Uploads;
        PointerAtUpload = bench_.console.View.Shape;
        NameAtUpload = bench_.console.State.Logger.LoggerName;
        RunUpload(bench_.Context(), bench_.view, totalRecords);
        return bench_.view.TagText;
    }
    void ShowViewer(const std::shared_ptr<ClientWindow>& window) override {
        ++Viewers;
        Window = window;
        PointerAtViewer = bench_.console.View.Shape;
        BusyAtViewer = bench_.console.State.OperationsRecord.OperationBusy;
        StatusReadsAtViewer = bench_.window->StatusReads;
    }

    int Uploads = 0;
    int Viewers = 0;
    std::shared_ptr<ClientWindow> Window;
    Pointer PointerAtUpload = Pointer::Hourglass;
    Pointer PointerAtViewer = Pointer::Normal;
    Flag BusyAtViewer = False;
    int StatusReadsAtViewer = 0;
    std::string NameAtUpload;

 private:
    UploadBench& bench_;
};

class GetHistoryTest : public testing::Test {
 protected:
    void Make(const simulator::LoggerSetup& setup) {
        bench = std::make_unique<UploadBench>(setup);
        dialogs = std::make_unique<FakeDialogs>(*bench);
    }
    void Run() {
        GetHistory(bench->console.Operation(), bench->console.State.History, *dialogs);
        EXPECT_EQ(bench->console.State.OperationsRecord.OperationBusy, False);
        EXPECT_EQ(bench->console.View.Shape, Pointer::Normal);
    }
    void ExpectOneBox(const std::string& text, BoxIcon icon) {
        ASSERT_EQ(bench->Boxes().size(), 1U);
        EXPECT_EQ(bench->Boxes()[0].Title, "Get History Data");
        EXPECT_EQ(bench->Boxes()[0].Text, text);
        EXPECT_EQ(bench->Boxes()[0].Icon, icon);
        EXPECT_EQ(bench->Boxes()[0].Buttons, BoxButtons::Ok);
    }
    void ExpectNotSuccessful() {
        ExpectOneBox("Error: upload not successful!", BoxIcon::Stop);
        EXPECT_EQ(dialogs->Uploads, 0);
        EXPECT_EQ(dialogs->Viewers, 0);
    }

    std::unique_ptr<UploadBench> bench;
    std::unique_ptr<FakeDialogs> dialogs;
};

TEST_F(GetHistoryTest, SettingsThatAreReadFirstShowAnHourglass) {
    Make(SiteWithHistory(25));
    bench->window->Valid = False;
    Pointer whileRead = Pointer::Normal;
    bench->window->WhenSettingsRead = [&] { whileRead = bench->console.View.Shape; };
    Run();
    EXPECT_EQ(whileRead, Pointer::Hourglass);
    EXPECT_EQ(dialogs->Uploads, 1);
}

TEST_F(GetHistoryTest, UploadsThenShowsTheViewerWithTheWindow) {
    Make(SiteWithHistory(25));
    Run();
    EXPECT_EQ(bench->Store().HistoryCount(), 25);
    EXPECT_EQ(dialogs->Uploads, 1);
    EXPECT_EQ(dialogs->Viewers, 1);
    EXPECT_EQ(dialogs->Window, bench->window);
    EXPECT_EQ(dialogs->PointerAtUpload, Pointer::Normal);
    EXPECT_EQ(dialogs->PointerAtViewer, Pointer::Hourglass);
    EXPECT_NE(dialogs->BusyAtViewer, False);
    EXPECT_TRUE(bench->Boxes().empty());
}

TEST_F(GetHistoryTest, TheStatusLineTellsOfTheUploadAndItsEnd) {
    Make(SiteWithHistory(25));
    OperationStatus& status = bench->console.State.Status;
    bool told = false;
    bench->console.Outside.Time.StartTimer(20 * Millisecond, [&] {
        told = told || status.Text() == "Uploading history of Site 1...";
    });
    Run();
    EXPECT_TRUE(told);
    EXPECT_NE(status.Text().find("  History of Site 1: 25 of 25 records uploaded"),
              std::string::npos)
        << status.Text();
}

TEST_F(GetHistoryTest, TheStatusLineTellsOfALoggerWithoutRecords) {
    Make(SiteWithHistory(0));
    Run();
    EXPECT_NE(bench->console.State.Status.Text().find("  Site 1 has no history in memory"),
              std::string::npos);
}

TEST_F(GetHistoryTest, ReadsTheStatusBeforeTheUploadBeforeTheViewerBehindIt) {
    Make(SiteWithHistory(25));
    const int before = bench->window->StatusReads;
    Run();
    EXPECT_EQ(dialogs->StatusReadsAtViewer, before + 2);
    EXPECT_EQ(bench->window->StatusReads, before + 3);
}

TEST_F(GetHistoryTest, GivesTheCurrentLoggerItsSettings) {
    Make(SiteWithHistory(25));
    bench->console.State.Logger.LoggerName = "another";
    Run();
    EXPECT_EQ(dialogs->NameAtUpload, "Site 1");
}

TEST_F(GetHistoryTest, NoActiveWindowIsNotSuccessful) {
    Make(SiteWithHistory(25));
    bench->window->Active = False;
    Run();
    ExpectNotSuccessful();
}

TEST_F(GetHistoryTest, LoggerThatDoesNotAnswerIsNotSuccessful) {
    Make(SiteWithHistory(25));
    bench->logger->Silence();
    Run();
    ExpectNotSuccessful();
}

TEST_F(GetHistoryTest, RadioThatCannotBeSelectedIsNotSuccessful) {
    Make(SiteWithHistory(25));
    bench->console.Outside.Network.RadioFaults().Always(
        simulator::Plain(simulator::FaultKind::LoseAnswer));
    bench->console.State.LinkRecord.CurrentChannel = UnknownChannel;
    Run();
    ASSERT_FALSE(bench->Boxes().empty());
    EXPECT_EQ(bench->Boxes().back().Text, "Error: upload not successful!");
}

TEST_F(GetHistoryTest, EmptyMemoryIsToldAndShowsNothing) {
    auto setup = SiteWithHistory(0);
    setup.ReportedSamples = 0;
    Make(setup);
    Run();
    ExpectOneBox("No history in memory!", BoxIcon::Information);
    EXPECT_EQ(dialogs->Uploads, 0);
}

TEST_F(GetHistoryTest, SettingsThatWereNotReadAreReadFirst) {
    Make(SiteWithHistory(25));
    bench->window->Valid = False;
    const int before = bench->window->SettingsReads;
    Run();
    EXPECT_EQ(bench->window->SettingsReads, before + 1);
    EXPECT_EQ(dialogs->Uploads, 1);
}

TEST_F(GetHistoryTest, SettingsThatAreThereAreNotReadAgain) {
    Make(SiteWithHistory(25));
    const int before = bench->window->SettingsReads;
    Run();
    EXPECT_EQ(bench->window->SettingsReads, before);
}

TEST_F(GetHistoryTest, SettingsThatCannotBeReadAreTold) {
    Make(SiteWithHistory(25));
    bench->window->Valid = False;
    bench->Faults().OnRequest(0x0F, simulator::Plain(simulator::FaultKind::LoseAnswer), 100);
    Run();
    ExpectOneBox("Error: unable to read logger settings!", BoxIcon::Information);
    EXPECT_EQ(dialogs->Uploads, 0);
}

TEST_F(GetHistoryTest, CancelledUploadShowsWhatWasReceived) {
    Make(SiteWithHistory(25));
    bench->Faults()
        .OnRequest(0x0D, simulator::LineFault{})
        .OnRequest(0x0D, simulator::Plain(simulator::FaultKind::LoseAnswer), 100);
    bench->console.Outside.Time.In(3 * Second, [this] { bench->view.TagText = TagCancel; });
    Run();
    ExpectOneBox("Retrieval cancelled by user. Received 10 records of 25 records.",
                 BoxIcon::Information);
    EXPECT_EQ(dialogs->Viewers, 1);
}

TEST_F(GetHistoryTest, CancelledUploadWithoutARecordShowsNothing) {
    Make(SiteWithHistory(25));
    bench->Faults().OnRequest(0x0D, simulator::Plain(simulator::FaultKind::LoseAnswer), 100);
    bench->console.Outside.Time.In(3 * Second, [this] { bench->view.TagText = TagCancel; });
    Run();
    EXPECT_EQ(dialogs->Uploads, 1);
    EXPECT_EQ(dialogs->Viewers, 0);
}

TEST_F(GetHistoryTest, UploadThatEndedInErrorShowsNothingThoughItsRecordsStay) {
    Make(SiteWithHistory(25));
    bench->Faults()
        .OnRequest(0x0D, simulator::LineFault{})
        .OnRequest(0x0D, simulator::Plain(simulator::FaultKind::LoseReply), 200);
    Run();
    ExpectOneBox("Error during retrieval. Received 10 records of 25 records.", BoxIcon::Stop);
    EXPECT_EQ(dialogs->Viewers, 0);
    EXPECT_EQ(bench->Store().HistoryCount(), 10);
}

TEST_F(GetHistoryTest, FullStoreStillOpensTheViewer) {
    Make(SiteWithHistory(200'001, 1, 0));
    bench->console.Outside.Network.LineBaud = 0;
    bench->console.Outside.Network.KeepsRecord = false;
    Run();
    ExpectOneBox("History buffer full: upload terminated.", BoxIcon::Information);
    EXPECT_EQ(dialogs->Viewers, 1);
    EXPECT_EQ(bench->Store().HistoryCount(), 200'000);
}

TEST_F(GetHistoryTest, EmptiesTheStoreAtItsStart) {
    Make(SiteWithHistory(25));
    Run();
    bench->Rewind();
    bench->logger->Silence();
    Run();
    EXPECT_EQ(bench->Store().HistoryCount(), 0);
}

TEST_F(GetHistoryTest, DoesNothingWhileTheLinkIsTakenOrDown) {
    Make(SiteWithHistory(25));
    SharedState& state = bench->console.State;
    state.OperationsRecord.OperationBusy = True;
    GetHistory(bench->console.Operation(), state.History, *dialogs);
    state.OperationsRecord.OperationBusy = False;
    state.SamplingRecord.ContinuousMode = ContinuousRead;
    GetHistory(bench->console.Operation(), state.History, *dialogs);
    state.SamplingRecord.ContinuousMode = SamplingIdle;
    state.LinkRecord.Connected = False;
    GetHistory(bench->console.Operation(), state.History, *dialogs);
    EXPECT_TRUE(bench->Boxes().empty());
    EXPECT_EQ(dialogs->Uploads, 0);
}

TEST_F(GetHistoryTest, WindowClosedDuringTheUploadLivesUntilTheOperationEnds) {
    Make(SiteWithHistory(65));
    bench->console.Outside.Time.In(600 * Millisecond, [this] { bench->window->Unload(); });
    Run();
    EXPECT_EQ(bench->Store().HistoryCount(), 65);
    EXPECT_EQ(dialogs->Viewers, 1);
    EXPECT_EQ(dialogs->Window, bench->window);
}

TEST_F(GetHistoryTest, ViewerKeepsItsWindowWhenAnotherIsOpenedInTheSlot) {
    Make(SiteWithHistory(65));
    const int other = bench->console.AddSite(BasicSite(2));
    bench->console.Outside.Time.In(600 * Millisecond, [this, other] {
        bench->window->Unload();
        const auto opened = bench->console.OpenWindow(other);
        EXPECT_EQ(bench->console.State.Windows.At(0), opened);
    });
    Run();
    EXPECT_EQ(dialogs->Viewers, 1);
    EXPECT_EQ(dialogs->Window, bench->window);
}

TEST_F(GetHistoryTest, ProgramThatClosesDuringTheUploadShowsNothingMore) {
    Make(SiteWithHistory(65));
    bench->console.Outside.Time.In(600 * Millisecond,
                                   [this] { bench->console.State.LinkRecord.ShuttingDown = True; });
    Run();
    EXPECT_EQ(dialogs->Viewers, 0);
    EXPECT_TRUE(bench->Boxes().empty());
}

}  // namespace
}  // namespace testing_support
