// How the main window goes, and with it whatever is open or under way.
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>

#include "app/frmMain_fixture.h"
#include "common/fault.h"
#include "platform/qt/text_qt.h"

namespace testing_support {
namespace {

class MainWindowClosing : public MainWindowTest {
 protected:
    [[nodiscard]] bool StepRuns() const { return state_.SamplingRecord.StepRuns != False; }
    [[nodiscard]] bool Closed() const { return state_.LinkRecord.ShuttingDown != False; }

    /// Presses the close box every few virtual milliseconds from now on, until it is taken. While
    /// an exchange is on the wire it must be refused.
    void CloseUntilTaken() {
        for (int milliseconds = 0; milliseconds < 8000; milliseconds += 20) {
            host_.Virtual.Time.In(milliseconds * Millisecond, [this] {
                if (!Closed()) {
                    const bool refused = state_.LinkRecord.CommBusy != False;
                    EXPECT_EQ(window_->close(), !refused);
                }
            });
        }
    }

    void ExpectClosedInSilence() {
        EXPECT_EQ(state_.LinkRecord.ShuttingDown, True);
        EXPECT_EQ(state_.OperationsRecord.OperationBusy, False);
        EXPECT_EQ(state_.LinkRecord.CommBusy, False);
        EXPECT_EQ(state_.Windows.NumClientWindows, 0);
        EXPECT_FALSE(window_->isVisible());
        EXPECT_FALSE(host_.Virtual.Port.PortOpen());
        EXPECT_TRUE(boxes_.Shown.empty());
    }
    /// Tries to close the main window while the open client's settings are read; it is refused.
    void CloseInAnExchange() {
        bool tried = false;
        Once([this] { return state_.LinkRecord.CommBusy != False; },
             [&] {
                 tried = true;
                 EXPECT_FALSE(window_->close());
             });
        Click("cmdGetSettings");
        EXPECT_TRUE(tried);
    }
};

TEST_F(MainWindowClosing, IsRefusedWithNoMessageWhileAnExchangeRuns) {
    StartConnected();
    ClickClient(1);
    CloseInAnExchange();
    EXPECT_TRUE(window_->isVisible());
    EXPECT_TRUE(boxes_.Shown.empty());
}

TEST_F(MainWindowClosing, UnloadsTheClientsAndSavesTheSettings) {
    StartConnected();
    ClickClient(1);
    ClickClient(2);
    EXPECT_TRUE(window_->close());
    EXPECT_EQ(host_.Virtual.Store.Values["Configuration/Port"], "COM1");
    ExpectClosedInSilence();
}

TEST_F(MainWindowClosing, ExitInTheFileMenuClosesTheConsole) {
    StartConnected();
    ClickClient(1);
    Find<QAction>("mnuExit").trigger();
    ExpectClosedInSilence();
}

TEST_F(MainWindowClosing, TakesTheTraceAlongInSilence) {
    StartConnected();
    Find<QAction>("mnuTrace").trigger();
    const QWidget& trace = Find<QWidget>("frmTrace");
    EXPECT_TRUE(trace.isVisible());
    EXPECT_TRUE(window_->close());
    EXPECT_FALSE(trace.isVisible());
    ExpectClosedInSilence();
}

TEST_F(MainWindowClosing, TakesTheReportForSupportAlongInSilence) {
    StartConnected();
    Find<QAction>("mnuSupport").trigger();
    const QWidget& report = Find<QWidget>("frmSupport");
    EXPECT_TRUE(report.isVisible());
    EXPECT_TRUE(window_->close());
    EXPECT_FALSE(report.isVisible());
    ExpectClosedInSilence();
}

/// The window of a flow table with something typed that no file holds.
class MainWindowWithAFlowTable : public MainWindowClosing {
 protected:
    MainWindowWithAFlowTable() {
        StartConnected();
        Find<QAction>("mnuNewFlowTable").trigger();
        table_ = &Find<QWidget>("frmRating");
        table_->findChild<QLineEdit*>(QStringLiteral("txtName"))->setText(QStringLiteral("Mill"));
    }

    QWidget* table_ = nullptr;
};

TEST_F(MainWindowWithAFlowTable, ClosingAsksAboutIt) {
    boxes_.Answers = {BoxAnswer::Cancel, BoxAnswer::No};
    EXPECT_FALSE(window_->close());
    EXPECT_TRUE(window_->isVisible());
    EXPECT_TRUE(table_->isVisible());
    EXPECT_EQ(state_.LinkRecord.ShuttingDown, False);
    EXPECT_TRUE(window_->close());
    EXPECT_FALSE(table_->isVisible());
    ASSERT_EQ(boxes_.Shown.size(), 2U);
    EXPECT_EQ(boxes_.Shown[1].Title, "Data Has Changed");
    boxes_.Shown.clear();
    ExpectClosedInSilence();
}

TEST_F(MainWindowWithAFlowTable, ClosingIsRefusedWithoutAWordWhileAnExchangeRuns) {
    ClickClient(1);
    CloseInAnExchange();
    EXPECT_TRUE(table_->isVisible());
    EXPECT_TRUE(boxes_.Shown.empty());
}

TEST_F(MainWindowWithAFlowTable, TheEndOfTheProgramClosesItWithoutAWord) {
    window_->CloseAllChildForms();
    EXPECT_FALSE(table_->isVisible());
    EXPECT_TRUE(boxes_.Shown.empty());
}

/// Writes down which windows go, as they go.
class Goings final : public QObject {
 public:
    void Watch(QWidget& window) { window.installEventFilter(this); }
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Hide) {
            Names.push_back(FromQt(static_cast<QWidget*>(watched)->windowTitle()));
        }
        return false;
    }

