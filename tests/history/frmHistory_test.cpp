#include "history/frmHistory.h"

#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>
#include <fstream>
#include <random>

#include "flow/flow_calculation.h"
#include "history/frmHistoryOptions.h"
#include "history/frm_history_fixture.h"
#include "support/qt/run_events.h"
#include "support/work_time.h"

namespace testing_support {
namespace {

class FrmHistory : public HistoryFormTest {
 protected:
    FrmHistory() {
        static_cast<LoggerRecord&>(console.State.Logger) = PlainLogger(2, 1);
        folder = FreshFolder("viewer");
    }

    void Add(std::initializer_list<std::uint16_t> counts) {
        AddRecord(console.State.History, January(1, 0, minute++ % 60), counts);
    }

    frmHistory& Show() {
        form = std::make_unique<frmHistory>(console.Make.History(), AnyWindow(), nullptr);
        form->Load();
        form->show();
        form->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(form.get()));
        return *form;
    }

    [[nodiscard]] const HistoryTable& Table() const {
        return Find<HistoryList>(*form, "lvwHistory")->Table();
    }
    [[nodiscard]] QString Label(const std::string& name) const {
        return Find<QLabel>(*form, name)->text();
    }

    std::unique_ptr<frmHistory> form;
    std::string folder;
    int minute = 0;
};

TEST_F(FrmHistory, StartsAsItsDesignSays) {
    Add({1, 2, 3});
    Show();
    EXPECT_EQ(form->windowTitle(), QStringLiteral("Historical Data Viewer"));
    EXPECT_EQ(Find<QPushButton>(*form, "cmdOK")->text(), QStringLiteral("OK"));
    EXPECT_EQ(Find<QPushButton>(*form, "cmdSave")->text(), QStringLiteral("&Save to File"));
    EXPECT_EQ(Find<QPushButton>(*form, "cmdPack")->text(), QStringLiteral("&Pack"));
    EXPECT_EQ(Find<QPushButton>(*form, "cmdOptions")->text(), QStringLiteral("&Options"));
    EXPECT_FALSE(Find(*form, "ProgressBar")->isVisible());
    EXPECT_EQ(Label("lblLoggerName"), QStringLiteral("Pump 3"));
    EXPECT_EQ(Label("lblNumRecords"), QStringLiteral("1"));
    EXPECT_EQ(console.View.Shape, Pointer::Normal);
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(FrmHistory, ThePlotStandsApartAtTheLeftOfTheToldButtons) {
    Add({1, 2, 3});
    Show();
    std::vector<int> places;
    for (const char* name : {"cmdPlot", "cmdOK", "cmdSave", "cmdPack", "cmdOptions"}) {
        places.push_back(Find(*form, name)->x());
    }
    EXPECT_TRUE(std::is_sorted(places.begin(), places.end()));
    const auto* plot = Find<QPushButton>(*form, "cmdPlot");
    const auto* ok = Find<QPushButton>(*form, "cmdOK");
    EXPECT_EQ(plot->text(), QStringLiteral("P&lot"));
    EXPECT_GT(ok->x() - plot->geometry().right(), ok->width());
    EXPECT_EQ(plot->y(), ok->y());
    EXPECT_TRUE(ok->isDefault() && ok->hasFocus());
    EXPECT_FALSE(plot->isEnabled()) << "there is nobody to show one";
    QPushButton* options = Find<QPushButton>(*form, "cmdOptions");
    EXPECT_EQ(options->nextInFocusChain(), plot) << "the told ones come first";
}

TEST_F(FrmHistory, ThePlotIsAskedForWithThePointsOfTheLoggersDevice) {
    Add({1, 2, 3});
    const auto table = std::make_shared<FakeClientWindow>(console.State);
    table->State.FlowTable.Append({0.5, 7});
    std::vector<double> flows;
    form = std::make_unique<frmHistory>(console.Make.History(), table, nullptr,
                                        [&](const FlowTable& points, QDialog& viewer) {
                                            EXPECT_EQ(&viewer, form.get());
                                            flows.push_back(points[1].Flow);
                                        });
    form->Load();
    form->show();
    Click(*form, "cmdPlot");
    EXPECT_EQ(flows, std::vector<double>{7});
    EXPECT_TRUE(form->isVisible());
}

TEST_F(FrmHistory, ListShowsTheTableWithAllButTheFirstColumnCentred) {
    Add({1, 2, 3});
    Add({4, 5, 6});
    Show();
    const QAbstractItemModel& model = *Find<HistoryList>(*form, "lvwHistory")->model();
    ASSERT_EQ(model.rowCount(), 2);
    ASSERT_EQ(model.columnCount(), 4);
    EXPECT_EQ(model.headerData(0, Qt::Horizontal).toString(), QStringLiteral("Date / Time"));
    EXPECT_EQ(model.headerData(1, Qt::Horizontal).toString(), QStringLiteral("Feet"));
    EXPECT_EQ(model.index(1, 0).data().toString(), QStringLiteral("1/1/24 00:01:00"));
    EXPECT_EQ(model.index(1, 3).data().toString(), QStringLiteral("6"));
    for (int column = 0; column < 4; ++column) {
        const auto expected = column == 0 ? Qt::AlignLeft : Qt::AlignHCenter;
        EXPECT_EQ(
            model.index(0, column).data(Qt::TextAlignmentRole).toInt() & Qt::AlignHorizontal_Mask,
            expected);
        EXPECT_EQ(model.headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).toInt() &
                      Qt::AlignHorizontal_Mask,
                  expected);
    }
}

TEST_F(FrmHistory, UnitNameFtRaisesBadUnitsThenDropsTheFlowColumns) {
    console.State.Logger.FlowMode = 1;
    console.State.Logger.EngUnits[0] = "Ft";
    Add({1, 2, 3});
    Show();
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_EQ(Boxes()[0].Title, "Bad Units");
    EXPECT_EQ(Boxes()[0].Text,
              "Warning: For the flow monitor calculations to be done correctly the channel 1\n"
              "unit's name must be one of Feet, Inches, Meters or cm (centimeters).\n\n"
              "The current unit's name (Ft) is not supported.");
    EXPECT_EQ(Boxes()[0].Icon, BoxIcon::Information);
    EXPECT_EQ(Table().ColumnCount(), 4);
}

TEST_F(FrmHistory, UnitNameFeetInCapitalsIsGood) {
    console.State.Logger.FlowMode = 1;
    console.State.Logger.EngUnits[0] = "FEET";
    Add({1, 2, 3});
    Show();
    EXPECT_TRUE(Boxes().empty());
    EXPECT_EQ(Table().ColumnCount(), 6);
}

TEST_F(FrmHistory, FlowIsThatOfTheLoggersWindow) {
    console.State.Logger.FlowMode = 2;
    Add({17, 2, 3});
    Show();
    EXPECT_EQ(Table().Text(0, 4), "17") << "the stand-in window's flow is the level";
}

TEST_F(FrmHistory, FlowStaysRightWhenTheWindowIsClosedDuringTheUpload) {
    simulator::LoggerSetup setup = BasicSite(1, 1, 0);
    setup.Logging = false;
    setup.HistoryRecords = 30;
    setup.Settings.Analog[0].Units = "Feet";
    setup.Settings.Flow.Mode = simulator::FlowMode::Flume;
    setup.Settings.Flow.FlumeTag = "P 1";
    Connect(setup);
    WithDialogAfter(100 * Millisecond, [this](frmGetHistoryData&) { window->Unload(); });
    WithDialogAfter(20 * Second, [](frmGetHistoryData& dialog) { Click(dialog, "cmdOkay"); });
    std::vector<std::string> row;
    const ModalAnswer<frmHistory> viewer([&row](frmHistory& shown) {
        row = RowOf(Find<HistoryList>(shown, "lvwHistory")->Table(), 29);
        Click(shown, "cmdOK");
    });
    GetHistory();
    ASSERT_TRUE(viewer.Given());
    EXPECT_EQ(console.State.Windows.At(0), nullptr);
    ASSERT_EQ(row.size(), 3U);
    EXPECT_EQ(row[1], "10.00");
    EXPECT_EQ(row[2], "10.00") << "the stand-in window's flow is the level";
}

TEST_F(FrmHistory, ProgramThatClosesOverBadUnitsFillsNothing) {
    console.State.Logger.FlowMode = 1;
    console.State.Logger.EngUnits[0] = "Ft";
    Add({1, 2, 3});
    console.Outside.Boxes.WhileShown = [this] { console.State.LinkRecord.ShuttingDown = True; };
    form = std::make_unique<frmHistory>(console.Make.History(), AnyWindow(), nullptr);
    form->Load();
    EXPECT_EQ(Boxes().size(), 1U);
    EXPECT_EQ(Table().ColumnCount(), 0);
    EXPECT_EQ(Label("lblNumRecords"), QString());
}

TEST_F(FrmHistory, PackAsksThenDropsRowsThatRepeat) {
    Add({1, 2, 3});
    Add({1, 2, 3});
    Add({1, 2, 4});
    Show();
    EXPECT_EQ(Label("lblNumRecords"), QStringLiteral("3"));
    console.Outside.Boxes.Answers = {BoxAnswer::No, BoxAnswer::Yes};
    Click(*form, "cmdPack");
    EXPECT_EQ(Table().RowCount(), 3);
    Click(*form, "cmdPack");
    EXPECT_EQ(Table().RowCount(), 2);
    EXPECT_EQ(Label("lblNumRecords"), QStringLiteral("2"));
    ASSERT_EQ(Boxes().size(), 2U);
    EXPECT_EQ(Boxes()[1].Title, "Pack History Data");
    EXPECT_EQ(Boxes()[1].Buttons, BoxButtons::YesNo);
    EXPECT_FALSE(Find(*form, "ProgressBar")->isVisible());
    EXPECT_EQ(console.State.History.HistoryCount(), 3);
}

TEST_F(FrmHistory, PackOnIdenticalRecordsLeavesOneRow) {
    for (int i = 0; i < 30; ++i) {
        Add({1, 2, 3});
    }
    Show();
    Click(*form, "cmdPack");
    EXPECT_EQ(Table().RowCount(), 1);
    EXPECT_EQ(Label("lblNumRecords"), QStringLiteral("1"));
}

TEST_F(FrmHistory, MnemonicsPressTheButtons) {
    Add({1, 2, 3});
    Show();
    console.Outside.Boxes.Answers = {BoxAnswer::No};
    const auto press = [this](Qt::Key key) {
        QTest::keyClick(form->windowHandle(), key, Qt::AltModifier);
    };
    press(Qt::Key_P);
    EXPECT_TRUE(RunEventsUntil([this] { return Boxes().size() == 1; }));
    press(Qt::Key_S);
    EXPECT_TRUE(RunEventsUntil([this] { return console.Outside.Dialogs.Queries.size() == 1; }));
    const ModalAnswer<frmHistoryOptions> options(
        [](frmHistoryOptions& dialog) { dialog.reject(); });
    press(Qt::Key_O);
    EXPECT_TRUE(RunEventsUntil([&options] { return options.Given(); }));
}

TEST_F(FrmHistory, OkClearsTheRowsThenCloses) {
    Add({1, 2, 3});
    Show();
    QTest::keyClick(form.get(), Qt::Key_Return);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(Table().RowCount(), 0);
    EXPECT_EQ(console.State.History.HistoryCount(), 1);
}

/// What a window shows from its hourglass on, each change once.
class Going final : public QObject {
 public:
    explicit Going(QWidget& form) : form_(form) { form.installEventFilter(this); }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == QEvent::CursorChange) {
            Note(form_.cursor().shape() == Qt::WaitCursor ? "hourglass" : "pointer");
        } else if (event->type() == QEvent::Paint) {
            Note("refreshed");
        } else if (event->type() == QEvent::Hide) {
            Note("gone");
        }
        return false;
    }
    void Note(const std::string& what) {
        if (Seen.empty() ? what == "hourglass" : what != Seen.back()) {
            Seen.push_back(what);
        }
    }

    std::vector<std::string> Seen;

 private:
    QWidget& form_;
};

