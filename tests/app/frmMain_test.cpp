#include "app/frmMain.h"

#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMenu>
#include <QMenuBar>
#include <QTextDocument>

#include "app/frmAbout.h"
#include "app/frmMain_fixture.h"
#include "app/lifecycle.h"
#include "console/forms_bench.h"
#include "platform/qt/text_qt.h"
#include "platform/qt/twips.h"
#include "support/qt/desk_look.h"
#include "support/work_time.h"

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
    EXPECT_EQ(titles, (std::vector<std::string>{"&File", "  &Client", "  For &All...  ", "&Data",
                                                "&Window", " &Help"}));
    EXPECT_EQ(TextsOf(Find<QMenu>("mnuFile")),
              (std::vector<std::string>{"Load Address Book", "New Blank Address Book", "E&xit"}));
    EXPECT_EQ(TextsOf(Find<QMenu>("mnuHelp")),
              (std::vector<std::string>{"&Help", "&About", "&Trace of the Link...",
                                        "&Save Report for Support..."}));
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

TEST_F(MainWindowTest, EnterPressesTheButtonThatHasTheFocus) {
    StartConnected();
    ClickClient(1);
    auto& button = Find<QPushButton>("cmdGetSettings");
    ASSERT_TRUE(host_.RunUntil([&] { return button.isEnabled(); }));
    QTest::keyClick(&button, Qt::Key_Return);
    EXPECT_NE(WindowOf(1)->SettingsValid(), False);
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

TEST_F(MainWindowTest, TheConnectButtonShowsTheDialogAfterTheDeviceWasLostDuringSampling) {
    StartConnected();
    ClickClient(1);
    Click("cmdSampleContinuously");
    ASSERT_TRUE(host_.RunUntil(
        [this] { return WindowOf(1)->Model().Record.LoggerState.NumDataPoints == 2; }));
    host_.Virtual.Port.PullOut();
    auto& button = Find<QPushButton>("cmdConnect");
    ASSERT_TRUE(host_.RunUntil([&] { return button.text() == QStringLiteral("C&onnect"); }));
    boxes_.Shown.clear();
    bool shown = false;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
        if (auto* dialog = dynamic_cast<frmConnect*>(QApplication::activeModalWidget())) {
            shown = true;
            dialog->findChild<QPushButton*>(QStringLiteral("cmdConnect"))->click();
        }
    });
    look.start(1);
    Click("cmdConnect");
    EXPECT_TRUE(host_.RunUntil([&] { return shown; })) << "one press is enough";
    EXPECT_TRUE(host_.RunUntil([this] { return host_.Virtual.Port.PortOpen(); }));
    EXPECT_EQ(state_.SamplingRecord.ContinuousMode, SamplingIdle);
    EXPECT_TRUE(boxes_.Shown.empty());
    ExpectAtRest();
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

const std::string LinkDownText = "Error: unable to communicate with server radio";

TEST_F(MainWindowTest, ADeviceThatVanishesWhileTheRadioIsCalledTellsSoOnce) {
    StartConnected();
    ClickClient(1);
    state_.LinkRecord.LinkState = LinkConnecting;
    host_.Virtual.Network.RadioFaults().OnRequest(
        'A', simulator::Plain(simulator::FaultKind::LoseAnswer));
    Once([this] { return state_.LinkRecord.CommBusy != False; },
         [this] { host_.Virtual.Port.PullOut(); });
    Click("cmdGetSettings");
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_EQ(boxes_.Shown[0].Text, LinkDownText);
    EXPECT_EQ(boxes_.Shown[0].Title, "Server Connection Error");
    EXPECT_EQ(boxes_.Shown[0].Icon, BoxIcon::Stop);
    EXPECT_EQ(boxes_.Shown[0].Buttons, BoxButtons::Ok);
    ExpectAtRest();
}

TEST_F(MainWindowTest, ADeviceThatVanishesWhileTheLoggerIsAskedTellsNothing) {
    StartConnected();
    ClickClient(1);
    bool pulled = false;
    Once(
        [this] {
            return state_.LinkRecord.LinkState == LinkNormal && state_.LinkRecord.CommBusy != False;
        },
        [&] {
            pulled = true;
            host_.Virtual.Port.PullOut();
        });
    Click("cmdGetSettings");
    EXPECT_TRUE(pulled);
    EXPECT_EQ(WindowOf(1)->SettingsValid(), False);
    EXPECT_TRUE(boxes_.Shown.empty());
    ExpectAtRest();
}

