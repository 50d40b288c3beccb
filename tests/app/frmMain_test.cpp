#include "app/frmMain.h"

#include <QCloseEvent>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMenu>
#include <QMenuBar>

#include "app/frmAbout.h"
#include "app/frmMain_fixture.h"
#include "app/lifecycle.h"
#include "platform/qt/text_qt.h"

namespace testing_support {
namespace {

std::vector<std::string> TextsOf(const QMenu& menu) {
    std::vector<std::string> texts;
    for (const QAction* action : menu.actions()) {
        if (!action->isSeparator()) {
            texts.push_back(FromQt(action->text()));
        }
    }
    return texts;
}

TEST_F(MainWindowTest, AFirstStartShowsTheConnectDialogOverAnEmptyList) {
    host_.Virtual.Store.Values.clear();
    std::string port;
    int listed = -1;
    Start([&](frmConnect& dialog) {
        port = FromQt(dialog.findChild<QLabel*>(QStringLiteral("lblPort"))->text());
        listed = window_->ClientCount();
        EXPECT_TRUE(window_->isVisible());
        EXPECT_FALSE(Find<QLineEdit>("txtComPort").isVisible());
        dialog.reject();
    });
    EXPECT_EQ(port, "Port: Com1");
    EXPECT_EQ(listed, 0);
    EXPECT_EQ(window_->ClientCount(), 0);
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_EQ(boxes_.Shown[0].Title, "Connection Required");
}

TEST_F(MainWindowTest, HasTheToldTitleSizeMenus) {
    StartConnected();
    EXPECT_EQ(FromQt(window_->windowTitle()), ApplicationTitle());
    EXPECT_EQ(window_->size(), QSize(893, 633));
    std::vector<std::string> titles;
    for (const QAction* action : window_->menuBar()->actions()) {
        titles.push_back(FromQt(action->text()));
    }
    EXPECT_EQ(titles.front(), "&File");
    EXPECT_EQ(titles.back(), " &Help");
    EXPECT_NE(std::find(titles.begin(), titles.end(), "&Window"), titles.end());
    EXPECT_EQ(TextsOf(Find<QMenu>("mnuFile")),
              (std::vector<std::string>{"Load Address Book", "New Blank Address Book", "E&xit"}));
    EXPECT_EQ(TextsOf(Find<QMenu>("mnuHelp")), (std::vector<std::string>{"&Help", "&About"}));
}

TEST_F(MainWindowTest, AfterConnectingListPortSystemIdAreShown) {
    host_.Virtual.Network.Radio().SetSystemId(77);
    StartConnected();
    EXPECT_EQ(window_->ClientCount(), 3);
    EXPECT_EQ(Find<QLabel>("lblAddressBook").text(), QStringLiteral("site"));
    ASSERT_TRUE(host_.RunUntil([this] { return Find<QLineEdit>("txtComPort").isVisible(); }));
    EXPECT_EQ(Find<QLineEdit>("txtSystemID").text(), QStringLiteral("77"));
    EXPECT_TRUE(host_.RunUntil([this] {
        return Find<QLineEdit>("txtServerState").text() == QStringLiteral("Connected - Command");
    }));
    EXPECT_EQ(Find<QPushButton>("cmdConnect").text(), QStringLiteral("Disc&onnect"));
}

TEST_F(MainWindowTest, AClickOpensAClientThenGetSampleShowsItsReadings) {
    StartConnected();
    ClickClient(2);
    ASSERT_NE(WindowOf(2), nullptr);
    EXPECT_EQ(WindowOf(2)->Caption(), "Site 2");
    Click("cmdGetSettings");
    EXPECT_EQ(WindowOf(2)->Model().Panel().lblData2[0].Text, "10.00 %");
    EXPECT_EQ(WindowOf(2)->Model().Panel().lblLoggerName.Text, "Site 2");
    ExpectAtRest();
    EXPECT_TRUE(boxes_.Shown.empty());
}

TEST_F(MainWindowTest, AnOperationActsOnTheWindowThatWasClickedLast) {
    StartConnected();
    ClickClient(1);
    ClickClient(3);
    ClickClient(1);
    Click("cmdGetSettings");
    EXPECT_NE(WindowOf(1)->SettingsValid(), False);
    EXPECT_EQ(WindowOf(3)->SettingsValid(), False);
}

TEST_F(MainWindowTest, EnterOnTheListOpensTheClient) {
    StartConnected();
    auto& list = Find<QListWidget>("lvwClients");
    list.setCurrentRow(2);
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_NE(WindowOf(3), nullptr);
}

TEST_F(MainWindowTest, TheRightButtonShowsTheListsMenuAndOpensNothing) {
    StartConnected();
    ClickClient(1, Qt::RightButton);
    EXPECT_TRUE(Find<QMenu>("mnuClientS").isVisible());
    Find<QMenu>("mnuClientS").close();
    EXPECT_EQ(state_.Windows.NumClientWindows, 0);
}

TEST_F(MainWindowTest, SampleContinuouslyTurnsItsButton) {
    StartConnected();
    ClickClient(1);
    Click("cmdSampleContinuously");
    auto& button = Find<QPushButton>("cmdSampleContinuously");
    ASSERT_TRUE(host_.RunUntil([&] { return button.text() == QStringLiteral("&Stop Sampling"); }));
    EXPECT_EQ(button.palette().color(QPalette::Button), QColor(240, 240, 0));
    EXPECT_FALSE(Find<QPushButton>("cmdGetSettings").isEnabled());
    ASSERT_TRUE(host_.RunUntil(
        [this] { return WindowOf(1)->Model().Record.LoggerState.NumDataPoints == 4; }));
    Click("cmdSampleContinuously");
    ASSERT_TRUE(
        host_.RunUntil([&] { return button.text() == QStringLiteral("&Sample Continuously"); }));
    EXPECT_NE(button.palette().color(QPalette::Button), QColor(240, 240, 0));
    ExpectAtRest();
}

TEST_F(MainWindowTest, TheWindowMenuListsTheOpenClients) {
    StartConnected();
    ClickClient(1);
    ClickClient(2);
    auto& menu = Find<QMenu>("mnuWindow");
    Q_EMIT menu.aboutToShow();
    EXPECT_EQ(TextsOf(menu), (std::vector<std::string>{"Site 1", "Site 2"}));
    EXPECT_TRUE(menu.actions()[1]->isChecked());
    menu.actions()[0]->trigger();
    EXPECT_NE(WindowOf(1)->IsActive(), False);
}

TEST_F(MainWindowTest, ClosingAClientFreesItsSlotItsEntryItsIcon) {
    StartConnected();
    ClickClient(1);
    WindowOf(1)->close();
    EXPECT_EQ(state_.Windows.NumClientWindows, 0);
    EXPECT_EQ(state_.Book.Entries[1].WindowIndex, NoWindow);
    EXPECT_EQ(state_.Book.Entries[1].SmallIcon, IconNoWindow);
}

TEST_F(MainWindowTest, TheConnectButtonDisconnectsThenShowsTheDialog) {
    StartConnected();
    ClickClient(1);
    Click("cmdConnect");
    EXPECT_FALSE(host_.Virtual.Port.PortOpen());
    ASSERT_TRUE(host_.RunUntil([this] {
        return Find<QLineEdit>("txtServerState").text() == QStringLiteral("Disconnected");
    }));
    EXPECT_EQ(Find<QPushButton>("cmdConnect").text(), QStringLiteral("C&onnect"));
    EXPECT_EQ(state_.LinkRecord.Connected, True);
    ExpectAtRest();
}

TEST_F(MainWindowTest, TheConnectButtonPressedInsideASamplingStepDisconnectsWhenItIsOver) {
    StartConnected();
    ClickClient(1);
    Click("cmdSampleContinuously");
    host_.Virtual.Network.Faults().LoseAnswer(4);
    bool pressed = false;
    Once([this] { return state_.SamplingRecord.StepRuns != False; },
         [&] {
             pressed = true;
             Click("cmdConnect");
             EXPECT_TRUE(host_.Virtual.Port.PortOpen()) << "the step is still under way";
         });
    ASSERT_TRUE(host_.RunUntil([this] { return !host_.Virtual.Port.PortOpen(); }));
    EXPECT_TRUE(pressed);
    EXPECT_EQ(state_.SamplingRecord.ContinuousMode, SamplingIdle);
    ExpectAtRest();
}

TEST_F(MainWindowTest, ACloseWhileAnExchangeRunsIsRefusedWithNoMessage) {
    StartConnected();
    ClickClient(1);
    bool closed = true;
    Once([this] { return state_.LinkRecord.CommBusy != False; },
         [&] { closed = window_->close(); });
    Click("cmdGetSettings");
    EXPECT_FALSE(closed);
    EXPECT_TRUE(window_->isVisible());
    EXPECT_TRUE(boxes_.Shown.empty());
}

TEST_F(MainWindowTest, ClosingTheClientInsideEveryWaitOfGetSampleLeavesNothingBusy) {
    StartConnected();
    for (int moment = 100; moment <= 4000; moment += 300) {
        ClickClient(1);
        ClickAndLater("cmdGetSettings", moment, [this] {
            if (const auto window = WindowOf(1)) {
                window->close();
            }
        });
        ExpectAtRest();
        ASSERT_TRUE(host_.RunUntil([this] { return state_.Windows.NumClientWindows == 0; }));
    }
}

TEST_F(MainWindowTest, ADeviceThatVanishesInsideEveryWaitLeavesNothingBusy) {
    StartConnected();
    ClickClient(1);
    for (int moment = 100; moment <= 3100; moment += 600) {
        ClickAndLater("cmdGetSettings", moment, [this] { host_.Virtual.Port.PullOut(); });
        ExpectAtRest();
        ASSERT_TRUE(host_.RunUntil([this] { return !host_.Virtual.Port.PortOpen(); }));
        boxes_.Shown.clear();
    }
    Click("cmdGetSettings");
    EXPECT_NE(WindowOf(1)->SettingsValid(), False) << "a device that is back is opened again";
}

TEST_F(MainWindowTest, TheProgramClosedInsideEveryWaitOfGetSampleUnwindsInSilence) {
    StartConnected();
    ClickClient(1);
    bool closed = false;
    for (int moment = 100; moment <= 4000 && !closed; moment += 300) {
        // Refused while an exchange is on the wire, taken in the wait between two.
        bool tried = false;
        ClickAndLater("cmdGetSettings", moment, [&] {
            tried = true;
            closed = window_->close();
        });
        EXPECT_EQ(state_.OperationsRecord.OperationBusy, False);
        ASSERT_TRUE(host_.RunUntil([&] { return tried; }));
    }
    EXPECT_TRUE(closed);
    EXPECT_EQ(state_.LinkRecord.ShuttingDown, True);
    EXPECT_EQ(state_.Windows.NumClientWindows, 0);
    EXPECT_TRUE(boxes_.Shown.empty());
}

TEST_F(MainWindowTest, ClosingUnloadsTheClientsAndSavesTheSettings) {
    StartConnected();
    ClickClient(1);
    ClickClient(2);
    EXPECT_TRUE(window_->close());
    EXPECT_EQ(state_.Windows.NumClientWindows, 0);
    EXPECT_FALSE(host_.Virtual.Port.PortOpen());
    EXPECT_EQ(host_.Virtual.Store.Values["Configuration/Port"], "COM1");
}

TEST_F(MainWindowTest, HelpOpensTheFileThatLiesBesideTheProgram) {
    const std::string help = JoinPath(folder_, "Orvia.chm");
    WriteFile(help, "help");
    window_ = std::make_unique<frmMain>(state_);
    window_->findChild<QAction*>(QStringLiteral("mnuLaunchHelp"))->trigger();
    EXPECT_EQ(host_.Virtual.Help.Opened, std::vector<std::string>{help});
}

TEST_F(MainWindowTest, HelpWithoutItsFileDoesNothing) {
    window_->findChild<QAction*>(QStringLiteral("mnuLaunchHelp"))->trigger();
    EXPECT_TRUE(host_.Virtual.Help.Opened.empty());
}

TEST_F(MainWindowTest, AboutTellsTheVersionAndEscapeClosesIt) {
    frmAbout about(window_.get());
    about.show();
    EXPECT_EQ(about.windowTitle(), QStringLiteral("About Harrowmere"));
    EXPECT_TRUE(about.findChild<QLabel*>(QStringLiteral("lblVersion"))
                    ->text()
                    .contains(ToQt(VersionText())));
    QTest::keyClick(&about, Qt::Key_Escape);
    EXPECT_FALSE(about.isVisible());
}

TEST_F(MainWindowTest, EveryControlThatTakesInputHasAnAccessibleNameAndATabStop) {
    StartConnected();
    ClickClient(1);
    for (const QWidget* control : window_->findChildren<QWidget*>()) {
        if (control->isVisible() && (control->focusPolicy() & Qt::TabFocus) != 0 &&
            !control->inherits("QMdiSubWindow") && !control->inherits("QMdiArea")) {
            const auto* button = qobject_cast<const QAbstractButton*>(control);
            const QString name = button != nullptr && !button->text().isEmpty()
                                     ? button->text()
                                     : control->accessibleName();
            EXPECT_FALSE(name.isEmpty())
                << control->metaObject()->className() << " " << FromQt(control->objectName());
        }
    }
}

TEST_F(MainWindowTest, ABookOfTenThousandIsListedQuickly) {
    StartConnected();
    AddressBook book;
    for (int i = 0; i < 10000; ++i) {
        book.Entries.Append({.Name = "Site " + std::to_string(i)});
    }
    QElapsedTimer elapsed;
    elapsed.start();
    RefreshClientList(book, *window_);
    EXPECT_EQ(window_->ClientCount(), 10000);
    EXPECT_LT(elapsed.elapsed(), 2000) << "seconds would be a mistake of another order";
}

/// The connect dialog.
TEST_F(MainWindowTest, ConnectCancelledDuringTheAttemptEndsWithIt) {
    host_.Virtual.Network.Radio().Silence();
    Start([this](frmConnect& dialog) {
        Once([this] { return state_.LinkRecord.CommBusy != False; },
             [&dialog] {
                 dialog.findChild<QPushButton*>(QStringLiteral("cmdCancel"))->click();
                 EXPECT_TRUE(dialog.isVisible()) << "the attempt ends it";
             });
        dialog.findChild<QPushButton*>(QStringLiteral("cmdConnect"))->click();
    });
    ASSERT_EQ(boxes_.Shown.size(), 2U);
    EXPECT_EQ(boxes_.Shown[0].Title, "Connection Required");
    EXPECT_EQ(boxes_.Shown[1].Title, "Connect Error");
    EXPECT_EQ(state_.LinkRecord.LinkState, LinkDisconnected);
    EXPECT_EQ(state_.LinkRecord.CommBusy, False);
}

TEST_F(MainWindowTest, TheConnectDialogsCloseBoxActsAsCancel) {
    Start([](frmConnect& dialog) { dialog.close(); });
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_EQ(boxes_.Shown[0].Title, "Connection Required");
    EXPECT_EQ(state_.LinkRecord.Connected, False);
}

TEST_F(MainWindowTest, APortThatWillNotOpenTellsSoThenTheConsoleGoesOn) {
    host_.Virtual.Port.Missing = {1};
    Start([](frmConnect& dialog) {
        dialog.findChild<QPushButton*>(QStringLiteral("cmdConnect"))->click();
    });
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_EQ(boxes_.Shown[0].Title, "Connect Error");
    EXPECT_EQ(window_->ClientCount(), 3) << "the book is loaded all the same";
}

/// Pictures of the windows in light and dark, kept where ORVIA_SCREENSHOTS names a folder.
class MainWindowScreens : public MainWindowTest, public ::testing::WithParamInterface<bool> {
 protected:
    MainWindowScreens() : before_(QApplication::palette()) {
        if (GetParam()) {
            QPalette dark(QColor(53, 53, 53), QColor(53, 53, 53));
            dark.setColor(QPalette::Base, QColor(35, 35, 35));
            dark.setColor(QPalette::Highlight, QColor(42, 130, 218));
            QApplication::setPalette(dark);
        }
    }
    ~MainWindowScreens() override { QApplication::setPalette(before_); }

