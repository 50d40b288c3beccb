#include "trace/frmTrace.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <set>

#include "common/path_text.h"
#include "link/frame_codec.h"
#include "support/qt/desk_look.h"
#include "support/qt/find_control.h"
#include "support/qt/run_events.h"
#include "support/virtual_console.h"
#include "trace/frmTraceList.h"

namespace {

using namespace testing_support;

/// The window over a console that talks to two sites.
class FrmTraceTest : public ::testing::Test {
 protected:
    FrmTraceTest() {
        console_.AddSite(BasicSite(1));
        console_.AddSite(BasicSite(2));
        console_.Connect();
    }

    void Open() {
        form_->ShowOrRaise();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form_.get()));
    }
    void Select(int entry) {
        ASSERT_TRUE(comm::SelectClient(console_.Radio(), console_.State.Book.Entries[entry]));
    }
    void ReadStatus() {
        LoggerRecord record;
        static_cast<void>(cmd::GetLoggerStatus(console_.State.Exchange, record));
    }
    /// One exchange with each site, the second with a fault.
    void TalkToBoth() {
        Select(1);
        ReadStatus();
        Select(2);
        console_.Outside.Network.Faults().NextReply(simulator::CorruptByte(4));
        ReadStatus();
    }
    /// Puts so many exchanges through the recorder.
    void Fill(int count) {
        const Bytes request = comm::EncodeFrame(Bytes{0x0C});
        for (int i = 0; i < count; ++i) {
            console_.State.Recorder.OnTry({1, 1, 0, {}});
            console_.State.Recorder.Output(request);
        }
    }

    template <typename Widget = QWidget>
    Widget* Control(const std::string& name) const {
        return Find<Widget>(*form_, name);
    }
    QTableView* List() const { return Control<QTableView>("lvwTrace"); }
    int Rows() const { return List()->model()->rowCount(); }
    std::string Cell(int row, int column) const {
        return FromQt(List()->model()->index(row, column).data().toString());
    }
    [[nodiscard]] bool Shows(int rows) const {
        return RunEventsUntil([this, rows] { return Rows() == rows; });
    }
    bool AtEnd() const {
        const QScrollBar* bar = List()->verticalScrollBar();
        return bar->value() == bar->maximum();
    }
    void Choose(const std::string& name, const char* text) const {
        auto* list = Control<QComboBox>(name);
        const int item = list->findText(QLatin1String(text), Qt::MatchStartsWith);
        ASSERT_GE(item, 0) << text;
        list->setCurrentIndex(item);
        Q_EMIT list->activated(item);
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::keyClick(form_->windowHandle(), key, modifiers);
        QCoreApplication::processEvents();
    }
    /// The key of a button or a box, which goes down and up again before it has done its work.
    void Mnemonic(char key) const {
        QTest::keyClick(form_->windowHandle(), key, Qt::AltModifier);
        const auto buttons = form_->findChildren<QAbstractButton*>();
        ASSERT_TRUE(RunEventsUntil([&buttons] {
            return std::none_of(buttons.begin(), buttons.end(),
                                [](const auto* button) { return button->isDown(); });
        }));
    }
    int Kept() const {
        const TraceStore& kept = console_.State.Recorder.Kept();
        return static_cast<int>(kept.End() - kept.First());
    }

    std::string folder_ = FreshFolder("frmTrace");
    VirtualConsole console_{folder_};
    std::unique_ptr<frmTrace> form_ = std::make_unique<frmTrace>(
        console_.State.Recorder, console_.State.Book, console_.State.Outside, nullptr);
};

TEST_F(FrmTraceTest, ShowsWhatHappenedBeforeItWasOpened) {
    TalkToBoth();
    Open();
    ASSERT_EQ(Rows(), Kept());
    ASSERT_GT(Rows(), 6);
    EXPECT_EQ(Cell(Rows() - 1, 2), "Site 2 (channel 10, MAC 00-00-02)");
    EXPECT_EQ(Cell(Rows() - 1, 3), "read status");
    EXPECT_EQ(Cell(Rows() - 1, 7), "CRC differs");
    EXPECT_EQ(FromQt(Control<QLabel>("lblState")->text()),
              std::to_string(Rows()) + " shown of " + std::to_string(Rows()) + " kept");
    EXPECT_TRUE(console_.Outside.Boxes.Shown.empty());
}

