#include "collect/frmCollect.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPalette>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimeEdit>
#include <iostream>

#include "app/frmMain_fixture.h"
#include "history/frm_history_fixture.h"
#include "platform/qt/sql_archive.h"
#include "platform/qt/text_qt.h"
#include "support/qt/run_events.h"

namespace testing_support {
namespace {

class FakeSession final : public SessionStart {
 public:
    bool IsOn() const override { return On; }
    bool Switch(bool on) override {
        ++Switched;
        On = Refuses ? On : on;
        return !Refuses;
    }

    bool On = false;
    bool Refuses = false;
    int Switched = 0;
};

struct SomeArchive {
    QTemporaryDir Folder;
    SqlArchive Archive{{.File = Folder.filePath(QStringLiteral("data/archive.sqlite"))}};
};

/// The window of regular collections, opened from a main window that is connected.
class FrmCollectTest : protected SomeArchive, public MainWindowTest {
 protected:
    FrmCollectTest() : MainWindowTest(&Archive) {
        state_.Outside.AtStart = &session_;
        state_.Outside.UserFolder = FromQt(Folder.filePath(QStringLiteral("data")));
    }

    frmCollect& Open() {
        StartConnected();
        Find<QAction>("mnuCollectRegularly").trigger();
        return Find<frmCollect>("frmCollect");
    }
    template <typename Widget = QWidget>
    Widget& Control(const char* name) {
        auto* found = Find<frmCollect>("frmCollect").findChild<Widget*>(QLatin1String(name));
        if (found == nullptr) {
            throw std::runtime_error(std::string("no ") + name);
        }
        return *found;
    }
    void Press(const char* name) { Control<QPushButton>(name).click(); }
    [[nodiscard]] std::optional<std::string> Kept(const std::string& key) const {
        return host_.Virtual.Store.Read("Collect", key);
    }
    [[nodiscard]] bool Shows(const char* label, const QString& text) {
        return host_.RunUntil([&] { return Control<QLabel>(label).text().contains(text); });
    }
    [[nodiscard]] bool RoundIsOver() {
        return host_.RunUntil([this] { return Kept("LastRound").has_value(); }, 300);
    }