    std::vector<std::string> Names;
};

TEST_F(MainWindowClosing, UnloadsFromTheWindowOpenedLastToTheFirstDialogsAhead) {
    StartConnected();
    ClickClient(2);
    auto& walk = Find<QAction>("mnuGetSettingsFACW");
    ASSERT_TRUE(host_.RunUntil([&] { return walk.isEnabled(); }));
    walk.trigger();
    ClickClient(1);
    ClickClient(2);
    QDialog outer(window_.get());
    QDialog inner(&outer);
    Goings goings;
    for (QMdiSubWindow* child : Find<QMdiArea>("MDIArea").subWindowList()) {
        goings.Watch(*child);
    }
    for (const auto& [dialog, title] : {std::pair(&outer, "outer"), std::pair(&inner, "inner")}) {
        dialog->setWindowTitle(QLatin1String(title));
        dialog->setModal(true);
        dialog->show();
        goings.Watch(*dialog);
    }
    window_->CloseAllChildForms();
    EXPECT_EQ(goings.Names, (std::vector<std::string>{"inner", "outer", "Site 1",
                                                      "Multiple Client Operation Log", "Site 2"}));
}

/// A dialog that faults as it goes.
class FaultyDialog final : public QDialog {
 public:
    using QDialog::QDialog;
    void done(int result) override {
        QDialog::done(result);
        throw Fault("this dialog faults");
    }
};

TEST_F(MainWindowClosing, AFormThatFaultsDoesNotKeepTheOthers) {
    StartConnected();
    ClickClient(1);
    ClickClient(2);
    FaultyDialog dialog(window_.get());
    dialog.setModal(true);
    dialog.show();
    EXPECT_TRUE(window_->close());
    EXPECT_FALSE(dialog.isVisible());
    ExpectClosedInSilence();
}

/// So many virtual milliseconds behind the begin of what is under way.
class MainWindowClosedAtAMoment : public MainWindowClosing,
                                  public ::testing::WithParamInterface<int> {
 protected:
    /// Closes the window inside what runs, from the moment on at which `begun` holds.
    void CloseInside(const std::function<bool()>& begun) {
        Once(begun, [this] {
            host_.Virtual.Time.In(GetParam() * Millisecond, [this] {
                inside_ = state_.OperationsRecord.OperationBusy != False;
                CloseUntilTaken();
            });
        });
    }
    /// Lets the console run until it is closed and has unwound.
    void AwaitClosed() {
        EXPECT_TRUE(host_.RunUntil([this] { return Closed() && !StepRuns(); }));
        EXPECT_TRUE(inside_);
        ExpectClosedInSilence();
    }

 private:
    bool inside_ = false;
};

using MomentOfGetSample = MainWindowClosedAtAMoment;

TEST_P(MomentOfGetSample, TheProgramClosedThenUnwindsInSilence) {
    StartConnected();
    ClickClient(1);
    auto& button = Find<QPushButton>("cmdGetSettings");
    ASSERT_TRUE(host_.RunUntil([&] { return button.isEnabled(); }));
    CloseInside([this] { return state_.OperationsRecord.OperationBusy != False; });
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(state_.OperationsRecord.OperationBusy, False);
    AwaitClosed();
}

INSTANTIATE_TEST_SUITE_P(GetSample, MomentOfGetSample, ::testing::Range(0, 2250, 250));

/// The status byte of the sample does not come, so that each read waits for it.
class MomentOfAStep : public MainWindowClosedAtAMoment {
 protected:
    void LoseSamples() {
        host_.Virtual.Network.Faults().OnRequest(
            0x0A, simulator::Plain(simulator::FaultKind::LoseReply), 100);
    }
};

TEST_P(MomentOfAStep, TheProgramClosedThenInSampleContinuouslyUnwindsInSilence) {
    StartConnected();
    ClickClient(1);
    Click("cmdSampleContinuously");
    LoseSamples();
    CloseInside(
        [this] { return StepRuns() && state_.SamplingRecord.ContinuousMode == ContinuousRead; });
    AwaitClosed();
}

TEST_P(MomentOfAStep, TheProgramClosedThenInAutoUpdateUnwindsInSilence) {
    StartConnected();
    for (const int client : {1, 2}) {
        ClickClient(client);
        Click("cmdGetSettings");
    }
    auto& row = Find<QAction>("mnuAutoUpdateFACW");
    ASSERT_TRUE(host_.RunUntil([&] { return row.isEnabled(); }));
    boxes_.Shown.clear();
    row.trigger();
    Sampling& sampling = state_.SamplingRecord;
    ASSERT_TRUE(host_.RunUntil(
        [&] { return sampling.ContinuousMode == AutoUpdateRunning && !StepRuns(); }));
    boxes_.Shown.clear();
    LoseSamples();
    CloseInside([&] { return StepRuns() && state_.OperationsRecord.OperationBusy != False; });
    // As if the minute were over.
    sampling.NextAutoUpdate -= 61;
    AwaitClosed();
}

INSTANTIATE_TEST_SUITE_P(Sampling, MomentOfAStep, ::testing::Range(0, 800, 150));

}  // namespace
}  // namespace testing_support