TEST_F(FrmTraceTest, FollowsTheLinkWithoutUsingIt) {
    Open();
    const auto written = console_.Outside.Network.Written().size();
    const int before = Rows();
    ASSERT_TRUE(Shows(before));
    EXPECT_EQ(console_.Outside.Network.Written().size(), written);
    Select(1);
    ASSERT_TRUE(RunEventsUntil([&] { return Rows() > before; }));
    EXPECT_EQ(Rows(), Kept());
}

TEST_F(FrmTraceTest, FollowsTheEndUnlessTheOperatorScrolledAway) {
    Fill(500);
    Open();
    EXPECT_TRUE(AtEnd());
    Fill(100);
    ASSERT_TRUE(Shows(Kept()));
    EXPECT_TRUE(AtEnd());
    List()->verticalScrollBar()->setValue(50);
    Fill(100);
    ASSERT_TRUE(Shows(Kept()));
    EXPECT_EQ(List()->verticalScrollBar()->value(), 50);
    List()->scrollToBottom();
    Fill(100);
    ASSERT_TRUE(Shows(Kept()));
    EXPECT_TRUE(AtEnd());
}

TEST_F(FrmTraceTest, RowsThatAreReadStayInPlaceWhileTheOldestGo) {
    Fill(static_cast<int>(TraceStore::MostEntries));
    Open();
    ASSERT_EQ(Rows(), static_cast<int>(TraceStore::MostEntries));
    List()->verticalScrollBar()->setValue(5000);
    Fill(30);
    const auto* list = static_cast<TraceList*>(List());
    ASSERT_TRUE(RunEventsUntil(
        [&] { return list->Model().Rows().Number(0) == console_.State.Recorder.Kept().First(); }));
    EXPECT_EQ(List()->verticalScrollBar()->value(), 4970);
}

TEST_F(FrmTraceTest, OverAQuietLinkNothingWakesIt) {
    Open();
    const auto running = [this] {
        const auto timers = form_->findChildren<QTimer*>();
        return std::any_of(timers.begin(), timers.end(),
                           [](const QTimer* timer) { return timer->isActive(); });
    };
    ASSERT_TRUE(RunEventsUntil([&] { return !running(); }));
    Fill(1);
    EXPECT_TRUE(running());
    ASSERT_TRUE(Shows(Kept()));
    ASSERT_TRUE(RunEventsUntil([&] { return !running(); }));
    Fill(1);
    ASSERT_TRUE(Shows(Kept())) << "it looks again behind each change";
    form_->close();
    Fill(1);
    EXPECT_FALSE(running()) << "a hidden window follows nothing";
}