TEST_F(MainWindowTest, ADeviceThatVanishesInsideEveryWaitLeavesNothingBusy) {
    StartConnected();
    ClickClient(1);
    for (int moment = 100; moment <= 3100; moment += 600) {
        boxes_.Shown.clear();
        ClickAndLater("cmdGetSettings", moment, [this] { host_.Virtual.Port.PullOut(); });
        ExpectAtRest();
        ASSERT_TRUE(host_.RunUntil([this] { return !host_.Virtual.Port.PortOpen(); }));
        EXPECT_LE(boxes_.Shown.size(), 1U) << moment;
        for (const BoxContent& box : boxes_.Shown) {
            EXPECT_EQ(box.Text, LinkDownText) << moment;
        }
    }
    Click("cmdGetSettings");
    EXPECT_NE(WindowOf(1)->SettingsValid(), False) << "a device that is back is opened again";
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

TEST_F(MainWindowTest, EveryControlThatTakesInputHasAnAccessibleNameAndATabStop) {
    StartConnected();
    ClickClient(1);
    ASSERT_TRUE(host_.RunUntil([this] { return Find<QPushButton>("cmdSetup").isEnabled(); }));
    const std::vector<std::string> stops = forms_bench::TabOrder(*window_, "lvwClients");
    const std::vector<std::string> told{"lvwClients",     "cmdGetSettings", "cmdSampleContinuously",
                                        "cmdSignalLevel", "cmdGetHistory",  "cmdClearHistory",
                                        "cmdSyncTime",    "cmdSetup",       "cmdConnect"};
    ASSERT_GE(stops.size(), told.size());
    EXPECT_TRUE(std::equal(told.begin(), told.end(), stops.begin()))
        << ::testing::PrintToString(stops);
    for (const std::string& name : told) {
        QAccessibleInterface* reader =
            QAccessible::queryAccessibleInterface(forms_bench::Find(*window_, name));
        ASSERT_NE(reader, nullptr) << name;
        EXPECT_FALSE(reader->text(QAccessible::Name).isEmpty()) << name;
    }
    for (const char* name : {"txtServerState", "txtSystemID", "txtComPort"}) {
        EXPECT_FALSE(Find<QLineEdit>(name).accessibleName().isEmpty()) << name;
    }
}

TEST_F(MainWindowTest, TheListFollowsTheWindowsHeightButNeverFallsUnder1300Twips) {
    StartConnected();
    const auto& list = Find<QListWidget>("lvwClients");
    const int height = list.height();
    const QSize size = window_->size();
    window_->resize(size.width(), size.height() + 120);
    EXPECT_TRUE(host_.RunUntil([&] { return list.height() == height + 120; })) << list.height();
    window_->resize(size.width(), 100);
    EXPECT_TRUE(host_.RunUntil([&] { return list.height() < height; })) << list.height();
    EXPECT_GE(list.height(), PixelsOfTwips(1300));
    EXPECT_EQ(list.minimumHeight(), PixelsOfTwips(1300)) << "whatever the font asks for";
}

TEST_F(MainWindowTest, APathWithMarkupIsShownAsItStandsInTheTip) {
    state_.SettingsRecord.AddressBookPath = "/books/<b>north</b> & south.obk";
    window_->SetAddressBookName("south");
    QTextDocument tip;
    tip.setHtml(Find<QLabel>("lblAddressBook").toolTip());
    EXPECT_EQ(tip.toPlainText(), QStringLiteral("/books/<b>north</b> & south.obk"));
    state_.SettingsRecord.AddressBookPath.clear();
    window_->SetAddressBookName("-- None --");
    EXPECT_TRUE(Find<QLabel>("lblAddressBook").toolTip().isEmpty());
}

TEST_F(MainWindowTest, ABookOfTenThousandIsListedQuickly) {
    StartConnected();
    AddressBook book;
    for (int i = 0; i < 10000; ++i) {
        book.Entries.Append({.Name = "Site " + std::to_string(i)});
    }
    const WorkTime work;
    RefreshClientList(book, *window_);
    EXPECT_EQ(window_->ClientCount(), 10000);
    EXPECT_LT(work.Milliseconds(), 2000) << "seconds would be a mistake of another order";
}

/// Pictures of the windows in light and dark, kept where ORVIA_SCREENSHOTS names a folder.
class MainWindowScreens : public MainWindowTest, public ::testing::WithParamInterface<bool> {
 protected:
    /// Labels and buttons have the room that their texts ask for, and fields that of theirs.
    static void ExpectNothingCutOff(const QWidget& form) {
        int looked = 0;
        for (const QWidget* child : form.findChildren<QWidget*>()) {
            const auto* label = qobject_cast<const QLabel*>(child);
            const auto* button = qobject_cast<const QPushButton*>(child);
            const bool told = label != nullptr ? !label->wordWrap() && !label->text().isEmpty()
                                               : button != nullptr && !button->text().isEmpty();
            if (child->isVisibleTo(&form) && told) {
                ++looked;
                EXPECT_GE(child->width(), child->sizeHint().width()) << NameOf(*child);
                EXPECT_GE(child->height(), child->sizeHint().height()) << NameOf(*child);
            }
            const auto* field = qobject_cast<const QLineEdit*>(child);
            if (field != nullptr && field->isVisibleTo(&form)) {
                EXPECT_GT(field->width(), field->fontMetrics().horizontalAdvance(field->text()))
                    << NameOf(*child);
            }
        }
        EXPECT_GT(looked, 1);
    }

    static std::string NameOf(const QWidget& widget) { return FromQt(widget.objectName()); }

    void Keep(QWidget& form, const char* name) {
        EXPECT_FALSE(form.grab().isNull());
        ExpectNothingCutOff(form);
        KeepPicture(form, QLatin1String(name) + QLatin1Char('-') + DeskName(GetParam()));
    }

 private:
    const DeskColours colours_{GetParam()};
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
    EXPECT_EQ(Find<QLineEdit>("txtServerState").text(), QStringLiteral("Connected - Normal"));
    EXPECT_EQ(Find<QLabel>("lblAddressBook").text(), QStringLiteral("site"));
    frmAbout about(window_.get());
    about.show();
    Keep(about, "frmAbout");
}

INSTANTIATE_TEST_SUITE_P(Palettes, MainWindowScreens, ::testing::Bool(),
                         [](const auto& dark) { return dark.param ? "Dark" : "Light"; });

}  // namespace
}  // namespace testing_support