TEST_F(FrmHistory, OkShowsTheHourglassWhileItClearsTheRows) {
    Add({1, 2, 3});
    Show();
    Going going(*form);
    QObject::connect(Find<HistoryList>(*form, "lvwHistory")->model(),
                     &QAbstractItemModel::modelReset, form.get(),
                     [&going] { going.Note("cleared"); });
    Click(*form, "cmdOK");
    EXPECT_EQ(going.Seen,
              (std::vector<std::string>{"hourglass", "cleared", "pointer", "refreshed", "gone"}));
    EXPECT_EQ(console.View.Shape, Pointer::Normal);
}

TEST_F(FrmHistory, ProgramThatClosesOverTheViewerUnwinds) {
    for (const bool overQuestion : {false, true}) {
        if (logger == nullptr) {
            Connect(30);
        }
        console.State.LinkRecord.ShuttingDown = False;
        const auto closeProgram = [this] {
            CloseEveryDialog();
            console.State.LinkRecord.ShuttingDown = True;
        };
        WithDialogAfter(20 * Second, [](frmGetHistoryData& dialog) { Click(dialog, "cmdOkay"); });
        const ModalAnswer<frmHistory> viewer([&](frmHistory& shown) {
            if (overQuestion) {
                console.Outside.Boxes.WhileShown = closeProgram;
                Click(shown, "cmdPack");
            } else {
                closeProgram();
            }
        });
        GetHistory();
        EXPECT_TRUE(viewer.Given());
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    }
}

