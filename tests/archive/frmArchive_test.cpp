#include <QDateEdit>
#include <QFile>
#include <QFileInfo>
#include <fstream>

#include "archive/frmArchive_fixture.h"
#include "archive/series_csv.h"
#include "history/upload_bench.h"

namespace archive_testing {
namespace {

constexpr int GapsColumn = static_cast<int>(LoggerColumn::Gaps);

class NoBar final : public ProgressBar {
 public:
    void SetValue(std::int32_t /*value*/) override {}
};

// ----- nothing to show

TEST_F(ArchiveFormTest, WithoutAnArchiveItTellsWhatToDoAndMakesNone) {
    Open();
    EXPECT_TRUE(Control("lblNotice")->isVisible());
    EXPECT_FALSE(Control("lvwLoggers")->isVisible());
    EXPECT_NE(LabelText("lblNotice").find("Get History"), std::string::npos);
    for (const char* name :
         {"cmdPlot", "cmdReport", "cmdSaveCsv", "cmdDelete", "cmdBackUp", "cmdCheck"}) {
        EXPECT_FALSE(Control(name)->isEnabled()) << name;
    }
    QTest::qWait(60);
    EXPECT_FALSE(QFileInfo::exists(FileName("data")));
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(ArchiveFormTest, WhatIsFiledWhileItStandsOpenComesUp) {
    Open();
    Keep("Pump 1", 10);
    ASSERT_TRUE(RunEventsUntil([this] { return List("lvwLoggers").rowCount() == 1; }));
    EXPECT_FALSE(Control("lblNotice")->isVisible());
    EXPECT_TRUE(Control("lvwLoggers")->isVisible());
    EXPECT_TRUE(Control("cmdPlot")->isEnabled());
    Choose({0});
    Keep("Pump 0", 10);
    ASSERT_TRUE(RunEventsUntil([this] { return List("lvwLoggers").rowCount() == 2; }));
    EXPECT_EQ(Names(), (std::vector<std::string>{"Pump 0", "Pump 1"}));
    EXPECT_EQ(LabelText("lblUploads"), "&Uploads of Pump 1:") << "what was chosen stays chosen";
}

TEST_F(ArchiveFormTest, AnArchiveThatCannotBeOpenedIsToldInTheWindowUntilItIsMended) {
    Keep("Pump 1", 10);
    archive_.Close();
    const QString file = FileName("data/archive.sqlite");
    ASSERT_TRUE(QFile::rename(file, file + QStringLiteral(".kept")));
    WriteFile(FromQt(file), "No archive at all, but a letter.");
    Open();
    EXPECT_NE(LabelText("lblNotice").find("the file there is not an archive"), std::string::npos);
    EXPECT_NE(LabelText("lblNotice").find("archive.sqlite"), std::string::npos);
    EXPECT_FALSE(Control("cmdCheck")->isEnabled());
    EXPECT_TRUE(Boxes().empty());
    QFile::remove(file);
    ASSERT_TRUE(QFile::rename(file + QStringLiteral(".kept"), file));
    ASSERT_TRUE(RunEventsUntil([this] { return List("lvwLoggers").rowCount() == 1; }));
    EXPECT_FALSE(Control("lblNotice")->isVisible());
}

// ----- the lists

TEST_F(ArchiveFormTest, ShowsWhatThereIsOfALogger) {
    Keep("Pump 1", 97);
    Open();
    ASSERT_EQ(List("lvwLoggers").rowCount(), 1);
    std::vector<std::string> cells;
    for (int column = 0; column < GapsColumn; ++column) {
        cells.push_back(Cell("lvwLoggers", 0, column));
    }
    EXPECT_EQ(cells, (std::vector<std::string>{"Pump 1", "00:13:A2:00:00:00", "1/14/24 00:00:00",
                                               "1/15/24 00:00:00", "97"}));
    EXPECT_EQ(Cell("lvwLoggers", 0, GapsColumn + 1), "1");
    EXPECT_NE(Cell("lvwLoggers", 0, GapsColumn + 2).find(" KB"), std::string::npos);
    EXPECT_EQ(LabelText("lblCount"), "1 logger");
    ASSERT_EQ(List("lvwUploads").rowCount(), 1);
    EXPECT_EQ(Cell("lvwUploads", 0, 2), "complete");
    EXPECT_EQ(Cell("lvwUploads", 0, 3), "97");
    EXPECT_EQ(Cell("lvwUploads", 0, 5), "12");
}

TEST_F(ArchiveFormTest, AnUploadWithoutAnEndWasKilled) {
    const std::int64_t id = Keep("Pump 1", 5);
    ArchiveUpload upload{.Logger = id, .Begin = 1'800'000'000'000, .Name = "Pump 1"};
    archive_.AddUpload(upload);
    Open();
    ASSERT_EQ(List("lvwUploads").rowCount(), 2);
    EXPECT_EQ(Cell("lvwUploads", 0, 1), "") << "the newest comes first";
    EXPECT_EQ(Cell("lvwUploads", 0, 2), "killed");
    EXPECT_EQ(Cell("lvwUploads", 1, 2), "complete");
}

TEST_F(ArchiveFormTest, GapsAreCountedWithoutBeingWaitedFor) {
    Keep("Pump 1", 9000);
    const std::int64_t id = Keep("Pump 2", 10);
    archive_.AddRecords(id,
                        std::vector<ArchiveRecord>{{.Place = 99,
                                                    .Time = TimeNumberAt(SomeDay + SecondsPerWeek),
                                                    .Upload = archive_.UploadsOf(id).at(0).Id}});
    form_->show();
    EXPECT_EQ(Cell("lvwLoggers", 0, GapsColumn), "...");
    ASSERT_TRUE(RunEventsUntil([this] { return Cell("lvwLoggers", 1, GapsColumn) != "..."; }));
    EXPECT_EQ(Cell("lvwLoggers", 0, GapsColumn), "0");
    EXPECT_EQ(Cell("lvwLoggers", 1, GapsColumn), "1");
}

TEST_F(ArchiveFormTest, InOrderOfTheirGapsAllAreCounted) {
    for (int i = 0; i < 60; ++i) {
        Keep("Pump " + std::to_string(i), 2);
    }
    Open();
    QTest::qWait(50);
    const QAbstractItemModel& model = List("lvwLoggers");
    EXPECT_EQ(model.index(59, GapsColumn).data().toString(), QStringLiteral("..."));
    Control<QTableView>("lvwLoggers")->sortByColumn(GapsColumn, Qt::DescendingOrder);
    EXPECT_TRUE(RunEventsUntil([&model] {
        for (int row = 0; row < 60; ++row) {
            if (model.index(row, GapsColumn).data().toString() != QStringLiteral("0")) {
                return false;
            }
        }
        return true;
    }));
}

TEST_F(ArchiveFormTest, SortsByWhatAColumnMeans) {
    Keep("b", 10, SomeDay);
    Keep("C", 9, SomeDay - SecondsPerWeek);
    Keep("a", 100, SomeDay + SecondsPerWeek);
    Open();
    using Order = std::vector<std::string>;
    EXPECT_EQ(Names(), (Order{"a", "b", "C"}));
    auto* view = Control<QTableView>("lvwLoggers");
    view->sortByColumn(static_cast<int>(LoggerColumn::Records), Qt::AscendingOrder);
    EXPECT_EQ(Names(), (Order{"C", "b", "a"})) << "as numbers";
    view->sortByColumn(static_cast<int>(LoggerColumn::First), Qt::DescendingOrder);
    EXPECT_EQ(Names(), (Order{"a", "b", "C"})) << "as times";
}

TEST_F(ArchiveFormTest, TheFilterLooksAtNamesAndAddresses) {
    Keep("North Weir", 3);
    Keep("South Weir", 3);
    Open();
    Control<QLineEdit>("txtFilter")->setText(QStringLiteral("nORTH"));
    EXPECT_EQ(Names(), std::vector<std::string>{"North Weir"});
    EXPECT_EQ(LabelText("lblCount"), "1 of 2 loggers");
    Control<QLineEdit>("txtFilter")->setText(QStringLiteral("a2:00:00:01"));
    EXPECT_EQ(Names(), std::vector<std::string>{"South Weir"});
}

TEST_F(ArchiveFormTest, AnyNameIsShownAndALongOneInPart) {
    const std::string odd = "50% \"O'Neill\" & Sons; <b>bold</b> %1";
    Keep(odd, 3);
    Keep(std::string(1'000'000, 'x') + "end", 3);
    Keep("two\nlines", 3);
    Open();
    EXPECT_EQ(Cell("lvwLoggers", 0, 0), odd);
    EXPECT_EQ(Cell("lvwLoggers", 1, 0), "two lines");
    EXPECT_EQ(Cell("lvwLoggers", 2, 0), std::string(1000, 'x'));
    EXPECT_EQ(LabelText("lblUploads"), "&Uploads of 50% \"O'Neill\" && Sons; <b>bold</b> %1:");
    Choose({2});
    Click("cmdDelete");
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_LT(Boxes()[0].Text.size(), 1500U);
}

TEST_F(ArchiveFormTest, TenThousandLoggersScroll) {
    archive_.Open();
    ArchiveTransaction transaction(archive_, ArchiveTransaction::Kind::Writing);
    for (int i = 0; i < 10'000; ++i) {
        ArchiveLogger logger{
            .Mac = {1, 2, 3, 4, static_cast<std::uint8_t>(i >> 8), static_cast<std::uint8_t>(i)},
            .Name = "Logger " + std::to_string(i)};
        archive_.AddLogger(logger);
    }
    transaction.Commit();
    Open();
    auto* view = Control<QTableView>("lvwLoggers");
    ASSERT_EQ(view->model()->rowCount(), 10'000);
    view->scrollToBottom();
    EXPECT_EQ(Cell("lvwLoggers", 9999, 0), "Logger 9999");
    ASSERT_TRUE(RunEventsUntil([this] { return Cell("lvwLoggers", 9999, GapsColumn) == "0"; }));
    EXPECT_EQ(Cell("lvwLoggers", 5000, GapsColumn), "...") << "only what is seen is counted";
}

// ----- what is made of a period

TEST_F(ArchiveFormTest, PlotsTheChosenLoggersOverEachOther) {
    Keep("Pump 1", 97, SomeDay);
    Keep("Pump 2", 97, SomeDay + SecondsPerDay);
    Open();
    Choose({0, 1});
    EXPECT_FALSE(Control("cmdReport")->isEnabled()) << "a report is of one logger";
    EXPECT_FALSE(Control("cmdDelete")->isEnabled());
    Click("cmdPlot");
    ASSERT_EQ(plots_.size(), 1U);
    ASSERT_EQ(plots_[0].Series.size(), 2U);
    EXPECT_EQ(plots_[0].Series[1]->Name(), "Pump 2");
    EXPECT_EQ(plots_[0].Span, (Period{SomeDay, SomeDay + 2 * SecondsPerDay + 1}));
}

TEST_F(ArchiveFormTest, TheLastDayEndsWithTheNewestRecordOfAll) {
    Keep("Pump 1", 97, SomeDay);
    Keep("Pump 2", 97, SomeDay + SecondsPerDay);
    Keep("Pump 3", 97, SomeDay - 3 * SecondsPerDay);
    Open();
    Choose({0, 1, 2});
    ChoosePeriod(LastDay);
    Click("cmdPlot");
    ASSERT_EQ(plots_.size(), 1U);
    EXPECT_EQ(plots_[0].Span,
              (Period{SomeDay + SecondsPerDay + 1, SomeDay + 2 * SecondsPerDay + 1}));
    ASSERT_EQ(plots_[0].Series.size(), 1U) << "loggers without a record in it are left out";
    EXPECT_EQ(plots_[0].Series[0]->Name(), "Pump 2");
}

TEST_F(ArchiveFormTest, FromToHoldsAllOfTheLastDay) {
    Keep("Pump 1", 400, SomeDay);
    Open();
    EXPECT_FALSE(Control("dtpFrom")->isEnabled());
    ChoosePeriod(FromTo);
    EXPECT_TRUE(Control("dtpFrom")->isEnabled());
    EXPECT_TRUE(Control<QDateEdit>("dtpFrom")->displayFormat().contains(QStringLiteral("yyyy")));
    Control<QDateEdit>("dtpFrom")->setDate(QDate(2024, 1, 15));
    Control<QDateEdit>("dtpTo")->setDate(QDate(2024, 1, 16));
    Click("cmdReport");
    ASSERT_EQ(reports_.size(), 1U);
    EXPECT_EQ(reports_[0].Span, (Period{At(2024, 1, 15), At(2024, 1, 17)}));
    Control<QDateEdit>("dtpFrom")->setDate(QDate(2024, 1, 17));
    Click("cmdReport");
    EXPECT_EQ(reports_.size(), 1U);
    EXPECT_EQ(LabelText("lblState"), "There are no records in this period.");
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(ArchiveFormTest, CsvIsTheViewersFileOrThatForOtherPrograms) {
    const std::int64_t id = Keep("Pump 1", 400, SomeDay);
    Open();
    ChoosePeriod(LastDay);
    const std::string path = FromQt(FileName("saved.csv"));
    const NamedSeries all("", ReadSeries(archive_, id));
    const Period span = NamedPeriodOf(all.Values().Times(), NamedPeriod::LastDay);
    for (const bool single : {false, true}) {
        settings_.CSVDateTimeSingleColumn = single ? "Yes" : "";
        host_.Dialogs.Picks.push_back(path);
        Click("cmdSaveCsv");
        NoBar bar;
        const std::string wanted = FromQt(FileName("wanted.csv"));
        ASSERT_TRUE(SaveSeriesCsv(wanted, all.Values(), span, single, host_.Clock, bar));
        EXPECT_EQ(FileContents(path), FileContents(wanted));
    }
    EXPECT_EQ(LabelText("lblState"), "Saved: " + path);
    EXPECT_EQ(lastFolder_, FromQt(folder_.path()));
    Click("chkMachine");
    host_.Dialogs.Picks.push_back(path);
    Click("cmdSaveCsv");
    EXPECT_EQ(FileContents(path), MachineCsv(all.Values(), span));
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(ArchiveFormTest, AFileThatCannotBeWrittenIsTold) {
    Keep("Pump 1", 4);
    Open();
    host_.Dialogs.Picks.push_back("/nowhere/at/all.csv");
    Click("cmdSaveCsv");
    ASSERT_EQ(Boxes().size(), 1U);
    EXPECT_NE(Boxes()[0].Text.find("/nowhere/at/all.csv"), std::string::npos);
    Click("cmdSaveCsv");  // cancelled
    EXPECT_EQ(Boxes().size(), 1U);
}

}  // namespace
}  // namespace archive_testing