    FakeSession session_;
};

TEST_F(FrmCollectTest, OpensOnAPlanThatIsOffAndKeepsNothingByItself) {
    Open();
    EXPECT_FALSE(Control<QCheckBox>("chkOn").isChecked());
    EXPECT_TRUE(Control<QRadioButton>("optDaily").isChecked());
    EXPECT_EQ(Control<QLabel>("lblNext").text(), QStringLiteral("none"));
    EXPECT_FALSE(Control<QPushButton>("cmdSave").isEnabled());
    Find<frmCollect>("frmCollect").close();
    EXPECT_FALSE(Kept("Regularly"));
    EXPECT_EQ(session_.Switched, 0);
    EXPECT_TRUE(boxes_.Shown.empty());
}

TEST_F(FrmCollectTest, SavesWhatWasChosenAndShowsTheNextRound) {
    Open();
    Control<QCheckBox>("chkOn").click();
    Control<QRadioButton>("optWeekly").click();
    Control<QComboBox>("cmbWeekday").setCurrentIndex(2);
    Control<QTimeEdit>("tmeAt").setTime(QTime(3, 30));
    Control<QRadioButton>("optWindows").click();
    Control<QCheckBox>("chkSync").click();
    Press("cmdSave");
    EXPECT_EQ(Kept("Regularly"), "1");
    EXPECT_EQ(Kept("Every"), "Week");
    EXPECT_EQ(Kept("Weekday"), "3");
    EXPECT_EQ(Kept("Time"), "03:30");
    EXPECT_EQ(Kept("RegularScope"), "Windows");
    EXPECT_EQ(Kept("RegularSyncTime"), "1");
    // The host's clock stands at Sunday, 15 November 2026.
    EXPECT_EQ(Control<QLabel>("lblNext").text(), QStringLiteral("2026-11-18 03:30:00"));
    EXPECT_EQ(Control<QLabel>("lblState").text(), QStringLiteral("Saved"));
    EXPECT_FALSE(Control<QPushButton>("cmdSave").isEnabled());
    EXPECT_EQ(session_.Switched, 0);
}

TEST_F(FrmCollectTest, OnlyWhatHasAMeaningCanBeSet) {
    Open();
    Control<QRadioButton>("optHours").click();
    EXPECT_TRUE(Control("spnHours").isEnabled());
    EXPECT_FALSE(Control("tmeAt").isEnabled());
    EXPECT_FALSE(Control("cmbWeekday").isEnabled());
    Control<QRadioButton>("optWeekly").click();
    EXPECT_FALSE(Control("spnHours").isEnabled());
    EXPECT_TRUE(Control("tmeAt").isEnabled());
    EXPECT_TRUE(Control("cmbWeekday").isEnabled());
    EXPECT_FALSE(Control("txtCommand").isEnabled());
    Control<QTabWidget>("tabPages").setCurrentIndex(1);
    Control<QCheckBox>("chkCommand").click();
    EXPECT_TRUE(Control("txtCommand").isEnabled());
}

TEST_F(FrmCollectTest, OpenAtStartIsAskedOfTheSession) {
    Open();
    Control<QCheckBox>("chkAtStart").click();
    Press("cmdSave");
    EXPECT_TRUE(session_.On);
    session_.Refuses = true;
    Control<QCheckBox>("chkAtStart").click();
    Press("cmdSave");
    EXPECT_EQ(Control<QLabel>("lblState").text(),
              QStringLiteral("\"Open at Start\" could not be changed"));
    EXPECT_TRUE(Control<QCheckBox>("chkAtStart").isChecked());
}

TEST_F(FrmCollectTest, ClosingAsksAboutChanges) {
    frmCollect& form = Open();
    Control<QCheckBox>("chkOn").click();
    boxes_.Answers = {BoxAnswer::Cancel};
    form.close();
    EXPECT_TRUE(form.isVisible());
    boxes_.Answers = {BoxAnswer::No};
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
    EXPECT_FALSE(Kept("Regularly"));
    Find<QAction>("mnuCollectRegularly").trigger();
    EXPECT_FALSE(Control<QCheckBox>("chkOn").isChecked());
    Control<QCheckBox>("chkOn").click();
    boxes_.Answers = {BoxAnswer::Yes};
    form.close();
    EXPECT_EQ(Kept("Regularly"), "1");
    EXPECT_EQ(boxes_.Shown.size(), 3U);
}

TEST_F(FrmCollectTest, LowestValuesAreSetAndRemovedPerChannel) {
    Open();
    Control<QTabWidget>("tabPages").setCurrentIndex(1);
    Control<QComboBox>("cmbLogger").setCurrentIndex(1);
    Control<QSpinBox>("spnChannel").setValue(8);
    Control<QDoubleSpinBox>("spnLowest").setValue(11.5);
    Press("cmdAdd");
    auto& list = Control<QListWidget>("lstLowest");
    ASSERT_EQ(list.count(), 1);
    EXPECT_EQ(list.item(0)->text(), QStringLiteral("Site 2, channel 8: 11.5"));
    Control<QSpinBox>("spnMemory").setValue(32000);
    Press("cmdSave");
    EXPECT_EQ(Kept("LowestValues"), "00:A0:96:00:00:02/8=11.5");
    EXPECT_EQ(Kept("MemoryRecords"), "32000");
    list.setCurrentRow(0);
    Press("cmdRemove");
    EXPECT_EQ(list.count(), 0);
    Press("cmdSave");
    EXPECT_EQ(Kept("LowestValues"), "");
}

TEST_F(FrmCollectTest, ARoundRunsAtAClickAndItsLogIsRead) {
    Open();
    Press("cmdNow");
    EXPECT_TRUE(Control("cmdStop").isEnabled());
    ASSERT_TRUE(RoundIsOver());
    EXPECT_TRUE(Shows("lblLast", QStringLiteral("3 of 3 loggers done")));
    Control<QTabWidget>("tabPages").setCurrentIndex(2);
    EXPECT_TRUE(host_.RunUntil([this] {
        return Control<QPlainTextEdit>("txtRoundLog")
            .toPlainText()
            .contains(QStringLiteral("Round is over"));
    }));
    EXPECT_EQ(Control<QComboBox>("cmbRounds").count(), 1);
    const QString log = Control<QPlainTextEdit>("txtRoundLog").toPlainText();
    EXPECT_TRUE(log.contains(QStringLiteral("Site 3...OK, "))) << log.toStdString();
    EXPECT_EQ(FromQt(log), Archive.Rounds(1).at(0).Log);
    // The loggers of the network stand years behind the computer.
    EXPECT_TRUE(Control<QPlainTextEdit>("txtDigest")
                    .toPlainText()
                    .contains(QStringLiteral("Site 1: its clock is ")));
    QFile digest(Folder.filePath(QStringLiteral("data/digest.txt")));
    ASSERT_TRUE(digest.open(QIODevice::ReadOnly));
    EXPECT_TRUE(digest.readAll().contains("Site 1: its clock is "));
    EXPECT_TRUE(boxes_.Shown.empty());
    EXPECT_EQ(state_.Windows.NumClientWindows, 0);
    ExpectAtRest();
}

TEST_F(FrmCollectTest, TheLogOfARoundGrowsWhileItRuns) {
    Open();
    Control<QTabWidget>("tabPages").setCurrentIndex(2);
    bool grew = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        const QString log = Control<QPlainTextEdit>("txtRoundLog").toPlainText();
        grew = grew || (log.contains(QStringLiteral("Site 1...OK")) &&
                        !log.contains(QStringLiteral("Round is over")));
        Find<frmCollect>("frmCollect").ShowOrRaise();
    });
    watch.start(5);
    Press("cmdNow");
    ASSERT_TRUE(RoundIsOver());
    EXPECT_TRUE(grew);
}