// ----- saving

TEST_F(FrmHistory, SavesTheRowsThatItShows) {
    Add({1, 2, 3});
    Add({1, 2, 3});
    Show();
    Click(*form, "cmdPack");
    console.Outside.Dialogs.Picks = {folder + "/a.csv", folder + "/b.csv"};
    Click(*form, "cmdSave");
    console.State.SettingsRecord.CSVDateTimeSingleColumn = "Yes";
    Click(*form, "cmdSave");
    const LocalTime now = console.Outside.Clock.Now();
    const std::string title = "Pump 3," + console.Outside.Clock.DateText(now) + "," +
                              console.Outside.Clock.TimeText(now) + "\r\n";
    EXPECT_EQ(FileContents(folder + "/a.csv"),
              title + "Date, Time, Feet, Deg C, Gal\r\n1/1/24, 00:00:00, 1, 2, 3\r\n");
    EXPECT_EQ(FileContents(folder + "/b.csv"),
              title + "Date Time, Feet, Deg C, Gal\r\n1/1/24 00:00:00, 1, 2, 3\r\n");
    EXPECT_EQ(console.State.LastHistoryFolder, folder);
    EXPECT_FALSE(Find(*form, "ProgressBar")->isVisible());
    EXPECT_EQ(form->focusWidget(), Find(*form, "cmdOK"));
    EXPECT_EQ(console.View.Shape, Pointer::Normal);
    EXPECT_NE(form->cursor().shape(), Qt::WaitCursor);
}

