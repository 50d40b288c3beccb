#include "history/fill_list.h"

#include <gmock/gmock.h>

#include <random>

#include "common/fault.h"
#include "common/number_text.h"
#include "flow/flow_calculation.h"
#include "history/sample_history.h"
#include "support/virtual_host.h"

namespace testing_support {
namespace {

using testing::ElementsAre;

class FillListTest : public testing::Test {
 protected:
    void Fill(bool pack = false, bool badUnits = false) {
        columns = ColumnsOf(logger, badUnits);
        bar.Values.clear();
        FillTable({store, logger, host.Clock,
                   [this](double level, double& velocity) {
                       return CalculateFlow(logger, flowTable, level, velocity);
                   }},
                  columns, pack, bar, table);
    }

    VirtualHost host;
    HistoryStore store;
    LoggerRecord logger = PlainLogger(2, 1);
    FlowTable flowTable;
    HistoryColumns columns;
    HistoryTable table;
    FakeBar bar;
};

TEST_F(FillListTest, EachRecordIsARowOfTimeAndTexts) {
    logger.DecPlaces = {2, 0, 0, 0, 0, 0, 0, 0, 1, 0};
    logger.PulseUnit[0] = 0.5;
    AddRecord(store, January(5, 8, 30), {10, 20, 7});
    AddRecord(store, January(6, 17, 5, 9), {200, 65535, 8});
    Fill();
    ASSERT_EQ(table.RowCount(), 2);
    EXPECT_EQ(table.Heading(0), "Date / Time");
    EXPECT_EQ(table.Heading(3), "Gal");
    EXPECT_THAT(RowOf(table, 0), ElementsAre("1/5/24 08:30:00", "10.00", "20", "3.5"));
    EXPECT_THAT(RowOf(table, 1), ElementsAre("1/6/24 17:05:09", "200.00", "65535", "4.0"));
}

TEST_F(FillListTest, EachChannelHasItsOwnCountScalePlacesAndUnit) {
    logger = PlainLogger(8, 2);
    for (std::size_t i = 0; i < 8; ++i) {
        const int n = static_cast<int>(i);
        logger.EngUnits[i] = "U" + std::to_string(n + 1);
        logger.DecPlaces[i] = static_cast<std::uint8_t>(i % 4);
        logger.RawScaleLower[i] = 100 * n;
        logger.RawScaleUpper[i] = 100 * n + 1000;
        logger.LowerLimit[i] = 10 * n;
        logger.UpperLimit[i] = 10 * n + 1 + n;
    }
    logger.DecPlaces[8] = 1;
    logger.DecPlaces[9] = 3;
    logger.PulseUnit = {0.5, 0.25};
    AddRecord(store, January(5, 8, 30), {500, 100, 700, 1300, 900, 750, 600, 1700, 7, 9});
    Fill();
    std::vector<std::string> headings;
    for (int column = 0; column < table.ColumnCount(); ++column) {
        headings.emplace_back(table.Heading(column));
    }
    EXPECT_THAT(headings, ElementsAre("Date / Time", "U1", "U2", "U3", "U4", "U5", "U6", "U7", "U8",
                                      "Gal", "Rain"));
    EXPECT_THAT(RowOf(table, 0), ElementsAre("1/5/24 08:30:00", "0", "10.0", "21.50", "34.000",
                                             "42", "51.5", "60.00", "78.000", "3.5", "2.250"));
}

TEST_F(FillListTest, CountsOfTheOthersStayInTheirPlaceWhereOneIsDisabled) {
    logger = PlainLogger(3, 2);
    logger.AnalogEnable[1] = 0;
    logger.DigitalEnable[0] = 0;
    AddRecord(store, January(1, 0, 0), {11, 22, 33, 44, 55});
    Fill();
    EXPECT_THAT(RowOf(table, 0), ElementsAre("1/1/24 00:00:00", "11", "33", "55"));
}

TEST_F(FillListTest, FlowFollowsFromTheFirstChannelAndIsWorkedOutOnceForACount) {
    logger = PlainLogger(2, 1);
    logger.FlowMode = 1;
    logger.DecPlaces[0] = 1;
    for (const std::uint16_t count : {0, 65535, 25, 0, 65535, 50}) {
        AddRecord(store, January(1, 0, 0), {count, static_cast<std::uint16_t>(count / 2), 3});
    }
    std::vector<double> asked;
    const FlowFunction flow = [&asked](double level, double& velocity) {
        asked.push_back(level);
        velocity = level + 0.5;
        return level * 2;
    };
    columns = ColumnsOf(logger, false);
    FillTable({store, logger, host.Clock, flow}, columns, false, bar, table);
    EXPECT_THAT(asked, ElementsAre(0, 65535, 25, 50));
    ASSERT_EQ(table.RowCount(), 6);
    EXPECT_THAT(RowOf(table, 1),
                ElementsAre("1/1/24 00:00:00", "65535.0", "32767", "3", "131070.0", "65535.5"));
    EXPECT_THAT(RowOf(table, 3), ElementsAre("1/1/24 00:00:00", "0.0", "0", "3", "0.0", "0.5"));
    EXPECT_THAT(RowOf(table, 4),
                ElementsAre("1/1/24 00:00:00", "65535.0", "32767", "3", "131070.0", "65535.5"));
    EXPECT_THAT(RowOf(table, 5),
                ElementsAre("1/1/24 00:00:00", "50.0", "25", "3", "100.0", "50.5"));
}

TEST_F(FillListTest, WithoutVelocityOnlyTheFlowStandsBehindTheChannels) {
    logger.FlowMode = 2;
    AddRecord(store, January(1, 0, 0), {5, 6, 7});
    const FlowFunction flow = [](double level, double& velocity) {
        velocity = 99;
        return level * 3;
    };
    columns = ColumnsOf(logger, false);
    FillTable({store, logger, host.Clock, flow}, columns, false, bar, table);
    EXPECT_THAT(RowOf(table, 0), ElementsAre("1/1/24 00:00:00", "5", "6", "7", "15"));
}

TEST_F(FillListTest, FillingAgainStartsAnew) {
    AddRecord(store, January(1, 0, 0), {1, 2, 3});
    AddRecord(store, January(1, 0, 1), {4, 5, 6});
    Fill();
    store.Clear();
    AddRecord(store, January(1, 0, 2), {7, 8, 9});
    Fill();
    ASSERT_EQ(table.RowCount(), 1);
    EXPECT_THAT(RowOf(table, 0), ElementsAre("1/1/24 00:02:00", "7", "8", "9"));
}

TEST_F(FillListTest, BarGoesThroughTheNumbersOfTheRecords) {
    for (int i = 0; i < 4; ++i) {
        AddRecord(store, January(1, 0, i), {1, 2, 3});
    }
    Fill();
    EXPECT_THAT(bar.Values, ElementsAre(0, 1, 2, 3));
    EXPECT_EQ(FillBarMaximum(store), 3);
}

TEST_F(FillListTest, BarOfFewerThanTwoRecordsEndsAtOne) {
    EXPECT_EQ(FillBarMaximum(store), 1);
    AddRecord(store, January(1, 0, 0), {1, 2, 3});
    EXPECT_EQ(FillBarMaximum(store), 1);
}

TEST_F(FillListTest, EmptyStoreGivesColumnsWithoutRows) {
    Fill();
    EXPECT_EQ(table.RowCount(), 0);
    EXPECT_EQ(table.ColumnCount(), 4);
}

TEST_F(FillListTest, RawScaleLowerEqualToUpperGivesLowerLimitForEveryRecord) {
    logger.RawScaleLower[0] = 100;
    logger.LowerLimit[0] = 5;
    AddRecord(store, January(1, 0, 0), {0, 0, 0});
    AddRecord(store, January(1, 0, 1), {9999, 0, 0});
    Fill();
    EXPECT_EQ(table.Text(0, 1), "5");
    EXPECT_EQ(table.Text(1, 1), "5");
}

TEST_F(FillListTest, UpperLimitEqualToLowerLimitGivesThatLimitForEveryRecord) {
    logger.LowerLimit[0] = 7;
    logger.UpperLimit[0] = 7;
    for (const std::uint16_t count : {0, 50, 100, 65535}) {
        AddRecord(store, January(1, 0, 0), {count, 0, 0});
    }
    Fill();
    for (int row = 0; row < 4; ++row) {
        EXPECT_EQ(table.Text(row, 1), "7");
    }
}

TEST_F(FillListTest, NegativeSpanGivesUpperLimitForEveryRecord) {
    logger.LowerLimit[0] = 50;
    logger.UpperLimit[0] = -3;
    AddRecord(store, January(1, 0, 0), {0, 0, 0});
    AddRecord(store, January(1, 0, 1), {9999, 0, 0});
    Fill();
    EXPECT_EQ(table.Text(0, 1), "-3");
    EXPECT_EQ(table.Text(1, 1), "-3");
}

TEST_F(FillListTest, DisabledChannelHasNoColumnThoughItsBytesStoodInTheRecord) {
    logger.AnalogEnable[0] = 0;
    AddRecord(store, January(1, 0, 0), {11, 22, 33});
    Fill();
    EXPECT_THAT(RowOf(table, 0), ElementsAre("1/1/24 00:00:00", "22", "33"));
}

TEST_F(FillListTest, ManningsFlowAndVelocityFollowFromTheUnroundedLevel) {
    logger.FlowMode = 1;
    logger.ManningsN = 0.014;
    logger.ManningsS = 1;
    logger.ManningsSType = 1;
    logger.ManningsD = 1;
    logger.DecPlaces[0] = 4;
    logger.RawScaleUpper[0] = 4;
    logger.UpperLimit[0] = 1;
    logger.DecPlaces[0] = 1;
    AddRecord(store, January(1, 0, 0), {1, 0, 0});
    AddRecord(store, January(1, 0, 1), {4, 0, 0});
    Fill();
    EXPECT_EQ(table.Heading(4), "Flow (CFS)");
    EXPECT_EQ(table.Heading(5), "Vel (FPS)");
    EXPECT_THAT(RowOf(table, 0), ElementsAre("1/1/24 00:00:00", "0.2", "0", "0", "0.5", "2.9"));
    EXPECT_THAT(RowOf(table, 1), ElementsAre("1/1/24 00:01:00", "1.0", "0", "0", "3.3", "4.2"));
}

TEST_F(FillListTest, FlowModeTwoHasFlowButNoVelocity) {
    logger.FlowMode = 2;
    logger.FlowEqOffset = 0.1;
    logger.FlowEqExponent = 1.5;
    logger.FlowEqMultiplier = 2.0;
    logger.DecPlaces[0] = 5;
    logger.RawScaleUpper[0] = 2;
    logger.UpperLimit[0] = 1;
    AddRecord(store, January(1, 0, 0), {1, 0, 0});
    Fill();
    ASSERT_EQ(table.ColumnCount(), 5);
    EXPECT_EQ(table.Text(0, 4), "0.92952");
}

TEST_F(FillListTest, BadUnitsDropTheFlowColumns) {
    logger.FlowMode = 1;
    AddRecord(store, January(1, 0, 0), {1, 0, 0});
    Fill(false, true);
    EXPECT_EQ(table.ColumnCount(), 4);
}

TEST_F(FillListTest, ResultThatRoundsToZeroHasNoSign) {
    logger.LowerLimit[0] = -0.001;
    logger.DecPlaces[0] = 2;
    AddRecord(store, January(1, 0, 0), {0, 0, 0});
    Fill();
    EXPECT_EQ(table.Text(0, 1), "0.00");
}

// ----- Pack

TEST_F(FillListTest, PackOfIdenticalRecordsLeavesOneRow) {
    for (int i = 0; i < 5; ++i) {
        AddRecord(store, January(1, 0, i), {1, 2, 3});
    }
    Fill(true);
    ASSERT_EQ(table.RowCount(), 1);
    EXPECT_EQ(table.Text(0, 0), "1/1/24 00:00:00");
    EXPECT_EQ(bar.Values.size(), 5U);
}

TEST_F(FillListTest, RecordsThatDifferOnlyInTheirTimeAreAlike) {
    AddRecord(store, January(1, 0, 0), {1, 2, 3});
    AddRecord(store, January(31, 23, 59), {1, 2, 3});
    Fill(true);
    EXPECT_EQ(table.RowCount(), 1);
}

TEST_F(FillListTest, PackComparesTheRoundedTexts) {
    logger.RawScaleUpper[0] = 1000;
    AddRecord(store, January(1, 0, 0), {101, 2, 3});
    AddRecord(store, January(1, 0, 1), {102, 2, 3});
    AddRecord(store, January(1, 0, 2), {106, 2, 3});
    Fill(true);
    ASSERT_EQ(table.RowCount(), 2);
    EXPECT_EQ(table.Text(1, 0), "1/1/24 00:02:00");
}

TEST_F(FillListTest, PackComparesWithTheForerunnerInTheStore) {
    const int counts[] = {1, 1, 2, 1, 1, 1, 3};
    for (int i = 0; i < 7; ++i) {
        AddRecord(store, January(1, 0, i), {static_cast<std::uint16_t>(counts[i]), 2, 3});
    }
    Fill(true);
    ASSERT_EQ(table.RowCount(), 4);
    EXPECT_EQ(table.Text(0, 0), "1/1/24 00:00:00");
    EXPECT_EQ(table.Text(1, 0), "1/1/24 00:02:00");
    EXPECT_EQ(table.Text(2, 0), "1/1/24 00:03:00");
    EXPECT_EQ(table.Text(3, 0), "1/1/24 00:06:00");
}

TEST_F(FillListTest, PackTellsWhereOneTextEndsFromWhereTheNextBegins) {
    AddRecord(store, January(1, 0, 0), {1, 23, 4});
    AddRecord(store, January(1, 0, 1), {12, 3, 4});
    Fill(true);
    EXPECT_EQ(table.RowCount(), 2);
}

TEST_F(FillListTest, PackComparesAsManyTextsAsThereAreColumns) {
    logger = PlainLogger(8, 2);
    logger.FlowMode = 1;
    logger.ManningsN = 0.014;
    logger.ManningsS = 1;
    logger.ManningsD = 1;
    AddRecord(store, January(1, 0, 0), {1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
    AddRecord(store, January(1, 0, 1), {1, 2, 3, 4, 5, 6, 7, 8, 9, 11});
    Fill(true);
    EXPECT_EQ(table.ColumnCount(), 13);
    EXPECT_EQ(table.RowCount(), 2);
}

TEST_F(FillListTest, PackCanRunAgainWithTheSameResult) {
    for (int i = 0; i < 6; ++i) {
        AddRecord(store, January(1, 0, i), {static_cast<std::uint16_t>(i / 2), 2, 3});
    }
    Fill(true);
    const int rows = table.RowCount();
    Fill(true);
    EXPECT_EQ(rows, 3);
    EXPECT_EQ(table.RowCount(), rows);
    Fill(false);
    EXPECT_EQ(table.RowCount(), 6);
    EXPECT_EQ(store.HistoryCount(), 6);
}

TEST_F(FillListTest, PackKeepsNoRowWithoutTexts) {
    logger.AnalogEnable.fill(0);
    logger.DigitalEnable.fill(0);
    AddRecord(store, January(1, 0, 0), {1, 2, 3});
    Fill(true);
    EXPECT_EQ(table.RowCount(), 0);
    Fill(false);
    EXPECT_EQ(table.RowCount(), 1);
}

TEST(PackQuestion, AsksYesOrNo) {
    const BoxContent box = PackQuestion();
    EXPECT_EQ(box.Title, "Pack History Data");
    EXPECT_EQ(box.Text,
              "This operation will remove each record from the displayed data that has identical\n"
              "measurements compared with the previous record. \n\n"
              "Note that this will not change the history data in the logger.\n\n"
              "Select YES to proceed.");
    EXPECT_EQ(box.Icon, BoxIcon::Information);
    EXPECT_EQ(box.Buttons, BoxButtons::YesNo);
}

// ----- the same by the rules, one cell at a time

std::string TextByTheRules(const LoggerRecord& logger, const HistoryRecord& record,
                           std::size_t channel) {
    double fraction = 0;
    if (logger.RawScaleLower[channel] < logger.RawScaleUpper[channel]) {
        fraction =
            (static_cast<double>(record.Raw[channel]) - logger.RawScaleLower[channel]) /
            (static_cast<double>(logger.RawScaleUpper[channel]) - logger.RawScaleLower[channel]);
    }
    const double span = logger.UpperLimit[channel] - logger.LowerLimit[channel];
    const double value =
        span < 0.0001 ? logger.UpperLimit[channel] : span * fraction + logger.LowerLimit[channel];
    return FormatFixed(value, logger.DecPlaces[channel]);
}

TEST_F(FillListTest, BytesThatNoLoggerShouldSendFormatWithoutHarm) {
    std::mt19937_64 random(20261115);
    const auto any = [&random] { return static_cast<std::uint8_t>(random()); };
    for (int round = 0; round < 200; ++round) {
        logger = PlainLogger(1 + any() % 8, any() % 3);
        logger.FlowMode = any();
        logger.ManningsN = static_cast<double>(random()) * 1e-30;
        logger.ManningsD = static_cast<double>(random()) * 1e20;
        for (std::size_t i = 0; i < 8; ++i) {
            logger.RawScaleLower[i] = static_cast<std::uint16_t>(random());
            logger.RawScaleUpper[i] = static_cast<std::uint16_t>(random());
            logger.LowerLimit[i] = static_cast<double>(static_cast<std::int64_t>(random()));
            logger.UpperLimit[i] = static_cast<double>(static_cast<std::int64_t>(random()));
            logger.DecPlaces[i] = any();
        }
        store.Clear();
        for (int i = 0; i < 50; ++i) {
            HistoryRecord record;
            for (std::uint8_t& byte : record.Time) {
                byte = any();
            }
            for (std::uint16_t& count : record.Raw) {
                count = static_cast<std::uint16_t>(random());
            }
            store.Append(record);
        }
        Fill();
        for (int i = 0; i < 50; ++i) {
            const HistoryRecord& record = store.Records()[static_cast<std::size_t>(i)];
            DataPoint point;
            cmd::DecodeRecord(record.Time, 0, 0, host.Clock, point);
            ASSERT_EQ(table.Text(i, 0), point.Time);
            for (int channel = 0; channel < logger.NumAnalogChannels; ++channel) {
                ASSERT_EQ(table.Text(i, 1 + channel),
                          TextByTheRules(logger, record, static_cast<std::size_t>(channel)));
            }
        }
    }
}

TEST(HistoryTable, HoldsRowsBeyondOneChunk) {
    HistoryTable table;
    constexpr int rows = 20'000;
    table.Reset({"a", "b"}, rows);
    for (int i = 0; i < rows; ++i) {
        const std::string text = std::to_string(i);
        char* out = table.BeginRow(64);
        out = std::copy(text.begin(), text.end(), out);
        table.EndCell(out);
        out = std::fill_n(out, 30, static_cast<char>('a' + i % 26));
        table.EndCell(out);
        table.AddRow();
    }
    for (int i = 0; i < rows; ++i) {
        ASSERT_EQ(table.Text(i, 0), std::to_string(i));
        ASSERT_EQ(table.Text(i, 1), std::string(30, static_cast<char>('a' + i % 26)));
    }
    table.Reset({"c"}, 0);
    EXPECT_EQ(table.RowCount(), 0);
    EXPECT_EQ(table.ColumnCount(), 1);
}

TEST(HistoryTable, RowWiderThanAChunkIsAFault) {
    HistoryTable table;
    table.Reset({"a"}, 1);
    EXPECT_THROW((void)table.BeginRow(HistoryTable::ChunkSize + 1), Fault);
}

}  // namespace
}  // namespace testing_support
