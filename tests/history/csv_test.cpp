#include "history/csv.h"

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <fstream>

#include "flow/flow_calculation.h"
#include "history/sample_history.h"
#include "history/save_history.h"
#include "support/virtual_host.h"

namespace testing_support {
namespace {

using testing::ElementsAre;
namespace fs = std::filesystem;

/// Dates and times of a system that shows 11/15/2026 and 11:21:05 PM.
class AmericanClock final : public SystemClock {
 public:
    LocalTime Now() const override { return Moment; }
    std::string DateText(const LocalTime& time) const override {
        return std::to_string(time.Month) + "/" + std::to_string(time.Day) + "/" +
               std::to_string(time.Year);
    }
    std::string TimeText(const LocalTime& time) const override {
        const auto two = [](int value) { return (value < 10 ? "0" : "") + std::to_string(value); };
        return std::to_string((time.Hour + 11) % 12 + 1) + ":" + two(time.Minute) + ":" +
               two(time.Second) + (time.Hour < 12 ? " AM" : " PM");
    }

    LocalTime Moment{2026, 11, 15, 23, 21, 5, 0};
};

class CsvTest : public testing::Test {
 protected:
    CsvTest() {
        logger.DecPlaces = {2, 1, 0, 0, 0, 0, 0, 0, 0, 0};
        logger.RawScaleUpper.fill(1000);
        logger.UpperLimit.fill(100);
    }

    void Fill(bool badUnits = false, bool pack = false) {
        columns = ColumnsOf(logger, badUnits);
        FakeBar ignored;
        FillTable({store, logger, clock,
                   [this](double level, double& velocity) {
                       return CalculateFlow(logger, flowTable, level, velocity);
                   }},
                  columns, pack, ignored, table);
    }

    bool Save(bool singleColumn = false) {
        return WriteCsv(path, {CsvTitleLine(logger, columns.ShowFlow, clock), table, singleColumn},
                        bar);
    }

    std::string Saved(bool singleColumn = false) {
        EXPECT_TRUE(Save(singleColumn));
        return FileContents(path);
    }

    std::string TitleLine() {
        Fill();
        return CsvTitleLine(logger, columns.ShowFlow, clock);
    }