TEST_F(FrmCollectTest, AClickOfTheOperatorComesBetweenTwoLoggers) {
    StartConnected();
    ClickClient(2);
    ASSERT_TRUE(host_.RunUntil([this] { return Find<QPushButton>("cmdGetSettings").isEnabled(); }));
    Find<QAction>("mnuCollectRegularly").trigger();
    bool clicked = false;
    Once([this] { return state_.OperationsRecord.OperationBusy != False; },
         [&] {
             clicked = true;
             Find<QPushButton>("cmdGetSettings").click();
         });
    Press("cmdNow");
    ASSERT_TRUE(host_.RunUntil([&] {
        return clicked && WindowOf(2)->SettingsValid() != False &&
               state_.Status.Text().find("Sample of Site 2 received") != std::string::npos;
    }));
    EXPECT_FALSE(Kept("LastRound"));
    ASSERT_TRUE(RoundIsOver());
    EXPECT_NE(Archive.Rounds(1).at(0).Log.find("Steps back for the operator"), std::string::npos);
    EXPECT_TRUE(boxes_.Shown.empty());
}

TEST_F(FrmCollectTest, TheConsoleClosesInTheMiddleOfARound) {
    Open();
    bool asked = false;
    Once([this] { return state_.LinkRecord.CommBusy != False; },
         [&] {
             asked = true;
             window_->close();
         });
    Press("cmdNow");
    ASSERT_TRUE(host_.RunUntil([this] { return state_.LinkRecord.ShuttingDown != False; }));
    EXPECT_TRUE(asked);
    EXPECT_FALSE(window_->isVisible());
    EXPECT_FALSE(Find<frmCollect>("frmCollect").isVisible());
    EXPECT_TRUE(boxes_.Shown.empty());
}

TEST_F(FrmCollectTest, AConsoleStartedByTheSessionShowsNoConnectDialog) {
    window_->Load(true);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(state_.Book.Entries.UpperBound(), 3);
    EXPECT_EQ(state_.LinkRecord.Connected, False);
    Find<QAction>("mnuCollectRegularly").trigger();
    Press("cmdNow");
    ASSERT_TRUE(RoundIsOver());
    EXPECT_EQ(Archive.Rounds(1).at(0).Done, 3);
    EXPECT_FALSE(host_.Virtual.Port.PortOpen());
    EXPECT_TRUE(boxes_.Shown.empty());
}

/// Three sites with records to collect, and a turn of the event loop that is asked for every few
/// milliseconds.
class FrmCollectUnderClicks : public FrmCollectTest {
 protected:
    FrmCollectUnderClicks() {
        std::string book;
        for (int number = 4; number <= 6; ++number) {
            simulator::LoggerSetup site = BasicSite(number);
            site.Logging = false;
            site.HistoryRecords = 500;
            host_.Virtual.Network.AddLogger(site);
            book += "\"Site " + std::to_string(number) + "\", 10, 00A09600000" +
                    std::to_string(number) + "\r\n";
        }
        WriteFile(JoinPath(folder_, "site.obk"), book + "\r\n");
    }

