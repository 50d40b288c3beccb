#include "collect/digest.h"

#include <gtest/gtest.h>

#include "archive/archive_rows.h"
#include "collect/plan_settings.h"

namespace {

CollectedLogger Good(const std::string& name = "Site 1") {
    CollectedLogger logger;
    logger.Name = name;
    logger.Mac = {1, 2, 3, 4, 5, 6};
    logger.Outcome = CollectOutcome::Done;
    logger.Said = logger.Received = 100;
    return logger;
}

Moment At(const std::string& text) {
    return MomentOfText(text).value();
}

TEST(Digest, IsEmptyWhereNothingNeedsAPerson) {
    EXPECT_EQ(DigestText({}, {}), "");
    EXPECT_EQ(DigestText({Good()}, {}), "");
}

TEST(Digest, TellsLoggersThatFailed) {
    CollectedLogger silent = Good("Pump 2");
    silent.Outcome = CollectOutcome::NoAnswer;
    CollectedLogger broken = Good("Pump 3");
    broken.Outcome = CollectOutcome::BrokeOff;
    broken.Received = 40;
    EXPECT_EQ(DigestText({Good(), silent, broken}, {}),
              "Pump 2: no answer\n"
              "Pump 3: the upload broke off behind 40 of 100 records, 0 new\n");
}

TEST(Digest, TellsClocksThatAreStillOff) {
    CollectedLogger logger = Good();
    logger.ClockAhead = 3600;
    EXPECT_EQ(DigestText({logger}, {}), "Site 1: its clock is 1 h ahead\n");
    logger.ClockSet = true;
    EXPECT_EQ(DigestText({logger}, {}), "");
    logger.ClockSet = false;
    EXPECT_EQ(DigestText({logger}, {}), "Site 1: its clock is 1 h ahead\n");
}

TEST(Digest, TellsWhenAMemoryOverEightyPercentWraps) {
    CollectedLogger logger = Good();
    logger.Findings.InMemory = 160'000;
    logger.Findings.WrapsAround = true;
    logger.Findings.RecordsADay = 96.0;
    logger.Findings.NewestMoment = At("2026-11-15 08:30:00");
    EXPECT_EQ(DigestText({logger}, {}), "");
    logger.Findings.InMemory = 199'904;
    EXPECT_EQ(DigestText({logger}, {}),
              "Site 1: its memory is 99 % full, and at the present rate the oldest records are "
              "lost from 2026-11-16 08:30:00 on\n");
    logger.Findings.WrapsAround = false;
    EXPECT_EQ(DigestText({logger}, {}),
              "Site 1: its memory is 99 % full, and at the present rate nothing more is recorded "
              "from 2026-11-16 08:30:00 on\n");
    logger.Findings.RecordsADay.reset();
    EXPECT_EQ(DigestText({logger}, {}), "Site 1: its memory is 99 % full\n");
    logger.Findings.InMemory = 200'000;
    EXPECT_EQ(DigestText({logger}, {}),
              "Site 1: its memory is 100 % full, and nothing more is recorded\n");
    EXPECT_EQ(DigestText({logger}, {.MemoryRecords = 0}), "");
}

TEST(Digest, TellsABatteryBelowItsLimit) {
    CollectedLogger logger = Good();
    logger.Findings.Newest = {{.Channel = 1, .Value = 2.0, .Unit = "Feet", .Places = 2},
                              {.Channel = 8, .Value = 11.44, .Unit = "Volts", .Places = 1}};
    DigestLimits limits;
    limits.LowestValues[{logger.Mac, 8}] = 11.5;
    EXPECT_EQ(DigestText({logger}, limits), "Site 1: channel 8 is at 11.4 Volts, below 11.5\n");
    limits.LowestValues[{logger.Mac, 8}] = 11.44;
    EXPECT_EQ(DigestText({logger}, limits), "");
    limits.LowestValues = {{{MacAddress{}, 8}, 20}};
    EXPECT_EQ(DigestText({logger}, limits), "");
}

TEST(Digest, TellsSomeGapsAndCountsTheRest) {
    CollectedLogger logger = Good();
    const Moment day = At("2026-11-15 00:00:00");
    for (int i = 0; i < 5; ++i) {
        logger.Findings.Gaps.push_back({day + i * 7200, day + i * 7200 + 3600});
    }
    EXPECT_EQ(DigestText({logger}, {}),
              "Site 1: no records from 2026-11-15 00:00:00 to 2026-11-15 01:00:00\n"
              "Site 1: no records from 2026-11-15 02:00:00 to 2026-11-15 03:00:00\n"
              "Site 1: no records from 2026-11-15 04:00:00 to 2026-11-15 05:00:00\n"
              "Site 1: further gaps: 2\n");
}

TEST(Digest, ANameOfSeveralLinesIsOne) {
    CollectedLogger logger = Good("Pump\n2: all is well");
    logger.Outcome = CollectOutcome::NoAnswer;
    EXPECT_EQ(DigestText({logger}, {}), "Pump 2: all is well: no answer\n");
}

// ----- what an upload tells

class FindingsTest : public testing::Test {
 protected:
    FindingsTest() {
        logger.NumAnalogChannels = 2;
        logger.AnalogEnable = {1, 1};
        logger.SampleInterval = "15 minutes";
        logger.RawScaleUpper = {65535, 65535};
        logger.UpperLimit = {65535, 13.107};
        logger.EngUnits[1] = "Volts";
        logger.DecPlaces[1] = 2;
        logger.NumSamples = 7;
        logger.DataWrapAroundFlag = 1;
    }
    void Add(const std::string& time, std::uint16_t battery = 0) {
        HistoryRecord record;
        record.Time = PackedTimeOf(TimeNumberAt(At(time)));
        record.Raw[1] = battery;
        records.push_back(record);
    }
    [[nodiscard]] LoggerFindings Find(std::optional<Moment> known = {}) const {
        return FindingsOf(records, logger, known);
    }