    void Keep(QWidget& form, const char* name) {
        const QPixmap picture = form.grab();
        EXPECT_FALSE(picture.isNull());
        const QString folder = qEnvironmentVariable("ORVIA_SCREENSHOTS");
        if (!folder.isEmpty()) {
            QDir().mkpath(folder);
            picture.save(QStringLiteral("%1/%2-%3-%4x.png")
                             .arg(folder, QLatin1String(name),
                                  GetParam() ? QStringLiteral("dark") : QStringLiteral("light"))
                             .arg(picture.devicePixelRatio()));
        }
    }

 private:
    QPalette before_;
};

TEST_P(MainWindowScreens, ShowWhatAnOperatorSees) {
    Start([this](frmConnect& dialog) {
        Keep(dialog, "frmConnect");
        dialog.findChild<QPushButton*>(QStringLiteral("cmdConnect"))->click();
    });
    ClickClient(1);
    Click("cmdGetSettings");
    host_.RunFor(1000);
    Keep(*window_, "frmMain");
    frmAbout about(window_.get());
    Keep(about, "frmAbout");
}

INSTANTIATE_TEST_SUITE_P(Palettes, MainWindowScreens, ::testing::Bool(),
                         [](const auto& dark) { return dark.param ? "Dark" : "Light"; });

}  // namespace
}  // namespace testing_support