TEST_F(FrmHistory, CancelledQuestionWritesNothing) {
    Add({1, 2, 3});
    Show();
    Click(*form, "cmdSave");
    ASSERT_EQ(console.Outside.Dialogs.Queries.size(), 1U);
    EXPECT_EQ(console.Outside.Dialogs.Queries[0].Title, "Save As");
    EXPECT_EQ(console.State.LastHistoryFolder, "/nowhere");
}

TEST_F(FrmHistory, FileThatCannotBeWrittenEndsTheSaveWithoutAWord) {
    Add({1, 2, 3});
    Show();
    console.Outside.Dialogs.Picks = {folder + "/gone/a.csv"};
    Click(*form, "cmdSave");
    EXPECT_TRUE(Boxes().empty());
    EXPECT_FALSE(Find(*form, "ProgressBar")->isVisible());
    EXPECT_EQ(console.View.Shape, Pointer::Normal);
    EXPECT_EQ(form->focusWidget(), Find(*form, "cmdOK"));
}

TEST_F(FrmHistory, TheFileOpenElsewhereIsSavedAndTheViewerStaysUsable) {
    Add({1, 2, 3});
    Add({1, 2, 3});
    Show();
    const std::string path = folder + "/open.csv";
    WriteFile(path, "old");
    std::fstream elsewhere(path, std::ios::in | std::ios::out | std::ios::binary);
    ASSERT_EQ(elsewhere.get(), 'o');
    console.Outside.Dialogs.Picks = {path, path};
    Click(*form, "cmdSave");
    EXPECT_NE(FileContents(path).find("\r\n1/1/24, 00:01:00, 1, 2, 3\r\n"), std::string::npos);
    EXPECT_TRUE(Boxes().empty());
    EXPECT_EQ(console.View.Shape, Pointer::Normal);
    EXPECT_FALSE(Find(*form, "ProgressBar")->isVisible());
    Click(*form, "cmdPack");
    Click(*form, "cmdSave");
    EXPECT_EQ(Table().RowCount(), 1);
    EXPECT_EQ(FileContents(path).find("00:01:00"), std::string::npos);
}

TEST_F(FrmHistory, FlowParametersStandInTheFileOnlyWithTheFlowColumn) {
    console.State.Logger.FlowMode = 2;
    console.State.Logger.FlowDeviceName = "Parshall 1 ft";
    console.State.Logger.EngUnits[0] = "Ft";
    Add({1, 2, 3});
    Show();
    console.Outside.Dialogs.Picks = {folder + "/bad.csv", folder + "/good.csv"};
    Click(*form, "cmdSave");
    console.State.Logger.EngUnits[0] = "Feet";
    Show();
    Click(*form, "cmdSave");
    EXPECT_EQ(FileContents(folder + "/bad.csv").find("Flume"), std::string::npos);
    EXPECT_NE(FileContents(folder + "/good.csv").find(",Offset= 0 Feet,Flume=Parshall 1 ft\r\n"),
              std::string::npos);
}

// ----- reach