    /// Collects from all; the longest that a click would have waited, in nanoseconds.
    [[nodiscard]] qint64 LongestWait() {
        constexpr int Milliseconds = 7;
        state_.Outside.Store.Write("Collect", "LastRound", "");
        QElapsedTimer clock;
        qint64 due = Milliseconds * 1'000'000;
        qint64 longest = 0;
        QTimer click;
        click.setTimerType(Qt::PreciseTimer);
        click.setSingleShot(true);
        QObject::connect(&click, &QTimer::timeout, &click, [&] {
            longest = std::max(longest, clock.nsecsElapsed() - due);
            due = clock.nsecsElapsed() + Milliseconds * 1'000'000;
            click.start(Milliseconds);
        });
        clock.start();
        click.start(Milliseconds);
        Press("cmdNow");
        EXPECT_TRUE(
            host_.RunUntil([this] { return !Kept("LastRound").value_or("").empty(); }, 600));
        return longest;
    }
};

TEST_F(FrmCollectUnderClicks, AClickIsAnsweredDuringARound) {
    constexpr qint64 Limit = (Sanitized ? 250 : 50) * 1'000'000;
    Open();
    const qint64 longest = LongestWithin(Limit, [this] { return LongestWait(); });
    std::cout << "a click waits " << static_cast<double>(longest) / 1e6
              << " ms at most during a round\n";
    EXPECT_LT(longest, Limit);
    EXPECT_EQ(Archive.Rounds(1).at(0).Done, 3);
    EXPECT_EQ(Archive.Loggers().size(), 3U);
}

// ----- pictures

class CollectScreens : public FrmCollectTest, public ::testing::WithParamInterface<bool> {
 protected:
    CollectScreens() : before_(QApplication::palette()) {
        QPalette dark(QColor(53, 53, 53), QColor(53, 53, 53));
        dark.setColor(QPalette::Base, QColor(35, 35, 35));
        dark.setColor(QPalette::Highlight, QColor(42, 130, 218));
        QApplication::setPalette(GetParam() ? dark : QPalette(QColor(239, 239, 239)));
    }
    ~CollectScreens() override { QApplication::setPalette(before_); }

    void Keep(QWidget& form, const QString& name) {
        QCoreApplication::processEvents();
        const QString folder = qEnvironmentVariable("ORVIA_SCREENSHOTS");
        if (!folder.isEmpty()) {
            EXPECT_TRUE(QDir().mkpath(folder));
            EXPECT_TRUE(form.grab().save(
                QDir(folder).filePath(QStringLiteral("%1-%2-%3x.png")
                                          .arg(name, QLatin1String(GetParam() ? "dark" : "light"))
                                          .arg(form.devicePixelRatioF()))));
        }
    }

 private:
    QPalette before_;
};

TEST_P(CollectScreens, OfThePagesAndTheLogOfAWalk) {
    frmCollect& form = Open();
    Control<QCheckBox>("chkOn").click();
    Control<QComboBox>("cmbLogger").setCurrentIndex(1);
    Control<QSpinBox>("spnChannel").setValue(8);
    Control<QDoubleSpinBox>("spnLowest").setValue(11.5);
    Press("cmdAdd");
    Control<QCheckBox>("chkCommand").click();
    Control<QLineEdit>("txtCommand")
        .setText(QStringLiteral("/usr/bin/mail -s \"Loggers\" me@example.org"));
    Press("cmdSave");
    host_.Virtual.Network.Loggers().at(1)->Silence();
    Press("cmdNow");
    ASSERT_TRUE(RoundIsOver());
    EXPECT_TRUE(Shows("lblLast", QStringLiteral("2 of 3")));
    auto& tabs = Control<QTabWidget>("tabPages");
    for (int page = 0; page < tabs.count(); ++page) {
        tabs.setCurrentIndex(page);
        Keep(form, QStringLiteral("frmCollect-%1").arg(page));
    }
    form.close();
    ClickClient(1);
    ClickClient(2);
    ASSERT_TRUE(host_.RunUntil([this] { return Find<QAction>("mnuCollect").isEnabled(); }));
    Once([this] { return !state_.Collecting.Text().empty(); },
         [this] { Keep(*window_, QStringLiteral("frmMain-collecting")); });
    Find<QAction>("mnuCollect").trigger();
    Keep(*window_, QStringLiteral("frmMain-collected"));
    EXPECT_TRUE(boxes_.Shown.empty());
}

INSTANTIATE_TEST_SUITE_P(Desk, CollectScreens, ::testing::Bool());

}  // namespace
}  // namespace testing_support
