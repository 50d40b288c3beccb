#include "history/csv.h"

#include <gmock/gmock.h>

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include <filesystem>
#include <fstream>
#include <locale>
#include <sstream>

#include "flow/flow_calculation.h"
#include "history/sample_history.h"
#include "support/small_disk.h"
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

TEST_F(CsvTest, ManningsDOfExactlyOneInFeetReadsOneFoot) {
    logger.FlowMode = 1;
    logger.ManningsD = 1;
    EXPECT_THAT(TitleLine(), testing::EndsWith(",Diameter= 1 Foot"));
    logger.ManningsD = 1.5;
    EXPECT_THAT(TitleLine(), testing::EndsWith(",Diameter= 1.5 Feet"));
}

TEST_F(CsvTest, LevelOffsetOfZeroReadsZeroFeet) {
    logger.FlowMode = 2;
    logger.LevelOffset = 0;
    EXPECT_THAT(TitleLine(), testing::EndsWith(",Offset= 0 Feet,Flume="));
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

/// A system that writes 1.234,5.
class CommaMarks final : public std::numpunct<char> {
 protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

class CommaLocale {
 public:
    CommaLocale() : before_(std::locale::global({std::locale::classic(), new CommaMarks})) {}
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;
    ~CommaLocale() { std::locale::global(before_); }

 private:
    std::locale before_;
};

TEST_F(CsvTest, ADecimalCommaNeverReachesTheFile) {
    const CommaLocale comma;
    std::ostringstream shown;
    shown << 1234.5;
    ASSERT_EQ(shown.str(), "1.234,5");
    logger.FlowMode = 1;
    logger.LevelOffset = 1234.5;
    logger.ManningsN = 0.014;
    logger.ManningsS = 1.25;
    logger.ManningsSType = 1;
    logger.ManningsD = 2.5;
    logger.UpperLimit[1] = 100'000;
    AddRecord(store, January(14, 13, 5), {12, 12});
    Fill();
    EXPECT_EQ(Saved(),
              "Pump 3,11/15/2026,11:21:05 PM,Offset= 1234.5 Feet,Mannings,Roughness= 0.014"
              ",Slope= 1.25 %,Diameter= 2.5 Feet\r\n"
              "Date, Time, Feet, Deg C, Flow (CFS), Vel (FPS)\r\n"
              "1/14/24, 13:05:00, 1.20, 1200.0, 42.58, 8.67\r\n");
}

// ----- a file by hand for each flow mode

/// What a file of that mode says behind what all files say.
struct FileOfMode {
    std::uint8_t FlowMode;
    const char* Title;
    const char* Headings;
    const char* FullPipe;  ///< flow, and velocity, at a level of a foot
    const char* HalfPipe;  ///< and of half a foot
};

class CsvOfFlowMode : public CsvTest, public testing::WithParamInterface<FileOfMode> {
 protected:
    CsvOfFlowMode() {
        logger.FlowMode = GetParam().FlowMode;
        logger.FlowUnits = 1;
        logger.VelUnits = 1;
        logger.ManningsN = 0.014;
        logger.ManningsS = 1;
        logger.ManningsSType = 1;
        logger.ManningsD = 1;
        logger.FlowDeviceName = "V 90";
        logger.FlowEqExponent = 1;
        logger.FlowEqMultiplier = 2;
        if (logger.FlowMode == 4) {
            flowTable.Append({1, 4});
            flowTable.Append({2, 10});
        }
        logger.RawScaleUpper[0] = 4;
        logger.UpperLimit[0] = 1;
        AddRecord(store, January(14, 13, 5), {4, 184});
        AddRecord(store, January(15, 0, 0), {2, 185});
        Fill();
    }
};

TEST_P(CsvOfFlowMode, IsByteForByteTheOneByHandWithDateAndTimeInTwoColumns) {
    const FileOfMode& file = GetParam();
    EXPECT_EQ(Saved(), std::string("Pump 3,11/15/2026,11:21:05 PM") + file.Title +
                           "\r\nDate, Time, Feet, Deg C" + file.Headings +
                           "\r\n1/14/24, 13:05:00, 1.00, 18.4" + file.FullPipe +
                           "\r\n1/15/24, 00:00:00, 0.50, 18.5" + file.HalfPipe + "\r\n");
}

TEST_P(CsvOfFlowMode, IsByteForByteTheOneByHandWithDateAndTimeInOneColumn) {
    const FileOfMode& file = GetParam();
    EXPECT_EQ(Saved(true), std::string("Pump 3,11/15/2026,11:21:05 PM") + file.Title +
                               "\r\nDate Time, Feet, Deg C" + file.Headings +
                               "\r\n1/14/24 13:05:00, 1.00, 18.4" + file.FullPipe +
                               "\r\n1/15/24 00:00:00, 0.50, 18.5" + file.HalfPipe + "\r\n");
}

// A pipe that is half full runs as fast as a full one. The others run 2 cfs for each foot, or
// along a table of 4 cfs at a foot.
INSTANTIATE_TEST_SUITE_P(
    Modes, CsvOfFlowMode,
    testing::Values(
        FileOfMode{0, "", "", "", ""},
        FileOfMode{1,
                   ",Offset= 0 Feet,Mannings,Roughness= 0.014,Slope= 1 %"
                   ",Diameter= 1 Foot",
                   ", Flow (GPM), Vel (MPS)", ", 1484.09, 1.28", ", 742.04, 1.28"},
        FileOfMode{2, ",Offset= 0 Feet,Flume=V 90", ", Flow (GPM)", ", 897.60", ", 448.80"},
        FileOfMode{3, ",Offset= 0 Feet,Weir=V 90", ", Flow (GPM)", ", 897.60", ", 448.80"},
        FileOfMode{4, ",Offset= 0 Feet,Table=V 90", ", Flow (GPM)", ", 1795.20", ", 897.60"}),
    [](const auto& instance) { return "FlowMode" + std::to_string(instance.param.FlowMode); });

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

TEST_F(CsvTest, TheFileOpenElsewhereIsWrittenAllTheSame) {
    WriteFile(path, "what another program has read\r\n");
    std::fstream elsewhere(path, std::ios::in | std::ios::out | std::ios::binary);
    std::string line;
    ASSERT_TRUE(std::getline(elsewhere, line));
    AddRecord(store, January(14, 13, 5), {12, 184});
    Fill();
    EXPECT_EQ(Saved(),
              "Pump 3,11/15/2026,11:21:05 PM\r\n"
              "Date, Time, Feet, Deg C\r\n"
              "1/14/24, 13:05:00, 1.20, 18.4\r\n");
    EXPECT_TRUE(elsewhere.is_open());
}

#ifndef _WIN32
TEST_F(CsvTest, PipeOfThatNameDoesNotHoldTheWriterUp) {
    Fill();
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_FALSE(Save());
}

TEST_F(CsvTest, DeviceTakesWhatItCan) {
    Fill();
    path = "/dev/full";
    EXPECT_FALSE(Save());
    EXPECT_TRUE(fs::is_character_file(path));
    path = "/dev/null";
    EXPECT_TRUE(Save());
    EXPECT_TRUE(fs::is_character_file(path));
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

TEST_F(CsvTest, DiskThatRunsFullKeepsTheFileThatWasThereAndNoFreshOne) {
    for (int i = 0; i < 20'000; ++i) {
        AddRecord(store, January(1, 0, i % 60), {1, 2});
    }
    Fill();
    const SmallDisk disk(100'000);
    EXPECT_FALSE(Save());
    EXPECT_FALSE(fs::exists(path));
    WriteFile(path, "kept");
    EXPECT_FALSE(Save());
    EXPECT_EQ(FileContents(path), "kept");
}

TEST_F(CsvTest, FileThatCannotBeOpenedMovesNoBar) {
    AddRecord(store, January(1, 0, 0), {1, 2});
    Fill();
    path = folder + "/gone/out.csv";
    EXPECT_FALSE(Save());
    EXPECT_TRUE(bar.Values.empty());
}
#endif

TEST_F(CsvTest, EmptyPathEndsTheSave) {
    Fill();
    path.clear();
    EXPECT_FALSE(Save());
}

}  // namespace
}  // namespace testing_support
