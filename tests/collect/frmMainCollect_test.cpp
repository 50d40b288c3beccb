// The collection of history, as the main window runs it.
#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTemporaryDir>

#include "app/frmMain_fixture.h"
#include "console/frmLog.h"
#include "platform/qt/sql_archive.h"

namespace testing_support {
namespace {

struct CollectArchive {
    QTemporaryDir Folder;
    SqlArchive Archive{{.File = Folder.filePath(QStringLiteral("data/archive.sqlite"))}};
};

/// A console with an archive, whose three sites have records.
class MainWindowCollect : protected CollectArchive, public MainWindowTest {
 protected:
    MainWindowCollect() : MainWindowTest(&Archive) {}

    void OpenWindows(int count) {
        StartConnected();
        for (int number = 1; number <= count; ++number) {
            ClickClient(number);
        }
    }
    [[nodiscard]] QString Log() { return Find<QPlainTextEdit>("txtLog").toPlainText(); }
    [[nodiscard]] bool CanCollect() {
        return host_.RunUntil([this] { return Find<QAction>("mnuCollect").isEnabled(); });
    }
};

class MainWindowWithoutAnArchiveToCollectInto : public MainWindowTest {};

TEST_F(MainWindowWithoutAnArchiveToCollectInto, HasNoUseForTheRows) {
    StartConnected();
    ClickClient(1);
    host_.RunFor(1000);
    EXPECT_FALSE(Find<QAction>("mnuCollect").isEnabled());
    EXPECT_FALSE(Find<QMenu>("mnuCollectFrom").isEnabled());
}

TEST_F(MainWindowCollect, TheRowCollectsFromTheOpenWindowsAndTellsInTheLog) {
    OpenWindows(2);
    ASSERT_TRUE(CanCollect());
    EXPECT_EQ(Find<QAction>("mnuCollect").text(),
              QStringLiteral("&Collect History from All Client Windows"));
    bool foot = false;
    Once([this] { return !Find<QLabel>("lblFoot").text().isEmpty(); },
         [this, &foot] { foot = Find<QLabel>("lblFoot").isVisible(); });
    Find<QAction>("mnuCollect").trigger();
    EXPECT_TRUE(
        Log().startsWith(QStringLiteral("Collecting history from client window Site 1...OK, ")))
        << Log().toStdString();
    EXPECT_TRUE(Log().contains(QStringLiteral("\nDone\n"))) << Log().toStdString();
    EXPECT_TRUE(foot);
    EXPECT_FALSE(Find<QLabel>("lblFoot").isVisible());
    EXPECT_TRUE(boxes_.Shown.empty());
    ExpectAtRest();
}

TEST_F(MainWindowCollect, TheChoicesAreKept) {
    StartConnected();
    EXPECT_TRUE(Find<QAction>("mnuCollectWindows").isChecked());
    EXPECT_FALSE(Find<QAction>("mnuCollectSync").isChecked());
    EXPECT_FALSE(host_.Virtual.Store.Read("Collect", "Scope"));
    Find<QAction>("mnuCollectBook").trigger();
    Find<QAction>("mnuCollectSync").trigger();
    EXPECT_FALSE(Find<QAction>("mnuCollectWindows").isChecked());
    EXPECT_EQ(host_.Virtual.Store.Read("Collect", "Scope"), "Book");
    EXPECT_EQ(host_.Virtual.Store.Read("Collect", "SyncTime"), "1");
    const frmMain other(state_);
    EXPECT_TRUE(other.findChild<QAction*>(QStringLiteral("mnuCollectBook"))->isChecked());
    EXPECT_TRUE(other.findChild<QAction*>(QStringLiteral("mnuCollectSync"))->isChecked());
}

TEST_F(MainWindowCollect, TheWholeBookLeavesTheActiveWindowAndTheKeysWhereTheyAre) {
    OpenWindows(2);
    ASSERT_TRUE(CanCollect());
    Find<QAction>("mnuCollectBook").trigger();
    const auto active = WindowOf(2);
    ASSERT_NE(active->IsActive(), False);
    bool stayed = false;
    bool opened = false;
    Once([this] { return state_.Windows.NumClientWindows == 3; },
         [&] {
             opened = true;
             // The log has been the active child since the walk began.
             stayed = WindowOf(3)->IsActive() == False;
         });
    Find<QAction>("mnuCollect").trigger();
    EXPECT_TRUE(opened);
    EXPECT_TRUE(stayed);
    EXPECT_EQ(state_.Windows.NumClientWindows, 2);
    EXPECT_EQ(state_.Book.Entries[3].WindowIndex, NoWindow);
    EXPECT_TRUE(Log().contains(QStringLiteral("Site 3...OK, "))) << Log().toStdString();
}

TEST_F(MainWindowCollect, AWindowThatMissesItsFlowTableTellsInTheLog) {
    // A logger whose settings name a table that is not there.
    auto& site = *host_.Virtual.Network.Loggers().at(0);
    simulator::LoggerSetup setup = site.Setup();
    setup.Mac[5] = 9;
    setup.Settings.Name = "Site 9";
    setup.Settings.Flow.Mode = simulator::FlowMode::Table;
    setup.Settings.Flow.TablePath = "C:\\missing.tbl";
    host_.Virtual.Network.AddLogger(setup);
    const std::string path = JoinPath(folder_, "site.obk");
    WriteFile(path, "\"Site 9\", 10, 00A096000009\r\n\r\n");
    OpenWindows(1);
    ASSERT_TRUE(CanCollect());
    Find<QAction>("mnuCollect").trigger();
    EXPECT_TRUE(Log().contains(QStringLiteral("Site 9...OK, "))) << Log().toStdString();
    EXPECT_TRUE(Log().contains(QStringLiteral("\n    "))) << Log().toStdString();
    EXPECT_TRUE(boxes_.Shown.empty());
}

TEST_F(MainWindowCollect, TheConsoleClosesInTheMiddleOfACollection) {
    OpenWindows(3);
    ASSERT_TRUE(CanCollect());
    bool closed = false;
    Once(
        [this] { return !state_.Collecting.Text().empty() && state_.LinkRecord.CommBusy == False; },
        [&] { closed = window_->close(); });
    Find<QAction>("mnuCollect").trigger();
    EXPECT_TRUE(closed || state_.LinkRecord.ShuttingDown == False);
    EXPECT_TRUE(boxes_.Shown.empty());
}

}  // namespace
}  // namespace testing_support
