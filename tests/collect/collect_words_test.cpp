#include "collect/collect_words.h"

#include <gtest/gtest.h>

namespace {

CollectedLogger Collected(CollectOutcome outcome) {
    CollectedLogger logger;
    logger.Name = "Site 1";
    logger.Outcome = outcome;
    logger.Said = 5000;
    logger.Received = 1234;
    logger.New = 96;
    return logger;
}

struct Told {
    CollectOutcome Outcome;
    const char* Text;
};

class ResultTextTest : public testing::TestWithParam<Told> {};

TEST_P(ResultTextTest, EachOutcomeHasItsWords) {
    EXPECT_EQ(ResultText(Collected(GetParam().Outcome)), GetParam().Text);
}

INSTANTIATE_TEST_SUITE_P(
    Outcomes, ResultTextTest,
    testing::Values(
        Told{CollectOutcome::Done, "OK, 1234 records, 96 new"},
        Told{CollectOutcome::Full, "OK, 1234 of 5000 records, 96 new: one upload takes no more"},
        Told{CollectOutcome::NoEntry, "FAIL, its radio is not in the address book"},
        Told{CollectOutcome::NotTuned, "FAIL, the server radio could not be tuned to it"},
        Told{CollectOutcome::NoAnswer, "FAIL, no answer"},
        Told{CollectOutcome::NoSettings, "FAIL, its settings could not be read"},
        Told{CollectOutcome::Stopped, "FAIL, stopped behind 1234 of 5000 records, 96 new"},
        Told{CollectOutcome::BrokeOff,
             "FAIL, the upload broke off behind 1234 of 5000 records, 96 new"}));

TEST(ResultText, OneRecordIsOne) {
    CollectedLogger logger = Collected(CollectOutcome::Done);
    logger.Received = logger.New = 1;
    EXPECT_EQ(ResultText(logger), "OK, 1 record, 1 new");
    logger.Received = logger.New = 0;
    EXPECT_EQ(ResultText(logger), "OK, no records");
}

TEST(ResultText, WhatWasNotKeptIsNotOk) {
    CollectedLogger logger = Collected(CollectOutcome::Done);
    logger.NotKept = "The disk is full.\nMake room.";
    EXPECT_EQ(ResultText(logger),
              "FAIL, 1234 records, 96 new, not kept: The disk is full. Make room.");
}

TEST(ResultText, AClockFurtherOffThanAMinuteIsTold) {
    CollectedLogger logger = Collected(CollectOutcome::Done);
    logger.ClockAhead = 60;
    EXPECT_EQ(ResultText(logger), "OK, 1234 records, 96 new");
    logger.ClockAhead = 61;
    EXPECT_EQ(ResultText(logger), "OK, 1234 records, 96 new, its clock is 1 min 1 s ahead");
    logger.ClockAhead = -200;
    EXPECT_EQ(ResultText(logger), "OK, 1234 records, 96 new, its clock is 3 min 20 s behind");
    logger.ClockSet = true;
    EXPECT_EQ(ResultText(logger),
              "OK, 1234 records, 96 new, its clock is 3 min 20 s behind, clock set");
    logger.ClockAhead = 0;
    logger.ClockSet = false;
    EXPECT_EQ(ResultText(logger), "OK, 1234 records, 96 new, its clock could not be set");
}

TEST(DurationText, TakesTheTwoLargestUnits) {
    EXPECT_EQ(DurationText(59), "59 s");
    EXPECT_EQ(DurationText(60), "1 min");
    EXPECT_EQ(DurationText(3599), "59 min 59 s");
    EXPECT_EQ(DurationText(7500), "2 h 5 min");
    EXPECT_EQ(DurationText(86400 * 12 + 3 * 3600), "12 d 3 h");
}

TEST(InOneLine, TurnsBreaksAndRunsOfBlanksIntoOne) {
    EXPECT_EQ(InOneLine(" a\r\n\n  b\tc\n"), "a b c");
    EXPECT_EQ(InOneLine("\xC3\xA4"), "\xC3\xA4");
}

}  // namespace
