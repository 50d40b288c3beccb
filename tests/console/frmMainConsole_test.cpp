#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

#include "console/book_file.h"
#include "console/frmAddClient1.h"
#include "console/frmAddClient2.h"
#include "console/frmEditClient.h"
#include "console/frmLog.h"
#include "console/frmSelectClient.h"
#include "console/frmSignalLevel.h"
#include "link/frmConnectSetup.h"
#include "main_console_bench.h"
#include "support/qt/as_soon_as.h"

namespace {

using namespace forms_bench;
using namespace testing_support;

struct RowText {
    const char* Menu;
    const char* Name;
    const char* Text;
};

TEST_F(frmMainConsoleTest, MenusReadAsTheyAreTold) {
    const std::vector<RowText> rows{
        {"mnuClient", "mnuAddClient2", "Add New Client Radio"},
        {"mnuClient", "mnuEditClient2", "Edit Client Radio From List"},
        {"mnuClient", "mnuViewClient2", "View Client Logger From List"},
        {"mnuClient", "mnuDeleteClient2", "Delete Client Radio From List"},
        {"mnuClientS", "mnuAddClient", "Add New Client Radio"},
        {"mnuClientS", "mnuEditClient", "Edit Client Settings"},
        {"mnuClientS", "mnuViewClient", "View Client Logger "},
        {"mnuClientS", "mnuDeleteClient", "Delete Client Radio"},
        {"cmdForAll", "mnuGetSettingsFACW", "Get Sample for All Client Windows"},
        {"cmdForAll", "mnuAutoUpdateFACW", "Update All Client Windows Every Minute"},
        {"cmdForAll", "mnuClearHistoryFACW", "Clear History for All Client Windows"},
        {"cmdForAll", "mnuSyncFACW", "Sync Time for All Client Windows"},
        {"cmdForAll", "mnuStartupFACW", "Restart Sampling for All Client Windows"},
        {"mnuClientPopup", "mnuClientGetSettings", "Get Sample"},
        {"mnuClientPopup", "mnuClientSampleContinuously", "Sample Continuously"},
        {"mnuClientPopup", "mnuClientSignalLevel", "Signal Level"},
        {"mnuClientPopup", "mnuClientGetHistory", "Get History"},
        {"mnuClientPopup", "mnuClientClearHistory", "Clear History"},
        {"mnuClientPopup", "mnuClientSyncTime", "Sync Time"},
        {"mnuClientPopup", "mnuClientSetup", "Setup"},
        {"mnuClientPopup", "mnuClientFirmwareVersion", "Firmware Version"},
        {"mnuClientPopup", "mnuClientResetPulseAccs", "Reset Pulse Accumulators"}};
    for (const RowText& row : rows) {
        EXPECT_EQ(Row(row.Name).text(), QLatin1String(row.Text));
        EXPECT_TRUE(
            forms_bench::Find<QMenu>(*window_, row.Menu)->actions().contains(&Row(row.Name)))
            << row.Name;
    }
    EXPECT_EQ(forms_bench::Find<QMenu>(*window_, "mnuClient")->title(),
              QStringLiteral("  &Client"));
    EXPECT_EQ(forms_bench::Find<QMenu>(*window_, "cmdForAll")->title(),
              QStringLiteral("  For &All...  "));
}

TEST_F(frmMainConsoleTest, NoLetterOfTheLogIsThatOfAMenuOrButton) {
    frmLog log;
    auto* button = forms_bench::Find<QPushButton>(log, "cmdClose");
    std::vector<QKeySequence> letters{QKeySequence::mnemonic(button->text())};
    log.EndWalk();
    letters.push_back(QKeySequence::mnemonic(button->text()));
    for (const QKeySequence& letter : letters) {
        ASSERT_FALSE(letter.isEmpty());
        for (const QAction* menu : window_->menuBar()->actions()) {
            EXPECT_NE(QKeySequence::mnemonic(menu->text()), letter) << FromQt(menu->text());
        }
        for (const QPushButton* other : window_->findChildren<QPushButton*>()) {
            EXPECT_NE(QKeySequence::mnemonic(other->text()), letter) << FromQt(other->text());
        }
    }
}

TEST_F(frmMainConsoleTest, OneClickOpensAClientAndTheNextBringsItForward) {
    ClickItem(2);
    ASSERT_NE(Window(0), nullptr);
    EXPECT_EQ(Window(0)->Caption(), "Site 2");
    ClickItem(1);
    EXPECT_EQ(Window(1)->IsActive(), True);
    ClickItem(2);
    EXPECT_EQ(state_.Windows.NumClientWindows, 2);
    EXPECT_EQ(Window(0)->IsActive(), True);
}

TEST_F(frmMainConsoleTest, OneClickRestoresAMinimizedWindow) {
    ClickItem(2);
    forms_bench::Find<QMdiArea>(*window_, "MDIArea")->subWindowList().front()->showMinimized();
    QCoreApplication::processEvents();
    ASSERT_TRUE(Window(0)->IsMinimized());
    ClickItem(2);
    EXPECT_FALSE(Window(0)->IsMinimized());
    EXPECT_EQ(state_.Windows.NumClientWindows, 1);
}

TEST_F(frmMainConsoleTest, RightButtonShowsTheMenuAndOpensNothing) {
    ClickItem(2, Qt::RightButton);
    EXPECT_EQ(QApplication::activePopupWidget(), forms_bench::Find(*window_, "mnuClientS"));
    forms_bench::Find<QMenu>(*window_, "mnuClientS")->close();
    EXPECT_EQ(state_.Windows.NumClientWindows, 0);
}

TEST_F(frmMainConsoleTest, ReleaseWithoutAPressInTheListIsNoClick) {
    List().setCurrentRow(1);
    QTest::mouseRelease(List().viewport(), Qt::LeftButton, {}, PlaceOf(2));
    EXPECT_EQ(state_.Windows.NumClientWindows, 0);
}

TEST_F(frmMainConsoleTest, DropExchangesEntriesAndOpensNothing) {
    Drop(QStringLiteral("Site 1"), PlaceOf(3));
    EXPECT_EQ(Names(), "Site 3,Site 2,Site 1");
    EXPECT_EQ(List().currentRow(), 2);
    EXPECT_EQ(state_.Windows.NumClientWindows, 0);
    AddressBook filed;
    ReadBookFile(state_.SettingsRecord.AddressBookPath, filed.Entries);
    EXPECT_EQ(filed.Entries[1].Name, "Site 3");
}

TEST_F(frmMainConsoleTest, DropBelowTheLastItemIsOnTheLast) {
    Drop(QStringLiteral("Site 1"), QPoint(5, List().viewport()->height() - 2));
    EXPECT_EQ(Names(), "Site 3,Site 2,Site 1");
}

TEST_F(frmMainConsoleTest, WizardAddsARadio) {
    const ModalAnswer<frmAddClient1> name([](frmAddClient1& page) {
        Type("Pump");
        forms_bench::Click(page, "cmdNext");
    });
    const ModalAnswer<frmAddClient2> address([](frmAddClient2&) {
        Type("2a00a0961f2e3d");
        Press(Qt::Key_Return);
    });
    Choose("mnuAddClient2");
    EXPECT_EQ(Names(), "Site 1,Site 2,Site 3,Pump");
    EXPECT_EQ(state_.Book.Entries[4].Channel, 0x2A);
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_EQ(boxes_.Shown[0].Text, "The current address book has been updated.");
}

TEST_F(frmMainConsoleTest, PickedClientIsEdited) {
    AwaitRow("mnuEditClient2");
    const ModalAnswer<frmSelectClient> pick([](frmSelectClient&) {
        Press(Qt::Key_Down);
        Press(Qt::Key_Return);
    });
    const ModalAnswer<frmEditClient> edit([](frmEditClient& form) {
        forms_bench::Find<QLineEdit>(form, "txtClientRadioName")
            ->setText(QStringLiteral("Weir & more"));
        forms_bench::Click(form, "cmdNext");
    });
    Choose("mnuEditClient2");
    EXPECT_EQ(Names(), "Site 1,Weir & more,Site 3");
}

TEST_F(frmMainConsoleTest, PickedClientIsViewedAndItsDeletionRefused) {
    AwaitRow("mnuDeleteClient2");
    for (const char* row : {"mnuViewClient2", "mnuDeleteClient2"}) {
        const ModalAnswer<frmSelectClient> pick([](frmSelectClient&) {
            Press(Qt::Key_End);
            Press(Qt::Key_Return);
        });
        Choose(row);
    }
    EXPECT_EQ(Window(0)->Caption(), "Site 3");
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_EQ(boxes_.Shown[0].Title, "Delete Error");
}

TEST_F(frmMainConsoleTest, SelectedClientIsDeleted) {
    AwaitRow("mnuDeleteClient");
    List().setCurrentRow(0);
    Choose("mnuDeleteClient");
    EXPECT_EQ(Names(), "Site 2,Site 3");
    EXPECT_EQ(state_.Book.Entries.UpperBound(), 2);
}

TEST_F(frmMainConsoleTest, WalkTellsInItsLog) {
    ClickItem(1);
    ClickItem(3);
    AwaitCommands();
    Choose("mnuGetSettingsFACW");
    auto* log = window_->findChild<frmLog*>();
    ASSERT_NE(log, nullptr);
    EXPECT_EQ(forms_bench::Find<QPlainTextEdit>(*log, "txtLog")->toPlainText(),
              QStringLiteral("Getting sample for client window Site 1...OK\n"
                             "Getting sample for client window Site 3...OK\nDone\n"));
    KeepPictures(*window_);
    forms_bench::Click(*log, "cmdClose");
    EXPECT_FALSE(log->isVisible());
    QCoreApplication::processEvents();
    EXPECT_TRUE(Window(0)->IsActive() != False || Window(1)->IsActive() != False);
    ExpectAtRest();
}

TEST_F(frmMainConsoleTest, CancelPressedDuringAWalkEndsItAtTheNextWindow) {
    ClickItem(1);
    ClickItem(2);
    AwaitCommands();
    const AsSoonAs cancel(
        [this] { return WalkIsOn("Syncing time for client window Site 1..."); },
        [this] { forms_bench::Click(*window_->findChild<frmLog*>(), "cmdClose"); });
    Choose("mnuSyncFACW");
    const QString text =
        forms_bench::Find<QPlainTextEdit>(*window_->findChild<frmLog*>(), "txtLog")->toPlainText();
    EXPECT_TRUE(text.contains(QStringLiteral("\nCancel Request...\n")));
    EXPECT_TRUE(text.endsWith(QStringLiteral("\nOperation Cancelled\n")));
    ExpectAtRest();
}

TEST_F(frmMainConsoleTest, LogClosedByItsFrameDuringAWalkDoesNoHarm) {
    ClickItem(1);
    ClickItem(2);
    AwaitCommands();
    bool closed = false;
    const AsSoonAs close([this] { return WalkIsOn("Getting sample for client window Site 1..."); },
                         [&] { closed = window_->findChild<frmLog*>()->close(); });
    Choose("mnuGetSettingsFACW");
    EXPECT_TRUE(closed);
    EXPECT_EQ(window_->findChild<frmLog*>(), nullptr);
    ExpectAtRest();
}

TEST_F(frmMainConsoleTest, WindowsClosedInAnyWaitOfAWalkDoNoHarm) {
    for (int moment = 100; moment <= 4000; moment += 300) {
        ClickItem(1);
        ClickItem(2);
        AwaitCommands();
        host_.Virtual.Time.In(moment * Millisecond, [this] {
            for (QMdiSubWindow* window : forms_bench::Find<QMdiArea>(*window_, "MDIArea")
                                             ->subWindowList(QMdiArea::StackingOrder)) {
                window->close();
            }
        });
        Choose("mnuGetSettingsFACW");
        ASSERT_TRUE(RunEventsUntil([this] { return state_.Windows.NumClientWindows == 0; }));
        ExpectAtRest();
    }
}

TEST_F(frmMainConsoleTest, ProgramClosedInAWalkUnwinds) {
    ClickItem(1);
    ClickItem(2);
    AwaitCommands();
    QTimer closer;
    QObject::connect(&closer, &QTimer::timeout, window_.get(), [this] { window_->close(); });
    closer.start(1);
    Choose("mnuGetSettingsFACW");
    EXPECT_NE(state_.LinkRecord.ShuttingDown, False);
    EXPECT_EQ(window_->findChild<frmLog*>(), nullptr);
    ExpectAtRest();
}

TEST_F(frmMainConsoleTest, AutoUpdateRowShowsTheModeAndNotTheChoice) {
    ClickItem(1);
    AwaitCommands();
    for (const auto& logger : host_.Virtual.Network.Loggers()) {
        logger->Silence();
    }
    Choose("mnuAutoUpdateFACW");
    EXPECT_FALSE(Row("mnuAutoUpdateFACW").isChecked());
    host_.Virtual.Network.Loggers()[0]->Wake();
    Choose("mnuAutoUpdateFACW");
    ASSERT_TRUE(RunEventsUntil([this] { return Row("mnuAutoUpdateFACW").isChecked(); }));
    EXPECT_FALSE(Row("mnuGetSettingsFACW").isEnabled());
    Choose("mnuAutoUpdateFACW");
    ASSERT_TRUE(RunEventsUntil([this] { return !Row("mnuAutoUpdateFACW").isChecked(); }));
    ExpectAtRest();
}

// ----- the settings of the connection

TEST_F(frmMainConsoleTest, PortChangedBeforeACancelledConnectStaysAndNothingIsConnected) {
    frmConnect form(Contexts(state_, *window_).Radio(), state_.SettingsRecord, state_.Outside,
                    nullptr);
    Show(form);
    const ModalAnswer<frmConnectSetup> change([](frmConnectSetup& setup) {
        forms_bench::Find<QComboBox>(setup, "cmbPort")->setCurrentIndex(4);
        forms_bench::Find<QPushButton>(setup, "cmdOK")->click();
    });
    forms_bench::Click(form, "cmdSetup");
    EXPECT_EQ(forms_bench::Find<QLabel>(form, "lblPort")->text(), QStringLiteral("Port: COM5"));
    EXPECT_EQ(forms_bench::Find<QLabel>(form, "lblAddressBook")->text(),
              QStringLiteral("Address Book:\nsite"));
    forms_bench::Click(form, "cmdCancel");
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(state_.SettingsRecord.PortName, "COM5");
    EXPECT_EQ(state_.LinkRecord.Connected, False);
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_EQ(boxes_.Shown[0].Title, "Connection Required");
}

TEST_F(frmMainConsoleTest, CancelledSettingsLeaveTheConnection) {
    frmConnect form(Contexts(state_, *window_).Radio(), state_.SettingsRecord, state_.Outside,
                    nullptr);
    Show(form);
    const ModalAnswer<frmConnectSetup> leave([](frmConnectSetup& setup) { setup.reject(); });
    forms_bench::Click(form, "cmdSetup");
    EXPECT_NE(state_.LinkRecord.Connected, False);
}

// ----- the signal monitor

/// Whether the monitor's loop has begun to show levels.
bool MonitorPolls() {
    const auto* form = qobject_cast<frmSignalLevel*>(QApplication::activeModalWidget());
    return form != nullptr &&
           forms_bench::Find<QLabel>(*form, "lblDBm")->text() == QStringLiteral("-62 DBm");
}

TEST_F(frmMainConsoleTest, MonitorShowsLevelAndNextRadioUntilExit) {
    state_.Book.Entries[2].Name = "North & South";
    ClickItem(1);
    ClickItem(2);
    AwaitCommands();
    int round = 0;
    const ModalAnswer<frmSignalLevel> watch([&](frmSignalLevel& form) {
        auto* look = new QTimer(&form);
        QObject::connect(look, &QTimer::timeout, &form, [&, look] {
            const QString level = forms_bench::Find<QLabel>(form, "lblDBm")->text();
            if (round == 0 && level == QStringLiteral("-62 DBm")) {
                EXPECT_EQ(forms_bench::Find<QLabel>(form, "lblClientName")->text(),
                          QStringLiteral("North & South"));
                EXPECT_EQ(forms_bench::Find<QLabel>(form, "lblMacAddress")->text(),
                          QStringLiteral("00-A0-96-00-00-02"));
                EXPECT_EQ(forms_bench::Find<QLabel>(form, "lblChannel")->text(),
                          QStringLiteral("10"));
                EXPECT_EQ(forms_bench::Find<QProgressBar>(form, "barSignalLevel")->value(), 34);
                KeepPictures(form);
                ExpectReach(form);
                ++round;
                forms_bench::Click(form, "cmdNext");
            } else if (round == 1 && level == QStringLiteral("---")) {
                EXPECT_EQ(forms_bench::Find<QLabel>(form, "lblClientName")->text(),
                          QStringLiteral("Site 1"));
                ++round;
            } else if (round == 2 && level == QStringLiteral("-62 DBm")) {
                look->stop();
                ++round;
                forms_bench::Click(form, "cmdExit");
            }
        });
        look->start(1);
    });
    Click("cmdSignalLevel");
    EXPECT_EQ(round, 3);
    EXPECT_TRUE(boxes_.Shown.empty());
    ExpectAtRest();
}

TEST_F(frmMainConsoleTest, EnterPressesTheMonitorsButtonThatHasTheFocus) {
    ClickItem(1);
    ClickItem(2);
    AwaitCommands();
    const auto name = [](const QWidget& form) {
        return forms_bench::Find<QLabel>(form, "lblClientName")->text();
    };
    bool pressed = false;
    int looks = 0;
    QString shown;
    const AsSoonAs next(MonitorPolls, [&] {
        forms_bench::Find(*QApplication::activeModalWidget(), "cmdNext")->setFocus();
        Press(Qt::Key_Return);
        pressed = true;
    });
    const AsSoonAs leave(
        [&] {
            constexpr int Enough = 2000;
            return pressed && MonitorPolls() &&
                   (++looks > Enough ||
                    name(*QApplication::activeModalWidget()) == QStringLiteral("Site 1"));
        },
        [&] {
            shown = name(*QApplication::activeModalWidget());
            QApplication::activeModalWidget()->close();
        });
    Click("cmdSignalLevel");
    EXPECT_EQ(shown, QStringLiteral("Site 1"));
    ExpectAtRest();
}

TEST_F(frmMainConsoleTest, FrameOfARunningMonitorIsRefusedAndEndsIt) {
    ClickItem(1);
    AwaitCommands();
    bool refused = false;
    const AsSoonAs close(MonitorPolls, [&] {
        QWidget& form = *QApplication::activeModalWidget();
        EXPECT_FALSE(forms_bench::Find(form, "cmdNext")->isEnabled());
        refused = !form.close() && form.isVisible();
    });
    Click("cmdSignalLevel");
    EXPECT_TRUE(refused);
    ExpectAtRest();
}

TEST_F(frmMainConsoleTest, DeviceLostUnderTheMonitorIsToldAndEndsIt) {
    ClickItem(1);
    AwaitCommands();
    const AsSoonAs pull(MonitorPolls, [this] { host_.Virtual.Port.PullOut(); });
    bool stayed = false;
    const Later leave(2000, [&] {
        stayed = QApplication::activeModalWidget() != nullptr;
        if (stayed) {
            Press(Qt::Key_Escape);
        }
    });
    Click("cmdSignalLevel");
    EXPECT_TRUE(pull.Done());
    EXPECT_FALSE(stayed) << "two seconds here are forty on the line";
    ASSERT_EQ(boxes_.Shown.size(), 1U);
    EXPECT_EQ(boxes_.Shown[0].Text, "Error: unable to communicate with server radio");
    EXPECT_EQ(boxes_.Shown[0].Title, "Server Connection Error");
    ASSERT_TRUE(RunEventsUntil([this] {
        return forms_bench::Find<QLineEdit>(*window_, "txtServerState")->text() ==
               QStringLiteral("Disconnected");
    }));
    ExpectAtRest();
}

TEST_F(frmMainConsoleTest, EscapeEndsTheMonitorAndItCanBeShownAgain) {
    ClickItem(1);
    AwaitCommands();
    for (int showing = 0; showing < 2; ++showing) {
        const AsSoonAs escape(MonitorPolls, [] { Press(Qt::Key_Escape); });
        Click("cmdSignalLevel");
        EXPECT_TRUE(escape.Done());
        ExpectAtRest();
        AwaitCommands();
    }
}

TEST_F(frmMainConsoleTest, ProgramClosedUnderTheMonitorUnwinds) {
    ClickItem(1);
    AwaitCommands();
    QTimer closer;
    QObject::connect(&closer, &QTimer::timeout, window_.get(), [this] { window_->close(); });
    const ModalAnswer<frmSignalLevel> watch([&](frmSignalLevel&) { closer.start(1); });
    Click("cmdSignalLevel");
    ASSERT_TRUE(RunEventsUntil([this] { return state_.LinkRecord.ShuttingDown != False; }));
    ExpectAtRest();
}

}  // namespace