    LoggerRecord logger;
    std::vector<HistoryRecord> records;
};

TEST_F(FindingsTest, NothingIsFoundWithoutRecords) {
    const LoggerFindings found = Find();
    EXPECT_EQ(found.InMemory, 7);
    EXPECT_TRUE(found.WrapsAround);
    EXPECT_FALSE(found.RecordsADay);
    EXPECT_FALSE(found.NewestMoment);
    EXPECT_TRUE(found.Newest.empty());
    EXPECT_TRUE(found.Gaps.empty());
}

TEST_F(FindingsTest, RateAndNewestValuesComeFromTheLastRecords) {
    Add("2026-11-15 08:00:00", 1);
    Add("2026-11-15 08:15:00", 50'000);
    const LoggerFindings found = Find();
    EXPECT_DOUBLE_EQ(found.RecordsADay.value(), 96);
    EXPECT_EQ(found.NewestMoment, At("2026-11-15 08:15:00"));
    ASSERT_EQ(found.Newest.size(), 2U);
    EXPECT_EQ(found.Newest[1].Channel, 2);
    EXPECT_NEAR(found.Newest[1].Value, 10.0, 0.001);
    EXPECT_EQ(found.Newest[1].Unit, "Volts");
    logger.AnalogEnable[1] = 0;
    EXPECT_EQ(Find().Newest.size(), 1U);
}

TEST_F(FindingsTest, OnlyGapsThatAreNewAreTold) {
    Add("2026-11-15 08:00:00");
    Add("2026-11-15 09:00:00");
    Add("2026-11-15 09:15:00");
    Add("2026-11-15 10:00:00");
    const FoundGap first{At("2026-11-15 08:00:00"), At("2026-11-15 09:00:00")};
    const FoundGap second{At("2026-11-15 09:15:00"), At("2026-11-15 10:00:00")};
    EXPECT_EQ(Find().Gaps, (std::vector{first, second}));
    EXPECT_EQ(Find(At("2026-11-15 09:00:00")).Gaps, (std::vector{second}));
    EXPECT_EQ(Find(At("2026-11-15 10:00:00")).Gaps, (std::vector<FoundGap>{}));
}

TEST_F(FindingsTest, AnIntervalThatWasSetBeforeMakesNoGaps) {
    for (const char* time : {"08:00:00", "09:00:00", "10:00:02", "11:00:00"}) {
        Add(std::string("2026-11-15 ") + time);
    }
    Add("2026-11-15 11:15:00");
    Add("2026-11-15 11:30:00");
    EXPECT_TRUE(Find().Gaps.empty());
    // An hour among quarters is one, and so are two; and what is longer than the old interval.
    Add("2026-11-15 12:30:00");
    Add("2026-11-15 13:30:00");
    Add("2026-11-15 13:45:00");
    const FoundGap third{At("2026-11-15 11:30:00"), At("2026-11-15 12:30:00")};
    const FoundGap fourth{At("2026-11-15 12:30:00"), At("2026-11-15 13:30:00")};
    EXPECT_EQ(Find().Gaps, (std::vector{third, fourth}));
    records.erase(records.begin() + 1);
    EXPECT_EQ(Find().Gaps.size(), 4U);
}

TEST_F(FindingsTest, WhatWasOverwrittenSinceTheLastTimeIsAGap) {
    Add("2026-11-15 08:00:00");
    Add("2026-11-15 08:15:00");
    const FoundGap lost{At("2026-11-14 08:00:00"), At("2026-11-15 08:00:00")};
    EXPECT_EQ(Find(At("2026-11-14 08:00:00")).Gaps, (std::vector{lost}));
    EXPECT_TRUE(Find(At("2026-11-15 07:45:00")).Gaps.empty());
}

TEST_F(FindingsTest, ALoggerWithoutASteadyIntervalHasNoGaps) {
    logger.SampleInterval = "";
    Add("2026-11-15 08:00:00");
    Add("2026-11-16 08:00:00");
    EXPECT_TRUE(Find().Gaps.empty());
}

}  // namespace
