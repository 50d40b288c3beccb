#include <gmock/gmock.h>

#include <QClipboard>
#include <QHeaderView>
#include <QProgressBar>
#include <QScrollBar>
#include <atomic>
#include <condition_variable>
#include <mutex>

#include "frmReport_fixture.h"
#include "support/small_disk.h"

namespace testing_support {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// Holds a report up until it is let go.
class SlowMaker {
 public:
    frmReport::Maker Make() {
        return [this](const SeriesValues& values, const ReportRequest& request,
                      const SystemClock& clock) {
            std::unique_lock lock(mutex_);
            ++Begun;
            go_.wait(lock, [this] { return open_; });
            return MakeReport(values, request, clock);
        };
    }
    void LetGo() {
        const std::lock_guard lock(mutex_);
        open_ = true;
        go_.notify_all();
    }
    std::atomic<int> Begun = 0;

 private:
    std::mutex mutex_;
    std::condition_variable go_;
    bool open_ = false;
};

// ----- what is shown

TEST_F(ReportFormTest, ShowsTheReportOfItsSpanByDays) {
    Open();
    const Report report = Expected();
    ASSERT_EQ(report.Rows.size(), 14U);
    ExpectShown(report);
    EXPECT_FALSE(Control("lblSummary")->font().bold());
    EXPECT_EQ(FromQt(form_->windowTitle()), "Report - Pump 3");
    EXPECT_THAT(LabelText("lblSummary"), HasSubstr("1325 records of 1344 due, 98.6 % complete"));
    EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(ReportFormTest, ShowsWeeksAndMonths) {
    Open();
    Choose("cmbStep", 1);
    ExpectShown(Expected(TwoWeeksSpan, PeriodStep::Week));
    EXPECT_THAT(Cells("lvwReport"), SizeIs(3));
    Choose("cmbStep", 2);
    ExpectShown(Expected(TwoWeeksSpan, PeriodStep::Month));
    EXPECT_THAT(Cells("lvwReport"), SizeIs(1));
}

TEST_F(ReportFormTest, ShowsTheUnitsOfVolumeThatFitTheFlow) {
    Open();
    const auto* list = Control<QComboBox>("cmbVolume");
    ASSERT_EQ(list->count(), 4);
    EXPECT_EQ(FromQt(list->itemText(0)), "Gallons");
    EXPECT_EQ(FromQt(list->itemText(3)), "Acre-Feet");
    Choose("cmbVolume", 3);
    const Report report = Expected(TwoWeeksSpan, PeriodStep::Day, VolumeUnit::AcreFeet);
    ExpectShown(report);
    const QAbstractItemModel* model = Control<QTableView>("lvwReport")->model();
    EXPECT_EQ(FromQt(model->headerData(model->columnCount() - 1, Qt::Horizontal).toString()),
              "Volume (Acre-Feet)");
}

TEST_F(ReportFormTest, WithoutAFlowThereIsNoUnitToChoose) {
    SeriesMaker maker(1, 0);
    maker.Add(SomeDay, {7});
    Open(maker);
    EXPECT_FALSE(Control("cmbVolume")->isVisible());
    EXPECT_FALSE(Control("lblVolume")->isVisible());
    ExpectShown(Expected());
}

TEST_F(ReportFormTest, HeadingsNameGroupsAndColumns) {
    Open();
    const QAbstractItemModel* model = Control<QTableView>("lvwReport")->model();
    const Report report = Expected();
    ASSERT_EQ(model->columnCount() + 1, static_cast<int>(report.Columns.size()));
    for (int i = 0; i < model->columnCount(); ++i) {
        const ReportColumn& column = report.Columns[static_cast<std::size_t>(i) + 1];
        EXPECT_EQ(FromQt(model->headerData(i, Qt::Horizontal).toString()), column.Heading);
        EXPECT_EQ(FromQt(model->headerData(i, Qt::Horizontal, Qt::AccessibleTextRole).toString()),
                  HeadingOf(column));
        const auto align =
            static_cast<Qt::Alignment>(model->index(0, i).data(Qt::TextAlignmentRole).toInt());
        EXPECT_EQ(align.testFlag(Qt::AlignRight), column.IsNumber) << HeadingOf(column);
    }
}

TEST_F(ReportFormTest, NoTextOfTheTableIsCutOff) {
    Open(TwoWeeks(8, 2));
    for (const char* name : {"lvwReport", "lvwTotal"}) {
        const auto* list = Control<QTableView>(name);
        QFont bold = list->font();
        bold.setBold(true);
        for (int row = 0; row < list->model()->rowCount(); ++row) {
            for (int column = 0; column < list->model()->columnCount(); ++column) {
                const QString text = list->model()->index(row, column).data().toString();
                EXPECT_LT(QFontMetrics(bold).horizontalAdvance(text), list->columnWidth(column));
            }
            const QString period = list->model()->headerData(row, Qt::Vertical).toString();
            EXPECT_LT(QFontMetrics(bold).horizontalAdvance(period),
                      list->verticalHeader()->width());
        }
    }
}

TEST_F(ReportFormTest, TheTotalScrollsAlong) {
    Open(TwoWeeks(8, 2));
    auto* rows = Control<QTableView>("lvwReport");
    auto* total = Control<QTableView>("lvwTotal");
    ASSERT_GT(rows->horizontalScrollBar()->maximum(), 0);
    EXPECT_EQ(rows->horizontalScrollBar()->maximum(), total->horizontalScrollBar()->maximum());
    for (int column = 0; column < rows->model()->columnCount(); ++column) {
        EXPECT_EQ(rows->columnWidth(column), total->columnWidth(column));
    }
    rows->horizontalScrollBar()->setValue(300);
    EXPECT_EQ(total->horizontalScrollBar()->value(), 300);
    total->setCurrentIndex(total->model()->index(0, total->model()->columnCount() - 1));
    EXPECT_GT(rows->horizontalScrollBar()->value(), 300);
    EXPECT_EQ(rows->horizontalScrollBar()->value(), total->horizontalScrollBar()->value());
}

// ----- the period

TEST_F(ReportFormTest, DatesStandInTheFormOfTheSystem) {
    Open();
    EXPECT_EQ(FromQt(Control<QDateEdit>("dtpFrom")->text()),
              host_.Clock.DateText({2024, 1, 14, 0, 0, 0, 0}));
    EXPECT_EQ(FromQt(Control<QDateEdit>("dtpTo")->text()),
              host_.Clock.DateText({2024, 1, 27, 0, 0, 0, 0}));
}

TEST_F(ReportFormTest, AnotherDateMakesAnotherReport) {
    Open();
    SetDate("dtpFrom", {2024, 1, 16});
    SetDate("dtpTo", {2024, 1, 18});
    ExpectShown(Expected({SomeDay + 2 * SecondsPerDay, SomeDay + 5 * SecondsPerDay}));
}

TEST_F(ReportFormTest, DatesAreTyped) {
    Open();
    auto* from = Control<QDateEdit>("dtpFrom");
    from->setFocus();
    from->setSelectedSection(QDateTimeEdit::DaySection);
    QTest::keyClicks(from, QStringLiteral("20"));
    Settle();
    ExpectShown(Expected({SomeDay + 6 * SecondsPerDay, TwoWeeksSpan.End}));
}

TEST_F(ReportFormTest, TheSpanIsTakenToTheSecond) {
    const Period span{SomeDay + 5000, SomeDay + 3 * SecondsPerDay + 77};
    Open(TwoWeeks(), span);
    ExpectShown(Expected(span));
    EXPECT_THAT(LabelText("lblSummary"), HasSubstr("01:23:20 - "));
}

TEST_F(ReportFormTest, AnEndBeforeTheBeginIsToldAndNothingIsLost) {
    Open();
    Type("txtSite", "Dam 4");
    Choose("cmbVolume", 1);
    SetDate("dtpTo", {2024, 1, 10});
    EXPECT_EQ(LabelText("lblSummary"),
              "The period ends before it begins. Change one of its dates.");
    EXPECT_TRUE(Control("lblSummary")->font().bold());
    for (const char* button : {"cmdCopy", "cmdCsv", "cmdPdf", "cmdPrint"}) {
        EXPECT_FALSE(IsEnabled(button)) << button;
    }
    EXPECT_THAT(Cells("lvwReport"), SizeIs(14)) << "the last report stays in sight";
    EXPECT_THAT(Boxes(), IsEmpty());
    SetDate("dtpFrom", {2024, 1, 9});
    EXPECT_TRUE(IsEnabled("cmdPdf"));
    EXPECT_TRUE(Control("lblSummary")->font().bold()) << "it has no records";
    ExpectShown(Expected({SomeDay - 5 * SecondsPerDay, SomeDay - 3 * SecondsPerDay},
                         PeriodStep::Day, VolumeUnit::MillionGallons));
    EXPECT_EQ(FromQt(Control<QLineEdit>("txtSite")->text()), "Dam 4");
}

TEST_F(ReportFormTest, APeriodWithoutRecordsSaysSo) {
    Open(TwoWeeks(), {SomeDay + 30 * SecondsPerDay, SomeDay + 32 * SecondsPerDay});
    EXPECT_THAT(LabelText("lblSummary"), HasSubstr("There are no records in this period."));
    EXPECT_THAT(Cells("lvwReport"), SizeIs(2));
    EXPECT_TRUE(IsEnabled("cmdPdf"));
}

TEST_F(ReportFormTest, ALoggerWithoutRecordsSaysSo) {
    host_.Clock.Start = {2024, 1, 14, 8, 30, 0, 0};
    Open(SeriesMaker(2, 1), {});
    EXPECT_THAT(LabelText("lblSummary"), HasSubstr("There are no records in this period."));
    EXPECT_EQ(Control<QDateEdit>("dtpFrom")->date(), QDate(2024, 1, 14));
    EXPECT_THAT(Boxes(), IsEmpty());
}

// ----- what takes long

TEST_F(ReportFormTest, ALongReportIsWorkedOutBesideTheWindow) {
    Open();
    SlowMaker slow;
    form_->Make = slow.Make();
    Control<QComboBox>("cmbStep")->setCurrentIndex(1);
    EXPECT_TRUE(form_->IsWorking());
    EXPECT_TRUE(Control("ProgressBar")->isVisible());
    EXPECT_EQ(form_->cursor().shape(), Qt::WaitCursor);
    EXPECT_FALSE(IsEnabled("cmdCsv"));
    EXPECT_THAT(Cells("lvwReport"), SizeIs(14));
    Type("txtSite", "typed meanwhile");
    slow.LetGo();
    Settle();
    ExpectShown(Expected(TwoWeeksSpan, PeriodStep::Week));
    EXPECT_FALSE(Control("ProgressBar")->isVisible());
    EXPECT_NE(form_->cursor().shape(), Qt::WaitCursor);
    EXPECT_TRUE(IsEnabled("cmdCsv"));
    EXPECT_EQ(FromQt(Control<QLineEdit>("txtSite")->text()), "typed meanwhile");
}

TEST_F(ReportFormTest, ChangesMeanwhileAreMadeOnceBehindIt) {
    Open();
    SlowMaker slow;
    form_->Make = slow.Make();
    Control<QComboBox>("cmbStep")->setCurrentIndex(1);
    Control<QComboBox>("cmbVolume")->setCurrentIndex(1);
    Control<QComboBox>("cmbVolume")->setCurrentIndex(2);
    Control<QComboBox>("cmbStep")->setCurrentIndex(2);
    slow.LetGo();
    Settle();
    ExpectShown(Expected(TwoWeeksSpan, PeriodStep::Month, VolumeUnit::CubicFeet));
    EXPECT_EQ(slow.Begun, 2);
}

TEST_F(ReportFormTest, AFaultMeanwhileStandsWhenTheReportIsThere) {
    Open();
    SlowMaker slow;
    form_->Make = slow.Make();
    Control<QComboBox>("cmbStep")->setCurrentIndex(1);
    Control<QDateEdit>("dtpTo")->setDate({2024, 1, 1});
    slow.LetGo();
    Settle();
    EXPECT_THAT(LabelText("lblSummary"), HasSubstr("ends before it begins"));
    EXPECT_FALSE(IsEnabled("cmdPdf"));
    SetDate("dtpTo", {2024, 1, 27});
    ExpectShown(Expected(TwoWeeksSpan, PeriodStep::Week));
}

TEST_F(ReportFormTest, ClosedMeanwhileItGoesWhenTheReportIsDone) {
    Open();
    SlowMaker slow;
    form_->Make = slow.Make();
    Control<QComboBox>("cmbStep")->setCurrentIndex(1);
    Press(Qt::Key_Escape);
    ASSERT_FALSE(form_.isNull());
    EXPECT_FALSE(form_->isVisible());
    slow.LetGo();
    EXPECT_TRUE(QTest::qWaitFor([this] { return form_.isNull(); }, 30'000));
}

// ----- site and name

TEST_F(ReportFormTest, SiteAndNameAreKeptForTheNextReport) {
    Open();
    Type("txtSite", "Dam 4");
    Type("txtMadeBy", "J. Smith");
    form_->close();
    EXPECT_EQ(host_.Store.Values.at("Report/Site Pump 3"), "Dam 4");
    EXPECT_EQ(host_.Store.Values.at("Report/MadeBy"), "J. Smith");
    Open();
    EXPECT_EQ(FromQt(Control<QLineEdit>("txtSite")->text()), "Dam 4");
    EXPECT_EQ(FromQt(Control<QLineEdit>("txtMadeBy")->text()), "J. Smith");
}

TEST_F(ReportFormTest, TheWindowGoesWhenItIsClosed) {
    Open();
    Click("cmdClose");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(form_.isNull());
}

// ----- copying

TEST_F(ReportFormTest, CopiesTheTableForASpreadsheet) {
    Open();
    Click("cmdCopy");
    EXPECT_EQ(FromQt(QApplication::clipboard()->text()), ReportTabText(Expected()));
    EXPECT_EQ(LabelText("lblState"), "Copied: 14 rows.");
}

TEST_F(ReportFormTest, TheKeyForCopyTakesTheChosenRows) {
    Open();
    const Report report = Expected();
    auto* rows = Control<QTableView>("lvwReport");
    rows->setFocus();
    rows->selectRow(2);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(FromQt(QApplication::clipboard()->text()),
              RowsTabText(report, std::vector<std::size_t>{2, 3}));
    auto* total = Control<QTableView>("lvwTotal");
    total->setFocus();
    total->selectRow(0);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(FromQt(QApplication::clipboard()->text()),
              RowsTabText(report, std::vector<std::size_t>{14}));
}

// ----- comma-separated values

TEST_F(ReportFormTest, SavesTheBytesOfTheReport) {
    Open();
    Type("txtSite", "Dam 4, \"east\"");
    Type("txtMadeBy", "J. Smith");
    Choose("cmbStep", 1);
    Pick("week.csv");
    Click("cmdCsv");
    EXPECT_EQ(
        FileContents(PathOf("week.csv")),
        ReportCsv(Expected(TwoWeeksSpan, PeriodStep::Week, {}, "Dam 4, \"east\"", "J. Smith")));
    EXPECT_EQ(LabelText("lblState"), "Saved: week.csv");
    ASSERT_THAT(host_.Dialogs.Queries, SizeIs(1));
    EXPECT_EQ(host_.Dialogs.Queries[0].Title, "Save as CSV");
    EXPECT_EQ(host_.Dialogs.Queries[0].DefaultExtension, ".csv");
    EXPECT_EQ(host_.Dialogs.Queries[0].InitialName,
              PathOf("Pump 3 Weekly Report 20261115-0830.csv"));
    EXPECT_EQ(host_.Dialogs.Prompts, std::vector<bool>{true});
    EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(ReportFormTest, TheFolderIsSharedWithTheOtherFiles) {
    lastFolder_ = "/elsewhere";
    Open();
    Click("cmdCsv");
    EXPECT_EQ(host_.Dialogs.Queries[0].InitialName,
              JoinPath("/elsewhere", "Pump 3 Daily Report 20261115-0830.csv"));
    EXPECT_EQ(lastFolder_, "/elsewhere") << "nothing was chosen";
    Pick("a.pdf");
    Click("cmdPdf");
    EXPECT_EQ(lastFolder_, folder_);
}

struct OutputCase {
    const char* Button;
    const char* Title;
};

class ReportFormOutput : public ReportFormTest, public testing::WithParamInterface<OutputCase> {};

TEST_P(ReportFormOutput, AFileThatCannotBeWrittenIsTold) {
    Open();
    Pick("no such folder/a.file");
    Click(GetParam().Button);
    ASSERT_THAT(Boxes(), SizeIs(1));
    EXPECT_EQ(Boxes()[0].Title, GetParam().Title);
    EXPECT_EQ(Boxes()[0].Icon, BoxIcon::Stop);
    EXPECT_EQ(Boxes()[0].Text, "Error: the report was not saved. The file could not be written:\n" +
                                   PathOf("no such folder/a.file"));
    EXPECT_EQ(LabelText("lblState"), "");
}

#ifndef _WIN32

TEST_P(ReportFormOutput, AFileThatWasThereStaysWhenTheDiskIsFull) {
    Open();
    const std::string before(500, 'x');
    WriteFile(PathOf("old.file"), before);
    Pick("old.file");
    {
        const SmallDisk disk(1000);
        Click(GetParam().Button);
    }
    EXPECT_EQ(FileContents(PathOf("old.file")), before);
    ASSERT_THAT(Boxes(), SizeIs(1));
    Pick("old.file");
    Click(GetParam().Button);
    EXPECT_NE(FileContents(PathOf("old.file")), before);
    EXPECT_THAT(Boxes(), SizeIs(1));
}

#endif

TEST_P(ReportFormOutput, NothingIsWrittenWhenTheQuestionIsCancelled) {
    Open();
    Click(GetParam().Button);
    EXPECT_THAT(host_.Dialogs.Queries, SizeIs(1));
    EXPECT_THAT(Boxes(), IsEmpty());
    EXPECT_EQ(LabelText("lblState"), "");
}

TEST_P(ReportFormOutput, AWindowThatGoesUnderTheQuestionWritesNothing) {
    Open();
    Pick("late.file");
    host_.Dialogs.WhileShown = [this] { delete form_; };
    Control<QPushButton>(GetParam().Button)->click();
    EXPECT_TRUE(form_.isNull());
    EXPECT_THAT(FileContents(PathOf("late.file")), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Files, ReportFormOutput,
                         testing::Values(OutputCase{"cmdCsv", "Save as CSV"},
                                         OutputCase{"cmdPdf", "Save as PDF"}),
                         [](const auto& each) { return std::string(each.param.Button); });

}  // namespace
}  // namespace testing_support
