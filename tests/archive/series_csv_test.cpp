#include "archive/series_csv.h"

#include <gtest/gtest.h>

#include <random>

#include "archive/american_clock.h"
#include "archive/series_maker.h"
#include "flow/flow_calculation.h"
#include "flow/unit_names.h"
#include "support/virtual_host.h"

namespace testing_support {
namespace {

class SeriesCsvTest : public testing::Test {
 protected:
    std::string Saved(const Period& period, bool singleColumn = false) {
        EXPECT_TRUE(
            SaveSeriesCsv(path, SeriesValues(maker.Made), period, singleColumn, clock, bar));
        return FileContents(path);
    }

    /// What the viewer saves of the same records.
    std::string SavedByTheViewer(bool singleColumn) {
        const LoggerRecord& logger = maker.Logger();
        HistoryStore store;
        for (const SeriesRecord& record : maker.Made.Records) {
            store.Append(record.Record);
        }
        const bool badUnits = HasFlow(logger) && !config::IsFlowUnit(logger.EngUnits[0]);
        const HistoryColumns columns = ColumnsOf(logger, badUnits);
        HistoryTable table;
        FillTable({store, logger, clock,
                   [&](double level, double& velocity) {
                       return CalculateFlow(logger, maker.Made.Settings[0].Table, level, velocity);
                   }},
                  columns, false, bar, table);
        EXPECT_TRUE(WriteCsv(
            path, {CsvTitleLine(logger, columns.ShowFlow, clock), table, singleColumn}, bar));
        return FileContents(path);
    }

    std::string path = FreshFolder("series_csv") + "/out.csv";
    AmericanClock clock;
    SeriesMaker maker{2, 1};
    FakeBar bar;
    const Period Ever{EarliestMoment, LatestMoment};
};

TEST_F(SeriesCsvTest, HasTheRecordsOfThePeriodInTheLoggersOrder) {
    maker.Add(SomeDay + 1800, {1, 2, 3});
    maker.Add(SomeDay + 900, {4, 5, 6});
    maker.Add(SomeDay + 2700, {7, 8, 9});
    EXPECT_EQ(Saved({SomeDay + 900, SomeDay + 2700}),
              "Pump 3,11/15/2026,11:21:05 PM\r\nDate, Time, Feet, Deg C, Gal\r\n"
              "1/14/24, 00:30:00, 1, 2, 3\r\n1/14/24, 00:15:00, 4, 5, 6\r\n");
}

TEST_F(SeriesCsvTest, IsToTheByteWhatTheViewerSavesOfOneUpload) {
    std::mt19937 random(11);
    for (int i = 0; i < 3000; ++i) {
        SeriesRecord record;
        for (std::uint8_t& byte : record.Record.Time) {
            byte = static_cast<std::uint8_t>(random());
        }
        for (std::size_t channel = 0; channel < 3; ++channel) {
            record.Record.Raw[channel] = static_cast<std::uint16_t>(random());
        }
        maker.Made.Records.push_back(record);
    }
    LoggerRecord& logger = maker.Logger();
    logger.DecPlaces = {3, 1, 0, 0, 0, 0, 0, 0, 2, 0};
    logger.RawScaleUpper.fill(65'535);
    logger.UpperLimit = {3, 40};
    logger.PulseUnit[0] = 0.01;
    logger.ManningsN = 0.014;
    logger.ManningsS = 1;
    logger.ManningsD = 2;
    for (const std::uint8_t mode : {0, 1, 2, 4}) {
        logger.FlowMode = mode;
        logger.FlowUnits = mode;
        for (const bool singleColumn : {false, true}) {
            const std::string viewers = SavedByTheViewer(singleColumn);
            EXPECT_GT(viewers.size(), 100'000U);
            EXPECT_TRUE(Saved(Ever, singleColumn) == viewers) << "flow mode " << int{mode};
        }
    }
    logger.EngUnits[0] = "PSI";
    EXPECT_TRUE(SavedByTheViewer(false) == Saved(Ever));
    maker.Made.Records.clear();
    EXPECT_EQ(SavedByTheViewer(false), Saved(Ever));
}

TEST_F(SeriesCsvTest, CellOfAColumnThatARecordDoesNotHaveIsEmpty) {
    maker.Change().EngUnits[0] = "Meters";
    maker.Logger(1).LoggerName = "Pump 4";
    maker.Add(SomeDay, {1, 2, 3});
    maker.Add(SomeDay + 900, {4, 5, 6}, 1);
    EXPECT_EQ(Saved(Ever),
              "Pump 4,11/15/2026,11:21:05 PM\r\nDate, Time, Feet, Meters, Deg C, Gal\r\n"
              "1/14/24, 00:00:00, 1, , 2, 3\r\n1/14/24, 00:15:00, , 4, 5, 6\r\n");
}

TEST_F(SeriesCsvTest, SeriesWithoutSettingsGivesTheHeadingsAlone) {
    maker.Made.Settings.clear();
    EXPECT_EQ(Saved(Ever), ",11/15/2026,11:21:05 PM\r\nDate, Time\r\n");
    EXPECT_EQ(MachineCsv(SeriesValues(maker.Made), Ever), "Time\r\n");
}

TEST_F(SeriesCsvTest, FileThatCannotBeWrittenIsTold) {
    path = FreshFolder("series_csv") + "/gone/out.csv";
    EXPECT_FALSE(SaveSeriesCsv(path, SeriesValues(maker.Made), Ever, false, clock, bar));
    EXPECT_FALSE(SaveMachineCsv(path, SeriesValues(maker.Made), Ever));
}

TEST_F(SeriesCsvTest, MachinesGetIsoTimesUnitsAndQuotes) {
    maker.Logger().EngUnits[1] = "a,\"b\"";
    maker.Logger().DecPlaces = {2, 0};
    maker.FlowIsLevel(1);
    maker.Change().FlowMode = 0;
    maker.Add(Packed(2023, 2, 31, 13, 5, 9), {12, 184, 7});
    maker.Add(SomeDay, {13, 185, 8}, 1);
    maker.Add(At(2024, 2, 1), {1, 1, 1});
    const Period period{At(2023, 1, 1), At(2024, 2, 1)};
    const std::string expected =
        "Time,Channel 1 (Feet),\"Channel 2 (a,\"\"b\"\")\",Pulse Chan 1 (Gal),Flow (GPM)\r\n"
        "2023-03-03T13:05:09,1.20,18,7,538.56\r\n"
        "2024-01-14T00:00:00,1.30,18,8,\r\n";
    EXPECT_EQ(MachineCsv(SeriesValues(maker.Made), period), expected);
    EXPECT_TRUE(SaveMachineCsv(path, SeriesValues(maker.Made), period));
    EXPECT_EQ(FileContents(path), expected);
}

}  // namespace
}  // namespace testing_support
