// What was collected, as the main window opens it.
#include <QAction>
#include <QMenu>
#include <QTemporaryDir>
#include <fstream>

#include "app/frmMain_fixture.h"
#include "archive/frmArchive.h"
#include "archive/frmPlot.h"
#include "history/frmHistory.h"
#include "platform/qt/sql_archive.h"
#include "support/qt/run_events.h"

namespace testing_support {
namespace {

class MainWindowWithoutAnArchive : public MainWindowTest {};

TEST_F(MainWindowWithoutAnArchive, HasNoUseForItsRow) {
    StartConnected();
    EXPECT_EQ(Find<QAction>("mnuArchive").text(), QStringLiteral("&Archive..."));
    EXPECT_TRUE(Find<QMenu>("mnuData").actions().contains(&Find<QAction>("mnuArchive")));
    EXPECT_FALSE(Find<QAction>("mnuArchive").isEnabled());
}

struct SomeArchive {
    QTemporaryDir Folder;
    SqlArchive Archive{{.File = Folder.filePath(QStringLiteral("data/archive.sqlite"))}};
};

/// A console that keeps what it uploads, and a fourth site that has something to upload.
class MainWindowData : protected SomeArchive, public MainWindowTest {
 protected:
    static constexpr int Records = 40;

    MainWindowData() : MainWindowTest(&Archive) {
        simulator::LoggerSetup site = BasicSite(4);
        site.Logging = false;
        site.HistoryRecords = Records;
        host_.Virtual.Network.AddLogger(site);
        const std::string path = JoinPath(folder_, "site.obk");
        std::string book = FileContents(path);
        book.insert(book.size() - 2, "\"Site 4\", 10, 00A096000004\r\n");
        WriteFile(path, book);
    }

    /// Uploads the fourth site; `inViewer` is done to the viewer, once.
    void Upload(const std::function<void(frmHistory&)>& inViewer) {
        StartConnected();
        ClickClient(4);
        bool viewed = false;
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
            QWidget* modal = QApplication::activeModalWidget();
            auto* okay = modal == nullptr
                             ? nullptr
                             : modal->findChild<QPushButton*>(QStringLiteral("cmdOkay"));
            if (okay != nullptr && okay->isEnabled()) {
                okay->click();
            }
            auto* viewer = qobject_cast<frmHistory*>(modal);
            if (viewer != nullptr && viewer->isVisible() && !viewed) {
                viewed = true;
                inViewer(*viewer);
            }
        });
        watch.start(1);
        Click("cmdGetHistory");
        EXPECT_TRUE(viewed);
    }
    static void Press(const QWidget& form, const char* button) {
        form.findChild<QPushButton*>(QLatin1String(button))->click();
    }
};

TEST_F(MainWindowData, AnUploadIsKeptAndPlottedFromTheArchivesWindow) {
    Upload([](frmHistory& viewer) { Press(viewer, "cmdOK"); });
    Find<QAction>("mnuArchive").trigger();
    auto& archive = Find<frmArchive>("frmArchive");
    ASSERT_TRUE(archive.isVisible());
    EXPECT_EQ(Archive.Loggers().at(0).Records, Records);
    Press(archive, "cmdPlot");
    EXPECT_TRUE(Find<frmPlot>("frmPlot").isVisible());
    Press(archive, "cmdReport");
    EXPECT_TRUE(Find<QDialog>("frmReport").isVisible());
    Find<QAction>("mnuArchive").trigger();
    EXPECT_EQ(window_->findChildren<frmArchive*>().size(), 1);
    EXPECT_TRUE(boxes_.Shown.empty());
}

TEST_F(MainWindowData, APlotOfTheViewerIsInReachBesideItAndOutlivesIt) {
    frmPlot* plot = nullptr;
    Upload([&](frmHistory& viewer) {
        Press(viewer, "cmdPlot");
        plot = viewer.findChild<frmPlot*>();
        ASSERT_NE(plot, nullptr) << "what is no child of a modal window is out of reach beside it";
        EXPECT_TRUE(plot->isVisible());
        Press(viewer, "cmdOK");
    });
    ASSERT_NE(plot, nullptr);
    EXPECT_EQ(plot->parent(), window_.get());
    EXPECT_TRUE(plot->isVisible());
    EXPECT_TRUE(plot->isWindow());
    QTest::keyClick(plot, Qt::Key_Escape);
    EXPECT_TRUE(RunEventsUntil([this] { return window_->findChildren<frmPlot*>().isEmpty(); }));
}

TEST_F(MainWindowData, APlotThatWasClosedStaysSoWhenTheViewerCloses) {
    Upload([](frmHistory& viewer) {
        Press(viewer, "cmdPlot");
        viewer.findChild<frmPlot*>()->close();
        Press(viewer, "cmdOK");
    });
    EXPECT_TRUE(RunEventsUntil([this] { return window_->findChildren<frmPlot*>().isEmpty(); }));
}

TEST_F(MainWindowData, TheConsoleClosesWithAllOfItsWindowsOpen) {
    Upload([this](frmHistory& viewer) {
        Press(viewer, "cmdPlot");
        Find<QAction>("mnuArchive").trigger();
        Press(Find<frmArchive>("frmArchive"), "cmdPlot");
        Press(Find<frmArchive>("frmArchive"), "cmdReport");
        EXPECT_TRUE(window_->close());
    });
    EXPECT_EQ(state_.LinkRecord.ShuttingDown, True);
    for (const QWidget* widget : QApplication::topLevelWidgets()) {
        EXPECT_FALSE(widget->isVisible()) << widget->objectName().toStdString();
    }
    EXPECT_TRUE(boxes_.Shown.empty());
}

TEST_F(MainWindowData, TheArchivesWindowCanCloseTheConsoleInTheMiddleOfItsWork) {
    Upload([](frmHistory& viewer) { Press(viewer, "cmdOK"); });
    Find<QAction>("mnuArchive").trigger();
    Press(Find<frmArchive>("frmArchive"), "cmdCheck");
    EXPECT_TRUE(window_->close());
    EXPECT_FALSE(Find<frmArchive>("frmArchive").isVisible());
    window_.reset();
    EXPECT_TRUE(boxes_.Shown.empty());
    window_ = std::make_unique<frmMain>(state_);  // for the end of the test
}

}  // namespace
}  // namespace testing_support