    std::string folder = FreshFolder("csv");
    std::string path = folder + "/out.csv";
    AmericanClock clock;
    HistoryStore store;
    LoggerRecord logger = PlainLogger(2, 0);
    FlowTable flowTable;
    HistoryColumns columns;
    HistoryTable table;
    FakeBar bar;
};

TEST_F(CsvTest, DateAndTimeInTwoColumns) {
    AddRecord(store, January(14, 13, 5), {12, 184});
    AddRecord(store, January(14, 13, 10), {13, 185});
    Fill();
    EXPECT_EQ(Saved(),
              "Pump 3,11/15/2026,11:21:05 PM\r\n"
              "Date, Time, Feet, Deg C\r\n"
              "1/14/24, 13:05:00, 1.20, 18.4\r\n"
              "1/14/24, 13:10:00, 1.30, 18.5\r\n");
}

TEST_F(CsvTest, DateAndTimeInOneColumn) {
    AddRecord(store, January(14, 13, 5), {12, 184});
    Fill();
    EXPECT_EQ(Saved(true),
              "Pump 3,11/15/2026,11:21:05 PM\r\n"
              "Date Time, Feet, Deg C\r\n"
              "1/14/24 13:05:00, 1.20, 18.4\r\n");
}

TEST_F(CsvTest, WithNoRowsTheFileStillGetsItsTwoHeadingLines) {
    Fill();
    EXPECT_EQ(Saved(), "Pump 3,11/15/2026,11:21:05 PM\r\nDate, Time, Feet, Deg C\r\n");
}

TEST_F(CsvTest, AfterPackOnlyTheKeptRowsAppear) {
    AddRecord(store, January(14, 13, 5), {12, 184});
    AddRecord(store, January(14, 13, 6), {12, 184});
    AddRecord(store, January(14, 13, 7), {12, 185});
    Fill(false, true);
    EXPECT_EQ(Saved(),
              "Pump 3,11/15/2026,11:21:05 PM\r\n"
              "Date, Time, Feet, Deg C\r\n"
              "1/14/24, 13:05:00, 1.20, 18.4\r\n"
              "1/14/24, 13:07:00, 1.20, 18.5\r\n");
    EXPECT_THAT(bar.Values, ElementsAre(1, 2));
}

TEST_F(CsvTest, LoggerNameWithACommaShiftsTheFields) {
    logger.LoggerName = "Tank, east";
    EXPECT_EQ(TitleLine(), "Tank, east,11/15/2026,11:21:05 PM");
}

TEST_F(CsvTest, FlowModeNoneGivesAHeadingOfThreeFields) {
    EXPECT_EQ(TitleLine(), "Pump 3,11/15/2026,11:21:05 PM");
}

TEST_F(CsvTest, BadUnitsWithAFlowModeWriteNoFlowParameters) {
    logger.FlowMode = 1;
    Fill(true);
    EXPECT_EQ(CsvTitleLine(logger, columns.ShowFlow, clock), "Pump 3,11/15/2026,11:21:05 PM");
}

TEST_F(CsvTest, ManningsFileInFull) {
    logger.FlowMode = 1;
    logger.FlowUnits = 1;
    logger.VelUnits = 1;
    logger.ManningsN = 0.014;
    logger.ManningsS = 1;
    logger.ManningsSType = 1;
    logger.ManningsD = 1;
    logger.RawScaleUpper[0] = 4;
    logger.UpperLimit[0] = 1;
    AddRecord(store, January(14, 13, 5), {4, 184});
    Fill();
    EXPECT_EQ(Saved(),
              "Pump 3,11/15/2026,11:21:05 PM,Offset= 0 Feet,Mannings,Roughness= 0.014,Slope= 1 %"
              ",Diameter= 1 Foot\r\n"
              "Date, Time, Feet, Deg C, Flow (GPM), Vel (MPS)\r\n"
              "1/14/24, 13:05:00, 1.00, 18.4, 1484.09, 1.28\r\n");
}

TEST_F(CsvTest, ManningsSlopeThatIsNoPercentage) {
    logger.FlowMode = 1;
    logger.LevelOffset = -2.5;
    logger.LevelOffsetType = 1;
    logger.ManningsN = 0.009;
    logger.ManningsS = 0.0125;
    logger.ManningsD = 30;
    logger.ManningsDType = 3;
    EXPECT_EQ(TitleLine(),
              "Pump 3,11/15/2026,11:21:05 PM,Offset= -2.5 Inches,Mannings,Roughness= 0.009"
              ",Slope= 0.0125,Diameter= 30 cm");
}

TEST_F(CsvTest, FlumeWeirAndTableNameTheirDevice) {
    logger.LevelOffset = 1;
    logger.LevelOffsetType = 2;
    logger.FlowDeviceName = "Parshall, 1\"";
    const std::string start = "Pump 3,11/15/2026,11:21:05 PM,Offset= 1 Meter";
    logger.FlowMode = 2;
    EXPECT_EQ(TitleLine(), start + ",Flume=Parshall, 1\"");
    logger.FlowMode = 3;
    EXPECT_EQ(TitleLine(), start + ",Weir=Parshall, 1\"");
    logger.FlowMode = 4;
    EXPECT_EQ(TitleLine(), start + ",Table=Parshall, 1\"");
    logger.FlowMode = 5;
    EXPECT_EQ(TitleLine(), start);
}

TEST_F(CsvTest, RatingFilesInFullForBothDateOptions) {
    logger.FlowMode = 3;
    logger.FlowDeviceName = "V 90";
    logger.FlowEqExponent = 1;
    logger.FlowEqMultiplier = 2;
    AddRecord(store, January(14, 13, 5), {12, 184});
    Fill();
    const std::string title = "Pump 3,11/15/2026,11:21:05 PM,Offset= 0 Feet,Weir=V 90\r\n";
    EXPECT_EQ(Saved(), title +
                           "Date, Time, Feet, Deg C, Flow (CFS)\r\n"
                           "1/14/24, 13:05:00, 1.20, 18.4, 2.40\r\n");
    EXPECT_EQ(Saved(true), title +
                               "Date Time, Feet, Deg C, Flow (CFS)\r\n"
                               "1/14/24 13:05:00, 1.20, 18.4, 2.40\r\n");
}

TEST_F(CsvTest, DateFormatWithABlankIsCutAtThatBlank) {
    table.Reset({"Date / Time", "Feet"}, 1);
    const std::string time = "14 Jan 24 13:05:00";
    char* out = table.BeginRow(64);
    out = std::copy(time.begin(), time.end(), out);
    table.EndCell(out);
    *out++ = '7';
    table.EndCell(out);
    table.AddRow();
    EXPECT_EQ(Saved(),
              "Pump 3,11/15/2026,11:21:05 PM\r\nDate, Time, Feet\r\n"
              "14, Jan 24 13:05:00, 7\r\n");
}

TEST_F(CsvTest, TimeWithoutABlankGoesWholeIntoTheDateColumn) {
    table.Reset({"Date / Time", "Feet"}, 1);
    char* out = table.BeginRow(64);
    *out++ = 'x';
    table.EndCell(out);
    *out++ = '7';
    table.EndCell(out);
    table.AddRow();
    EXPECT_EQ(Saved(), "Pump 3,11/15/2026,11:21:05 PM\r\nDate, Time, Feet\r\nx, , 7\r\n");
}

TEST_F(CsvTest, FileThatIsThereIsReplaced) {
    WriteFile(path, std::string(100'000, 'x'));
    Fill();
    EXPECT_EQ(Saved().size(), 56U);
}

TEST_F(CsvTest, LargeFileHoldsEveryRow) {
    for (int i = 0; i < 20'000; ++i) {
        AddRecord(store, January(1 + i % 31, i / 31 % 24, i % 60),
                  {static_cast<std::uint16_t>(i), static_cast<std::uint16_t>(i * 3)});
    }
    Fill();
    std::string expected = "Pump 3,11/15/2026,11:21:05 PM\r\nDate, Time, Feet, Deg C\r\n";
    for (int row = 0; row < table.RowCount(); ++row) {
        std::string time(table.Text(row, 0));
        time.replace(time.find(' '), 1, ", ");
        expected += time + ", " + std::string(table.Text(row, 1)) + ", " +
                    std::string(table.Text(row, 2)) + "\r\n";
    }
    EXPECT_EQ(Saved(), expected);
}

// ----- files that cannot be written

TEST_F(CsvTest, FolderThatIsGoneEndsTheSave) {
    Fill();
    path = folder + "/gone/out.csv";
    EXPECT_FALSE(Save());
    EXPECT_FALSE(fs::exists(folder + "/gone"));
}

TEST_F(CsvTest, FolderOfThatNameEndsTheSave) {
    Fill();
    fs::create_directory(path);
    EXPECT_FALSE(Save());
}

TEST_F(CsvTest, PipeOfThatNameDoesNotHoldTheWriterUp) {
    Fill();
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_FALSE(Save());
}

TEST_F(CsvTest, FullDeviceEndsTheSave) {
    Fill();
    path = "/dev/full";
    EXPECT_FALSE(Save());
}

TEST_F(CsvTest, EmptyPathEndsTheSave) {
    Fill();
    path.clear();
    EXPECT_FALSE(Save());
}

TEST_F(CsvTest, FileThatMayNotBeWrittenStaysAsItIs) {
    Fill();
    WriteFile(path, "kept");
    fs::permissions(path, fs::perms::owner_read);
    if (std::ofstream(path, std::ios::app).is_open()) {
        // The superuser writes where nobody may; a file that runs cannot be written by anyone.
        path = "/proc/self/exe";
    }
    EXPECT_FALSE(Save());
    EXPECT_NE(FileContents(path), "");
}

TEST_F(CsvTest, DiskThatRunsFullKeepsTheFileAsFarAsItWasWritten) {
    for (int i = 0; i < 20'000; ++i) {
        AddRecord(store, January(1, 0, i % 60), {1, 2});
    }
    Fill();
    const std::string whole = Saved();
    constexpr rlim_t Limit = 100'000;
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{Limit, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    bar.Values.clear();
    const bool saved = Save();
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_FALSE(saved);
    EXPECT_EQ(FileContents(path), whole.substr(0, Limit));
    EXPECT_LT(bar.Values.size(), 20'000U) << "the rows behind are not tried";
}

// ----- names and folders

const LocalTime Evening{2026, 11, 15, 23, 12, 40, 0};

TEST(DefaultCsvName, IsThePlainNameThenDateAndTime) {
    EXPECT_EQ(DefaultCsvName("Tank #2 (east)", Evening), "Tank 2 east 20261115-2312.csv");
    EXPECT_EQ(DefaultCsvName("A-1+2", {2026, 1, 2, 3, 4, 5, 6}), "A-1+2 20260102-0304.csv");
}

TEST(DefaultCsvName, EmptyNameLeavesDateAndTime) {
    EXPECT_EQ(DefaultCsvName("", Evening), "20261115-2312.csv");
    EXPECT_EQ(DefaultCsvName("  ", Evening), "20261115-2312.csv");
    EXPECT_EQ(DefaultCsvName("## \xC3\xA4 ##", Evening), "20261115-2312.csv");
}

TEST(DefaultCsvName, DropsWhatNoFileNameShouldHold) {
    EXPECT_EQ(DefaultCsvName("../a\\b:c*d", Evening), "abcd 20261115-2312.csv");
    EXPECT_EQ(DefaultCsvName(" (x) y ", Evening), "x y 20261115-2312.csv");
}

class AskForCsvFileTest : public testing::Test {
 protected:
    std::optional<std::string> Ask() {
        return AskForCsvFile("Pump 3", host.AsHost("/opt/orvia"), lastFolder);
    }
    VirtualHost host;
    std::string lastFolder;
};

TEST_F(AskForCsvFileTest, StartsInTheProgramsFolder) {
    EXPECT_EQ(Ask(), std::nullopt);
    ASSERT_EQ(host.Dialogs.Queries.size(), 1U);
    const FileQuery& query = host.Dialogs.Queries[0];
    EXPECT_EQ(query.Title, "Save As");
    EXPECT_EQ(query.DefaultExtension, ".csv");
    EXPECT_EQ(query.Filter, "Comma Separated Value Files (*.csv)|*.csv");
    EXPECT_EQ(query.InitialName, "/opt/orvia/Pump 3 20261115-0830.csv");
    EXPECT_TRUE(host.Dialogs.Prompts[0]);
    EXPECT_EQ(lastFolder, "/opt/orvia");
}

TEST_F(AskForCsvFileTest, GoesOnInTheFolderChosenLast) {
    host.Dialogs.Picks = {"/data/2026/a.csv"};
    EXPECT_EQ(Ask(), "/data/2026/a.csv");
    EXPECT_EQ(lastFolder, "/data/2026");
    Ask();
    EXPECT_EQ(host.Dialogs.Queries[1].InitialName, "/data/2026/Pump 3 20261115-0830.csv");
    EXPECT_EQ(lastFolder, "/data/2026");
}

TEST_F(AskForCsvFileTest, SeparatorOfARootIsNoFolder) {
    lastFolder = "/kept";
    host.Dialogs.Picks = {"/a.csv", "c\\a.csv", "c:\\a.csv", "a.csv"};
    Ask();
    EXPECT_EQ(lastFolder, "/kept");
    Ask();
    EXPECT_EQ(lastFolder, "/kept");
    Ask();
    EXPECT_EQ(lastFolder, "c:");
    lastFolder = "/kept";
    Ask();
    EXPECT_EQ(lastFolder, "/kept");
}

TEST(SaveBar, EndsAtTheRowCountOrAtTwo) {
    EXPECT_EQ(SaveBarMaximum(0), 2);
    EXPECT_EQ(SaveBarMaximum(1), 1);
    EXPECT_EQ(SaveBarMaximum(200'000), 200'000);
}

TEST(SingleColumn, IsAnySettingThatIsNotEmpty) {
    EXPECT_FALSE(IsSingleColumn(""));
    EXPECT_TRUE(IsSingleColumn("Yes"));
    EXPECT_TRUE(IsSingleColumn("no"));
    EXPECT_EQ(SingleColumnSetting(true), "Yes");
    EXPECT_EQ(SingleColumnSetting(false), "");
}

}  // namespace
}  // namespace testing_support