TEST_F(FrmHistory, EveryControlCanBeReached) {
    Add({1, 2, 3});
    Show();
    EXPECT_FALSE(Find(*form, "lvwHistory")->accessibleName().isEmpty());
    EXPECT_FALSE(Find(*form, "ProgressBar")->accessibleName().isEmpty());
    EXPECT_FALSE(Find(*form, "lblNumRecords")->accessibleDescription().isEmpty());
    std::vector<QString> order;
    Find(*form, "lvwHistory")->setFocus();
    for (int i = 0; i < 5; ++i) {
        order.push_back(form->focusWidget()->objectName());
        QTest::keyClick(form->focusWidget(), Qt::Key_Tab);
    }
    const std::vector<QString> expected = {QStringLiteral("lvwHistory"), QStringLiteral("cmdOK"),
                                           QStringLiteral("cmdSave"), QStringLiteral("cmdPack"),
                                           QStringLiteral("cmdOptions")};
    EXPECT_EQ(order, expected);
}

TEST_F(FrmHistory, AmpersandAndMarkupInNamesShowAsTheyAre) {
    console.State.Logger.LoggerName = "<b>A & B</b>";
    console.State.Logger.EngUnits[0] = "m&m";
    Add({1, 2, 3});
    Show();
    EXPECT_EQ(Label("lblLoggerName"), QStringLiteral("<b>A & B</b>"));
    EXPECT_EQ(Find<QLabel>(*form, "lblLoggerName")->textFormat(), Qt::PlainText);
    EXPECT_EQ(Find<QLabel>(*form, "lblLoggerName")->buddy(), nullptr);
    const HistoryList& list = *Find<HistoryList>(*form, "lvwHistory");
    EXPECT_EQ(list.model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("m&m"));
    const QPixmap shown = list.header()->grab();
    console.State.Logger.EngUnits[0] = "m&&m";
    Show();
    EXPECT_NE(shown.toImage(), Find<HistoryList>(*form, "lvwHistory")->header()->grab().toImage())
        << "no ampersand is taken for the mark of a key";
}

// ----- a full store

class FrmHistoryFull : public FrmHistory {
 protected:
    FrmHistoryFull() {
        Connect(1);
        static_cast<LoggerRecord&>(console.State.Logger) = PlainLogger(8, 2);
        console.State.Logger.FlowMode = 1;
        console.State.Logger.DecPlaces.fill(2);
        std::mt19937 random(5);
        HistoryRecord record;
        for (int i = 0; i < HistoryStore::MostRecords; ++i) {
            record.Time = January(1 + i % 31, i % 24, i % 60);
            for (std::uint16_t& count : record.Raw) {
                count = static_cast<std::uint16_t>(random());
            }
            console.State.History.Append(record);
        }
    }
};

// The asked limits; sanitizers take their time, and there it is only held that nothing is done for
// each row of the store. The figures are printed.
TEST_F(FrmHistoryFull, PaintsAndScrollsWithoutLookingAtEveryRow) {
    constexpr double PaintLimit = Sanitized ? 1000 : 100;
    constexpr double ScrollLimit = Sanitized ? 200 : 16;
    WorkTime work;
    double filled = 0;
    const double painted = LongestWithin(PaintLimit, [&] {
        form = std::make_unique<frmHistory>(console.Make.History(), AnyWindow(), nullptr);
        work.Restart();
        form->Load();
        filled = work.Restart();
        form->show();
        QCoreApplication::processEvents();
        static_cast<void>(form->grab());
        return work.Restart();
    });
    auto* list = Find<HistoryList>(*form, "lvwHistory");
    std::mt19937 random(9);
    const double slowest = LongestWithin(ScrollLimit, [&] {
        double longest = 0;
        for (int i = 0; i < 50; ++i) {
            work.Restart();
            list->scrollTo(list->model()->index(static_cast<int>(random() % 200'000), 0));
            list->viewport()->repaint();
            longest = std::max(longest, work.Restart());
        }
        return longest;
    });
    std::cout << "filled in " << filled << " ms, first paint " << painted
              << " ms, slowest of 50 scrolls " << slowest << " ms, table "
              << static_cast<double>(list->Table().Memory()) / 1e6 << " MB\n";
    EXPECT_EQ(list->Table().RowCount(), HistoryStore::MostRecords);
    EXPECT_EQ(Label("lblNumRecords"), QStringLiteral("200000"));
    EXPECT_LT(list->Table().Memory(), 40'000'000U);
    EXPECT_LT(painted, PaintLimit);
    EXPECT_LT(slowest, ScrollLimit);
}

}  // namespace
}  // namespace testing_support
