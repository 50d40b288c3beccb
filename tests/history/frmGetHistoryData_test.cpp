#include "history/frmGetHistoryData.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>

#include "history/frm_history_fixture.h"
#include "support/qt/run_events.h"

namespace testing_support {
namespace {

QString TextOf(const QWidget& form, const std::string& label) {
    return Find<QLabel>(form, label)->text();
}

class FrmGetHistoryData : public HistoryFormTest {};

TEST_F(FrmGetHistoryData, StartsAsItsDesignSays) {
    frmGetHistoryData form(console.Make.History(), 25, nullptr);
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Get History Data"));
    EXPECT_EQ(Find<QPushButton>(form, "cmdOkay")->text(), QStringLiteral("Okay"));
    EXPECT_EQ(Find<QPushButton>(form, "cmdCancel")->text(), QStringLiteral("Stop"));
    EXPECT_FALSE(Find(form, "cmdOkay")->isEnabled());
    EXPECT_TRUE(Find(form, "cmdCancel")->isEnabled());
    EXPECT_EQ(TextOf(form, "lblGetHistoryData"), QString());
    EXPECT_EQ(TextOf(form, "lblRetries"), QString());
    EXPECT_EQ(form.Tag(), "Starting");
}

TEST_F(FrmGetHistoryData, UploadRunsInItAndOkayOpensTheViewer) {
    Connect(100);
    QString told;
    bool focused = false;
    bool stopEnabled = true;
    int value = 0;
    console.Outside.Time.StartTimer(50 * Millisecond, [&] {
        frmGetHistoryData* const form = Dialog();
        if (form != nullptr && Find(*form, "cmdOkay")->isEnabled()) {
            focused = form->focusWidget() == Find(*form, "cmdOkay");
            stopEnabled = Find(*form, "cmdCancel")->isEnabled();
            QTest::qWait(60);
            told = TextOf(*form, "lblGetHistoryData");
            value = Find<QProgressBar>(*form, "ProgressBar1")->value();
            QTest::keyClick(form, Qt::Key_Return);
        }
    });
    int rows = 0;
    ModalAnswer<frmHistory> viewer([&](frmHistory& form) {
        rows = Find<HistoryList>(form, "lvwHistory")->Table().RowCount();
        Click(form, "cmdOK");
    });
    GetHistory();
    EXPECT_EQ(told, QStringLiteral("Upload complete: 100 records uploaded."));
    EXPECT_EQ(value, 100);
    EXPECT_TRUE(focused);
    EXPECT_FALSE(stopEnabled);
    EXPECT_TRUE(viewer.Given());
    EXPECT_EQ(rows, 100);
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(FrmGetHistoryData, StopEndsTheUploadThenShowsWhatCame) {
    Connect(2000);
    WithDialogAfter(2 * Second, [](frmGetHistoryData& form) { Click(form, "cmdCancel"); });
    int rows = 0;
    ModalAnswer<frmHistory> viewer([&](frmHistory& form) {
        rows = Find<HistoryList>(form, "lvwHistory")->Table().RowCount();
        Click(form, "cmdOK");
    });
    GetHistory();
    EXPECT_TRUE(viewer.Given());
    EXPECT_GT(rows, 0);
    EXPECT_LT(rows, 2000);
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_EQ(Boxes()[0].Text, "Retrieval cancelled by user. Received " + std::to_string(rows) +
                                   " records of 2000 records.");
}

TEST_F(FrmGetHistoryData, EnterEndsItOnStopAloneAndNotWhileItIsStillHeld) {
    Connect(2000);
    WithDialogAfter(1 * Second, [](frmGetHistoryData& form) {
        QTest::keyClick(&form, Qt::Key_Return);
        EXPECT_EQ(form.Tag(), "Running");
        QWidget* const stop = Find(form, "cmdCancel");
        stop->setFocus();
        QTest::simulateEvent(stop, true, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"),
                             true);
        EXPECT_EQ(form.Tag(), "Running") << "the press that began the upload";
        QTest::keyClick(stop, Qt::Key_Return);
        EXPECT_NE(form.Tag(), "Running");
        form.close();
    });
    ModalAnswer<frmHistory> viewer([](frmHistory& form) { form.reject(); });
    GetHistory();
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_EQ(Boxes()[0].Text.substr(0, 27), "Retrieval cancelled by user");
}

TEST_F(FrmGetHistoryData, EscapeEndsItAsStopDoes) {
    Connect(2000);
    WithDialogAfter(1 * Second,
                    [](frmGetHistoryData& form) { QTest::keyClick(&form, Qt::Key_Escape); });
    ModalAnswer<frmHistory> viewer([](frmHistory& form) { form.reject(); });
    GetHistory();
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_EQ(Boxes()[0].Text.substr(0, 27), "Retrieval cancelled by user");
}

TEST_F(FrmGetHistoryData, CloseBoxEndsItAsStopDoesInEveryWait) {
    Connect(2000);
    using simulator::FaultKind;
    for (int moment = 0; moment < 4000; moment += 190) {
        console.Outside.Boxes.Shown.clear();
        console.Outside.Network.Faults()
            .Clear()
            .OnRequest(0x0D, simulator::LineFault{}, 3)
            .OnRequest(0x0D, simulator::Plain(FaultKind::LoseReply))
            .OnRequest(0x0D, simulator::LineFault{}, 2)
            .OnRequest(0x0D, simulator::Plain(FaultKind::LoseAnswer));
        WithDialogAfter(moment * Millisecond, [](frmGetHistoryData& form) {
            form.close();
            EXPECT_TRUE(form.isVisible()) << "it goes at the end of the round";
        });
        ModalAnswer<frmHistory> viewer([](frmHistory& form) { form.close(); });
        GetHistory();
        const std::int32_t received = console.State.History.HistoryCount();
        ASSERT_EQ(Boxes().size(), 1U) << moment;
        EXPECT_EQ(Boxes()[0].Text, "Retrieval cancelled by user. Received " +
                                       std::to_string(received) + " records of 2000 records.");
        EXPECT_EQ(viewer.Given(), received > 0);
    }
}

TEST_F(FrmGetHistoryData, LeavingBeforeTheUploadHasBegunIsPassedOver) {
    Connect(5);
    const Posted early([] {
        frmGetHistoryData& form = *Dialog();
        ASSERT_EQ(form.Tag(), "Starting");
        form.close();
        QTest::keyClick(&form, Qt::Key_Escape);
        Click(form, "cmdCancel");
        EXPECT_EQ(form.Tag(), "Starting");
        EXPECT_TRUE(form.isVisible());
    });
    WithDialogAfter(5 * Second, [](frmGetHistoryData& form) { form.close(); });
    ModalAnswer<frmHistory> viewer([](frmHistory& form) { form.close(); });
    GetHistory();
    EXPECT_EQ(console.State.History.HistoryCount(), 5);
    EXPECT_TRUE(viewer.Given());
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(FrmGetHistoryData, CloseBoxBehindTheCompletionOpensTheViewer) {
    Connect(5);
    WithDialogAfter(5 * Second, [](frmGetHistoryData& form) { form.close(); });
    ModalAnswer<frmHistory> viewer([](frmHistory& form) { form.close(); });
    GetHistory();
    EXPECT_TRUE(viewer.Given());
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(FrmGetHistoryData, ErrorShowsItsBoxButNoViewer) {
    Connect(100);
    console.Outside.Network.Faults().OnRequest(
        0x0D, simulator::Plain(simulator::FaultKind::LoseReply), 200);
    GetHistory();
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_EQ(Boxes()[0].Text, "Error during retrieval. Received 0 records of 100 records.");
    EXPECT_EQ(Boxes()[0].Icon, BoxIcon::Stop);
}

TEST_F(FrmGetHistoryData, ProgramThatClosesInAnyWaitUnwindsWithoutABox) {
    for (int moment = 10; moment < 3000; moment += 170) {
        VirtualConsole other;
        other.Connect();
        simulator::LoggerSetup setup = BasicSite(1, 2, 1);
        setup.HistoryRecords = 200;
        other.AddSite(setup);
        other.OpenWindow(1);
        other.Outside.Network.Faults().Pass(8).LoseReply(2).Pass(2).LoseAnswer(2);
        other.Outside.Time.In(moment * Millisecond, [&other] {
            CloseEveryDialog();
            other.State.LinkRecord.ShuttingDown = True;
        });
        GetHistoryInWindows(other.Operation(), other.Make.History(), nullptr);
        EXPECT_TRUE(other.Outside.Boxes.Shown.empty()) << moment;
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    }
}

TEST_F(FrmGetHistoryData, BarMovesAtMostTwentyFiveTimesASecond) {
    frmGetHistoryData form(console.Make.History(), 100'000, nullptr);
    auto* bar = Find<QProgressBar>(form, "ProgressBar1");
    int moves = 0;
    QObject::connect(bar, &QProgressBar::valueChanged, bar, [&moves] { ++moves; });
    form.SetBarMaximum(100'000);
    QElapsedTimer clock;
    clock.start();
    int told = 0;
    while (clock.elapsed() < 400) {
        form.SetBarValue(++told % 100'000);
        QCoreApplication::processEvents();
    }
    EXPECT_LE(moves, 12);
    EXPECT_GE(moves, 4);
    QTest::qWait(100);
    EXPECT_EQ(bar->value(), told % 100'000) << "the last one is shown in any case";
}

TEST_F(FrmGetHistoryData, EveryControlCanBeReached) {
    frmGetHistoryData form(console.Make.History(), 25, nullptr);
    EXPECT_FALSE(Find(form, "ProgressBar1")->accessibleName().isEmpty());
    EXPECT_FALSE(Find(form, "lblRetries")->accessibleDescription().isEmpty());
    EXPECT_FALSE(Find(form, "lblGetHistoryData")->accessibleDescription().isEmpty());
    for (const char* button : {"cmdOkay", "cmdCancel"}) {
        EXPECT_NE(Find(form, button)->focusPolicy() & Qt::TabFocus, 0);
    }
}

}  // namespace
}  // namespace testing_support