TEST_F(FrmTraceTest, AHundredThousandRowsScroll) {
    Fill(static_cast<int>(TraceStore::MostEntries));
    QElapsedTimer watch;
    watch.start();
    Open();
    for (int row = 0; row < Rows(); row += 1000) {
        List()->verticalScrollBar()->setValue(row);
        form_->grab();
    }
    EXPECT_LT(watch.elapsed(), 10'000);
    RecordProperty("milliseconds", static_cast<int>(watch.elapsed()));
}

TEST_F(FrmTraceTest, PauseHoldsTheListAndGoesOnAfterwards) {
    Open();
    const int before = Rows();
    Mnemonic('p');
    EXPECT_TRUE(Control<QCheckBox>("chkPause")->isChecked());
    Fill(10);
    bool later = false;
    const Later look(400, [&] { later = true; });
    ASSERT_TRUE(RunEventsUntil([&] { return later; }));
    EXPECT_EQ(Rows(), before);
    EXPECT_TRUE(Control<QLabel>("lblState")->text().endsWith(QLatin1String(", paused")));
    Mnemonic('p');
    EXPECT_EQ(Rows(), before + 10);
}

TEST_F(FrmTraceTest, ShowsOneLoggerOneKindOrFaultsAlone) {
    TalkToBoth();
    Open();
    Choose("cmbLogger", "Site 1");
    EXPECT_EQ(Rows(), 1);
    EXPECT_EQ(Cell(0, 7), "");
    Choose("cmbLogger", "Site 2");
    EXPECT_EQ(Rows(), 1);
    EXPECT_EQ(Cell(0, 7), "CRC differs");
    Choose("cmbLogger", "All");
    Choose("cmbKind", "Server radio");
    const int ofRadio = Rows();
    EXPECT_GT(ofRadio, 4);
    for (int row = 0; row < ofRadio; ++row) {
        EXPECT_EQ(Cell(row, 2), "server radio");
    }
    Choose("cmbKind", "All");
    Mnemonic('u');
    EXPECT_EQ(Rows(), 1);
    EXPECT_EQ(Cell(0, 7), "CRC differs");
}

TEST_F(FrmTraceTest, AChosenLoggerStaysChosenWhenAnotherAppears) {
    Select(1);
    ReadStatus();
    Open();
    Choose("cmbLogger", "Site 1");
    const int before = Rows();
    Select(2);
    ReadStatus();
    auto* list = Control<QComboBox>("cmbLogger");
    ASSERT_TRUE(RunEventsUntil([&] { return list->count() == 3; }));
    EXPECT_TRUE(list->currentText().startsWith(QLatin1String("Site 1")));
    EXPECT_EQ(Rows(), before);
}

TEST_F(FrmTraceTest, FindsByKeyboardInBothDirections) {
    TalkToBoth();
    Open();
    Press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(Control("txtFind")->hasFocus());
    QTest::keyClicks(Control("txtFind"), QStringLiteral("read status"));
    Press(Qt::Key_Return);
    const int first = List()->currentIndex().row();
    EXPECT_EQ(Cell(first, 3), "read status");
    Press(Qt::Key_F3);
    const int second = List()->currentIndex().row();
    EXPECT_GT(second, first);
    EXPECT_EQ(Cell(second, 3), "read status");
    Press(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(List()->currentIndex().row(), first);
    EXPECT_TRUE(Control("txtFind")->hasFocus());
    Control<QLineEdit>("txtFind")->setText(QStringLiteral("no such thing"));
    Press(Qt::Key_F3);
    EXPECT_EQ(FromQt(Control<QLabel>("lblFound")->text()), "Not found");
    EXPECT_TRUE(form_->isVisible());
}

TEST_F(FrmTraceTest, BytesOfTheChosenExchangeOnDemand) {
    TalkToBoth();
    Open();
    EXPECT_FALSE(Control("txtHex")->isVisible());
    Mnemonic('h');
    EXPECT_TRUE(Control("txtHex")->isVisible());
    List()->setCurrentIndex(List()->model()->index(Rows() - 1, 0));
    const QString hex = Control<QPlainTextEdit>("txtHex")->toPlainText();
    EXPECT_TRUE(hex.startsWith(QLatin1String("sent: F8 03 0C 00 05 F9\ncame: FA F8 07")))
        << FromQt(hex);
}

TEST_F(FrmTraceTest, CopiesTheChosenRowsOrAll) {
    TalkToBoth();
    Open();
    Mnemonic('c');
    EXPECT_EQ(QApplication::clipboard()->text().count(QLatin1Char('\n')), Rows());
    List()->selectRow(Rows() - 1);
    List()->setFocus();
    Press(Qt::Key_C, Qt::ControlModifier);
    const QString text = QApplication::clipboard()->text();
    EXPECT_EQ(text.count(QLatin1Char('\n')), 1);
    EXPECT_TRUE(text.contains(QLatin1String("Site 2 (channel 10, MAC 00-00-02): read status")));
    EXPECT_TRUE(text.endsWith(QLatin1String("! CRC differs\n")));
}

TEST_F(FrmTraceTest, SavesWhatItShowsAsText) {
    TalkToBoth();
    Open();
    Choose("cmbLogger", "Site 2");
    const std::string path = JoinPath(folder_, "trace.txt");
    console_.Outside.Dialogs.Picks.push_back(path);
    Mnemonic('h');
    Mnemonic('s');
    ASSERT_EQ(console_.Outside.Dialogs.Queries.size(), 1U);
    EXPECT_EQ(console_.Outside.Dialogs.Queries[0].DefaultExtension, ".txt");
    EXPECT_TRUE(console_.Outside.Dialogs.Prompts[0]);
    const std::string text = FileContents(path);
    EXPECT_NE(text.find("Site 2"), std::string::npos);
    EXPECT_EQ(text.find("Site 1"), std::string::npos);
    EXPECT_NE(text.find("\n    sent: F8 03 0C 00 05 F9\n"), std::string::npos);
    EXPECT_TRUE(console_.Outside.Boxes.Shown.empty());
}

TEST_F(FrmTraceTest, AFileThatCannotBeWrittenIsTold) {
    Open();
    console_.Outside.Dialogs.Picks.push_back(JoinPath(folder_, "missing/trace.txt"));
    Mnemonic('s');
    ASSERT_EQ(console_.Outside.Boxes.Shown.size(), 1U);
    EXPECT_EQ(console_.Outside.Boxes.Shown[0].Text, "The file could not be written.");
}

TEST_F(FrmTraceTest, TheEndOfTheProgramClosesItInsideItsFileDialogWithoutAWord) {
    Open();
    console_.Outside.Dialogs.Picks.push_back(JoinPath(folder_, "missing/trace.txt"));
    console_.Outside.Dialogs.WhileShown = [this] { form_->Unload(); };
    Mnemonic('s');
    EXPECT_FALSE(form_->isVisible());
    EXPECT_TRUE(console_.Outside.Boxes.Shown.empty());
    form_->ShowOrRaise();
    EXPECT_FALSE(form_->isVisible()) << "it does not come back";
}

TEST_F(FrmTraceTest, EscapeAndCloseHideItAndItComesBackWithAllSince) {
    Open();
    Press(Qt::Key_Escape);
    EXPECT_FALSE(form_->isVisible());
    Fill(5);
    Open();
    EXPECT_EQ(Rows(), Kept());
    Mnemonic('e');
    EXPECT_FALSE(form_->isVisible());
}

TEST_F(FrmTraceTest, AWidthThatTheOperatorGaveAColumnStays) {
    Open();
    form_->resize(990, 566);
    QCoreApplication::processEvents();
    List()->horizontalHeader()->resizeSection(2, 300);
    form_->resize(1246, 866);
    QCoreApplication::processEvents();
    EXPECT_EQ(List()->horizontalHeader()->sectionSize(2), 300);
}

TEST_F(FrmTraceTest, ItDoesNotBlockOtherWindows) {
    EXPECT_FALSE(form_->isModal());
}

TEST_F(FrmTraceTest, EveryMnemonicStandsForOneControl) {
    std::set<QChar> seen;
    const auto take = [&seen](const QString& text) {
        const qsizetype mark = text.indexOf(QLatin1Char('&'));
        if (mark >= 0) {
            EXPECT_TRUE(seen.insert(text[mark + 1].toLower()).second) << FromQt(text);
        }
    };
    for (const auto* button : form_->findChildren<QAbstractButton*>()) {
        take(button->text());
    }
    for (const auto* label : form_->findChildren<QLabel*>()) {
        take(label->buddy() != nullptr ? label->text() : QString());
    }
    EXPECT_EQ(seen.size(), 11U);
}

TEST_F(FrmTraceTest, EveryControlCanBeReachedByTabAndHasAName) {
    Open();
    Fill(3);
    std::set<std::string> reached;
    for (int i = 0; i < 20; ++i) {
        Press(Qt::Key_Tab);
        const QWidget* focus = QApplication::focusWidget();
        ASSERT_NE(focus, nullptr);
        reached.insert(FromQt(focus->objectName()));
    }
    for (const char* name :
         {"cmbLogger", "cmbKind", "chkFaults", "chkPause", "chkHex", "txtFind", "cmdFindNext",
          "cmdFindPrevious", "lvwTrace", "cmdCopy", "cmdSave", "cmdClose"}) {
        EXPECT_TRUE(reached.contains(name)) << name;
    }
    EXPECT_EQ(FromQt(List()->accessibleName()), "Exchanges");
    EXPECT_FALSE(Control("txtHex")->accessibleName().isEmpty());
}

/// Pictures, light and dark, as on a small screen and on a large one.
class FrmTraceScreens : public FrmTraceTest, public ::testing::WithParamInterface<bool> {
 private:
    const DeskColours colours_{GetParam()};
};

TEST_P(FrmTraceScreens, FitSmallAndLargeScreens) {
    TalkToBoth();
    Open();
    Mnemonic('h');
    List()->setCurrentIndex(List()->model()->index(Rows() - 1, 0));
    KeepOnBothScreens(*form_, QStringLiteral("frmTrace"), GetParam(), [this] {
        EXPECT_FALSE(List()->horizontalScrollBar()->isVisible()) << "a column is out of sight";
    });
}

INSTANTIATE_TEST_SUITE_P(Palettes, FrmTraceScreens, ::testing::Bool(),
                         [](const auto& dark) { return dark.param ? "Dark" : "Light"; });

}  // namespace
