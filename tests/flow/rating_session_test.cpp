#include "flow/rating_session.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <optional>

#include "common/number_text.h"
#include "common/path_text.h"
#include "flow/flow_table.h"
#include "flow/rating_picture.h"
#include "rating_support.h"
#include "support/virtual_host.h"

namespace {

using namespace testing_support;

class RatingSessionTest : public ::testing::Test {
 protected:
    void Choose(std::string_view kind) { session_.ChooseKind(*FindRatingKind(kind)); }
    void Type(std::string_view key, std::string_view text) {
        session_.SetFieldText(*RatingFieldAt(session_.Entry().Kind(), key), text);
    }
    std::string Shown(std::string_view key) const {
        return session_.Entry().FieldText(*RatingFieldAt(session_.Entry().Kind(), key));
    }
    std::string Fault(std::string_view key) const {
        return session_.Entry().FieldFault(*RatingFieldAt(session_.Entry().Kind(), key));
    }
    std::string PathOf(const std::string& name) const { return JoinPath(folder_, name); }
    std::string Box() const {
        return host_.Boxes.Shown.empty() ? "" : host_.Boxes.Shown.back().Text;
    }
    void Pick(const std::string& path) { host_.Dialogs.Picks.push_back(path); }
    bool SaveAs(const std::string& name) {
        Pick(PathOf(name));
        return session_.Save();
    }

    VirtualHost host_;
    std::string folder_ = FreshFolder("rating_session");
    Host outside_ = host_.AsHost(folder_);
    RatingSession session_{outside_};
};

TEST_F(RatingSessionTest, BeginsWithTheFirstKindAndATableOfIt) {
    EXPECT_EQ(session_.Entry().Kind().Key, RatingKinds().front().Key);
    EXPECT_TRUE(session_.Made().Made());
    EXPECT_FALSE(session_.Changed());
    EXPECT_EQ(session_.Title(), "New Flow Table");
}

TEST_F(RatingSessionTest, WhatIsTypedMakesAnotherRating) {
    const double before = RatingFlowAt(session_.Made(), 0.5);
    Type("angle", "90");
    EXPECT_GT(RatingFlowAt(session_.Made(), 0.5), 1.5 * before);
    EXPECT_TRUE(session_.Changed());
    Type("angle", "60");
    EXPECT_FALSE(session_.Changed());
}

TEST_F(RatingSessionTest, ATextThatIsNoFigureStaysAndRefusesTheRating) {
    Type("angle", "ninety");
    EXPECT_EQ(Shown("angle"), "ninety");
    EXPECT_EQ(Fault("angle"), "Angle of the notch: \"ninety\" is not a number.");
    EXPECT_FALSE(session_.Made().Made());
    EXPECT_TRUE(Remarks(session_.Made(), RatingWeight::Refused, "is not a number"));
    Type("angle", " ");
    EXPECT_EQ(Fault("angle"), "Angle of the notch is missing.");
    Type("angle", "45");
    EXPECT_EQ(Fault("angle"), "");
    EXPECT_TRUE(session_.Made().Made());
}

TEST_F(RatingSessionTest, EveryFieldThatIsNotAcceptedIsTold) {
    Choose("rectangular-weir");
    Type("crest", "two");
    Type("crest-height", "4000");
    EXPECT_EQ(session_.Made().Remarks.size(), 2U);
    EXPECT_TRUE(Remarks(session_.Made(), RatingWeight::Refused, "has to lie within"));
}

TEST_F(RatingSessionTest, AFieldIsMarkedForItsFaultAndForARemarkOnIt) {
    const std::size_t angle = *RatingFieldAt(session_.Entry().Kind(), "angle");
    Type("angle", "1000");
    EXPECT_NE(session_.FieldMark(angle).find("has to lie within"), std::string::npos);
    Type("angle", "140");
    EXPECT_EQ(Fault("angle"), "");
    static_cast<void>(session_.Made());
    EXPECT_NE(session_.FieldMark(angle), "");
    Type("angle", "60");
    EXPECT_EQ(session_.FieldMark(angle), "");
}

TEST_F(RatingSessionTest, AnotherUnitTurnsFiguresAndLeavesOtherTexts) {
    Choose("rectangular-weir");
    Type("crest", "2");
    Type("crest-height", "two");
    session_.ChooseLengthUnit(1);
    EXPECT_EQ(Shown("crest"), "24");
    EXPECT_EQ(Shown("crest-height"), "two");
    session_.ChooseLengthUnit(0);
    EXPECT_EQ(Shown("crest"), "2");
}

TEST_F(RatingSessionTest, AnotherUnitTurnsRowsAndLeavesLinesThatAreNone) {
    Choose("points");
    session_.SetRowsText("level;flow\n1,5;2\n\n2;4 of late\n");
    EXPECT_EQ(session_.Entry().RowsReport(), "1 row; 2 lines are no rows and are passed over.");
    session_.ChooseLengthUnit(1);
    EXPECT_EQ(session_.Entry().RowsText(), "level;flow\n18\t2\n\n2;4 of late\n");
    session_.ChooseFlowUnit(1);
    EXPECT_EQ(session_.Entry().RowsText(), "level;flow\n18\t897.6\n\n2;4 of late\n");
}

TEST_F(RatingSessionTest, RowsBeyondTheLastAreToldOf) {
    Choose("points");
    std::string rows;
    for (std::size_t i = 0; i < MostRatingRows + 1; ++i) {
        rows += "1 2\n";
    }
    session_.SetRowsText(rows);
    EXPECT_EQ(session_.Entry().RowsReport(), "1000 rows; 1 row is beyond the 1000 that are taken.");
}

TEST_F(RatingSessionTest, FiguresOfAKindAreThereWhenItComesBack) {
    Type("angle", "77");
    session_.SetName("Mill");
    Choose("points");
    session_.SetRowsText("1 2\n2 5");
    EXPECT_EQ(session_.Device().Name, "Mill");
    session_.ChooseLengthUnit(2);
    Choose("v-notch");
    EXPECT_EQ(Shown("angle"), "77");
    EXPECT_EQ(session_.Device().LengthUnit, 2);
    Choose("points");
    EXPECT_EQ(session_.Device().Rows.size(), 2U);
    EXPECT_NEAR(session_.Device().Rows[0][0], 0.3048, 1e-12);
}

TEST_F(RatingSessionTest, LookingAtKindsIsNoChange) {
    Choose("parshall");
    Choose("points");
    EXPECT_FALSE(session_.Changed());
    EXPECT_TRUE(session_.MayClose());
    Choose("v-notch");
    Type("angle", "50");
    Choose("points");
    EXPECT_TRUE(session_.Changed());
}

TEST_F(RatingSessionTest, SavesWhereTheSetupLooksForTables) {
    session_.SetName("Mill 3: weir?");
    ASSERT_TRUE(SaveAs("mill.tbl"));
    const FileQuery& query = host_.Dialogs.Queries.front();
    EXPECT_EQ(query.InitialName, PathOf("Mill 3 weir.tbl"));
    EXPECT_EQ(query.DefaultExtension, ".tbl");
    EXPECT_EQ(query.Filter, "Flow Table File (*.tbl)|*.tbl");
    EXPECT_EQ(host_.Dialogs.Prompts, std::vector<bool>{true});
    EXPECT_FALSE(session_.Changed());
    EXPECT_EQ(session_.Title(), "Flow Table - mill.tbl");
    EXPECT_TRUE(host_.Boxes.Shown.empty());
    FlowTable table;
    ASSERT_TRUE(config::ReadFlowTable("mill.tbl", folder_, table));
    EXPECT_EQ(table.UpperBound(), session_.Made().Points.UpperBound());
    Type("angle", "30");
    ASSERT_TRUE(SaveAs("other.tbl"));
    EXPECT_EQ(host_.Dialogs.Queries.back().InitialName, PathOf("mill.tbl"));
}

TEST_F(RatingSessionTest, ANameIsOfferedFromTheKindIfTheDeviceHasNone) {
    EXPECT_EQ(SuggestedTableName(session_.Device()), "v-notch.tbl");
    session_.SetName(" ... ");
    EXPECT_EQ(SuggestedTableName(session_.Device()), "v-notch.tbl");
    session_.SetName("M\xc3\xbchle \x07/2");
    EXPECT_EQ(SuggestedTableName(session_.Device()), "M\xc3\xbchle 2.tbl");
}

TEST_F(RatingSessionTest, ARefusedRatingIsNotSavedAndTheReasonTold) {
    Type("angle", "no");
    EXPECT_FALSE(session_.Save());
    EXPECT_TRUE(host_.Dialogs.Queries.empty());
    ASSERT_EQ(host_.Boxes.Shown.size(), 1U);
    EXPECT_NE(Box().find("\"no\" is not a number"), std::string::npos);
    EXPECT_TRUE(session_.Changed());
}

TEST_F(RatingSessionTest, AFileThatCannotBeWrittenIsTold) {
    Type("angle", "50");
    Pick(folder_);
    EXPECT_FALSE(session_.Save());
    EXPECT_EQ(host_.Boxes.Shown.back().Icon, BoxIcon::Stop);
    EXPECT_NE(Box().find("could not be written"), std::string::npos);
    EXPECT_TRUE(session_.Changed());
    EXPECT_EQ(session_.Title(), "New Flow Table");
    EXPECT_FALSE(SaveAs("missing/folder.tbl"));
    EXPECT_EQ(host_.Boxes.Shown.size(), 2U);
}

TEST_F(RatingSessionTest, CancellingSavesNothing) {
    Type("angle", "50");
    EXPECT_FALSE(session_.Save());
    EXPECT_TRUE(host_.Boxes.Shown.empty());
    EXPECT_TRUE(session_.Changed());
}

TEST_F(RatingSessionTest, ASavedTableOpensForChange) {
    Choose("channel-section");
    session_.SetName("Ditch");
    session_.ChooseLengthUnit(2);
    session_.ChooseFlowUnit(4);
    session_.SetRowsText("0 1 0.03\n1 0\n2 0 0.02\n3 1\n");
    Type("slope", "0.4");
    ASSERT_TRUE(SaveAs("ditch.tbl"));
    const RatingEntry typed = session_.Entry();
    RatingSession other(outside_);
    Pick(PathOf("ditch.tbl"));
    ASSERT_TRUE(other.Open());
    EXPECT_TRUE(host_.Boxes.Shown.empty());
    EXPECT_EQ(other.Device().Kind, typed.Device().Kind);
    EXPECT_EQ(other.Device().Name, "Ditch");
    EXPECT_EQ(other.Device().LengthUnit, 2);
    EXPECT_EQ(other.Device().FlowUnit, 4);
    EXPECT_EQ(other.Device().Values, typed.Device().Values);
    EXPECT_EQ(other.Device().Rows, typed.Device().Rows);
    EXPECT_FALSE(other.Changed());
    EXPECT_EQ(other.Title(), "Flow Table - ditch.tbl");
    EXPECT_EQ(host_.Dialogs.Queries.back().InitialName, PathOf("*.tbl"));
}

TEST_F(RatingSessionTest, ATableMadeElsewhereBecomesOwnPoints) {
    WriteFile(PathOf("old.tbl"), "some heading\n0 0\n1 2\n2 6\n");
    Pick(PathOf("old.tbl"));
    ASSERT_TRUE(session_.Open());
    EXPECT_EQ(session_.Entry().Kind().Key, "points");
    EXPECT_EQ(session_.Device().Rows.size(), 3U);
    ASSERT_EQ(host_.Boxes.Shown.size(), 1U);
    EXPECT_NE(Box().find("own points"), std::string::npos);
}

TEST_F(RatingSessionTest, AnOpenedTableLeavesNothingOfWhatWasTypedBefore) {
    Choose("cipolletti");
    Type("crest", "7");
    Choose("parshall");
    ASSERT_TRUE(SaveAs("parshall.tbl"));
    Pick(PathOf("parshall.tbl"));
    ASSERT_TRUE(session_.Open());
    Choose("cipolletti");
    EXPECT_EQ(Shown("crest"), "2");
}

TEST_F(RatingSessionTest, AFileThatIsNoTableIsToldAndNothingIsLost) {
    Type("angle", "50");
    host_.Boxes.Answers = {BoxAnswer::No};
    WriteFile(PathOf("letter.tbl"), "Dear all,\n");
    Pick(PathOf("letter.tbl"));
    EXPECT_FALSE(session_.Open());
    EXPECT_EQ(Box(), "Error: selected file does not appear to be a valid flow table file.");
    EXPECT_EQ(Shown("angle"), "50");
    EXPECT_TRUE(session_.Changed());
}

TEST_F(RatingSessionTest, OpeningAsksAboutChanges) {
    Type("angle", "50");
    host_.Boxes.Answers = {BoxAnswer::Cancel};
    EXPECT_FALSE(session_.Open());
    EXPECT_TRUE(host_.Dialogs.Queries.empty());
    EXPECT_EQ(host_.Boxes.Shown.front().Title, "Data Has Changed");
    EXPECT_EQ(host_.Boxes.Shown.front().Buttons, BoxButtons::YesNoCancel);
}

TEST_F(RatingSessionTest, ClosingAsksAboutChanges) {
    EXPECT_TRUE(session_.MayClose());
    Type("angle", "50");
    host_.Boxes.Answers = {BoxAnswer::Cancel, BoxAnswer::No, BoxAnswer::Yes, BoxAnswer::Yes};
    EXPECT_FALSE(session_.MayClose());
    EXPECT_TRUE(session_.MayClose());
    EXPECT_FALSE(session_.MayClose()) << "saving was cancelled";
    Pick(PathOf("kept.tbl"));
    EXPECT_TRUE(session_.MayClose());
    EXPECT_FALSE(FileContents(PathOf("kept.tbl")).empty());
    EXPECT_EQ(host_.Boxes.Shown.size(), 4U);
}

TEST_F(RatingSessionTest, DoesNotAskTwiceAtOnce) {
    Type("angle", "50");
    bool inner = true;
    host_.Boxes.WhileShown = [&] { inner = session_.MayClose(); };
    host_.Boxes.Answers = {BoxAnswer::No};
    EXPECT_TRUE(session_.MayClose());
    EXPECT_FALSE(inner);
    EXPECT_EQ(host_.Boxes.Shown.size(), 1U);
}

TEST_F(RatingSessionTest, SilencedItAsksAndTellsNothing) {
    Type("angle", "no");
    session_.Silence();
    EXPECT_FALSE(session_.Save());
    EXPECT_FALSE(session_.MayClose());
    Type("angle", "50");
    EXPECT_FALSE(SaveAs("late.tbl"));
    EXPECT_TRUE(FileContents(PathOf("late.tbl")).empty());
    EXPECT_TRUE(host_.Boxes.Shown.empty());
}

TEST_F(RatingSessionTest, RowsComeFromAFile) {
    Choose("points");
    WriteFile(PathOf("gauged.csv"), "Level,Flow\r\n0.5,1.2\r\n1.0,4.1\r\n");
    Pick(PathOf("gauged.csv"));
    const std::string text = session_.PickRows();
    EXPECT_TRUE(session_.Device().Rows.empty());
    session_.SetRowsText(text);
    EXPECT_EQ(session_.Device().Rows.size(), 2U);
    EXPECT_EQ(host_.Dialogs.Queries.back().InitialName, PathOf("*.csv"));
}

TEST_F(RatingSessionTest, AFileTooLargeForRowsIsTold) {
    Choose("points");
    WriteFile(PathOf("large.csv"), "1 2\n" + std::string(std::size_t{8} << 20, '\n'));
    Pick(PathOf("large.csv"));
    EXPECT_EQ(session_.PickRows(), "");
    EXPECT_EQ(host_.Boxes.Shown.size(), 1U);
}

TEST_F(RatingSessionTest, AFileWithoutRowsIsTold) {
    Choose("points");
    session_.SetRowsText("1 2\n2 5");
    WriteFile(PathOf("letter.csv"), "Dear all,\n");
    for (const char* name : {"letter.csv", "missing.csv"}) {
        Pick(PathOf(name));
        EXPECT_EQ(session_.PickRows(), "");
    }
    ASSERT_EQ(host_.Boxes.Shown.size(), 2U);
    EXPECT_NE(Box().find("no row of figures"), std::string::npos);
    EXPECT_EQ(session_.Device().Rows.size(), 2U);
}

TEST_F(RatingSessionTest, HelpTellsHintAndLimitsInTheUnitShown) {
    const auto help = [this](std::string_view key) {
        return session_.Entry().FieldHelp(*RatingFieldAt(session_.Entry().Kind(), key));
    };
    EXPECT_EQ(help("angle"), "The full angle between the two sides. 10 to 150 degrees.");
    session_.ChooseLengthUnit(2);
    EXPECT_NE(help("channel-width").find("0.03 to 1000 meters, or empty."), std::string::npos)
        << help("channel-width");
    Choose("points");
    session_.ChooseFlowUnit(4);
    EXPECT_EQ(session_.Entry().RowsCaption(), "Level in meters, Flow in LPS");
}

TEST(RatingPicture, PartsTheCurveWhereTheMethodEnds) {
    RatingDevice device = DeviceOf("v-notch", {{"greatest-head", 5}});
    const Rating rating = ComputeRating(device);
    ASSERT_TRUE(rating.Made());
    const RatingPicture picture = PictureOf(device, rating);
    ASSERT_FALSE(picture.Below.empty());
    ASSERT_FALSE(picture.Above.empty());
    EXPECT_NEAR(picture.Below.back().Head, rating.LeastHead, 1e-9);
    EXPECT_NEAR(picture.Inside.front().Head, rating.LeastHead, 1e-9);
    EXPECT_NEAR(picture.Inside.back().Flow, rating.GreatestFlow, 1e-9);
    EXPECT_NEAR(picture.Above.front().Flow, rating.GreatestFlow, 1e-9);
    EXPECT_EQ(picture.Curve.size(), static_cast<std::size_t>(rating.Points.UpperBound()));
}

TEST(RatingPicture, SpeaksTheUnitsOfTheDevice) {
    RatingDevice device = DeviceOf("v-notch", {}, InCentimeters);
    device.FlowUnit = 4;
    const Rating rating = ComputeRating(device);
    const RatingPicture picture = PictureOf(device, rating);
    EXPECT_EQ(picture.HeadTitle, "Head, cm");
    EXPECT_EQ(picture.FlowTitle, "Flow, LPS");
    const double feet = picture.Stops.back().Head / 30.48;
    EXPECT_NEAR(picture.Stops.back().Flow, RatingFlowAt(rating, feet) * 28.3167, 0.01);
    const std::string told = StopText(picture, device, NearestStop(picture, 10));
    // 8/15 x 0.577 x sqrt(2 g) x tan 30 degrees x (0.1 m + 0.001 m)^2.5 = 2.55 litres a second.
    EXPECT_EQ(told, "Head 10.0 cm, flow 2.559 LPS.");
    EXPECT_NE(StopText(picture, device, 0).find(", an estimate."), std::string::npos);
    EXPECT_EQ(StopText(picture, device, picture.Stops.size()), "");
}

/// The manual's text with a blank for every break of a line.
std::string ManualText() {
    std::string text =
        FileContents(std::string(ORVIA_DATA_FOLDER) + "/../docs/manual/flow-tables.md");
    std::replace(text.begin(), text.end(), '\n', ' ');
    for (auto at = text.find("  "); at != std::string::npos; at = text.find("  ", at)) {
        text.erase(at, 1);
    }
    return text;
}

TEST(RatingPicture, TheManualsWorkedExampleShowsWhatTheProgramDoes) {
    RatingDevice device = DeviceOf(
        "v-notch", {{"angle", 53.13}, {"crest-height", 24}, {"channel-width", 48}}, InInches);
    device.FlowUnit = 1;
    const Rating rating = ComputeRating(device);
    const RatingPicture picture = PictureOf(device, rating);
    const std::string manual = ManualText();
    const auto tells = [&manual](const std::string& words) {
        EXPECT_NE(manual.find(words), std::string::npos) << words;
    };
    tells("Range: " + RatingRangeText(rating, device.LengthUnit, device.FlowUnit) + ".");
    tells("Uncertainty: " + DoubleToText(rating.Uncertainty) + " %");
    const std::string stop = StopText(picture, device, NearestStop(picture, 6));
    EXPECT_EQ(stop, "Head 6.0 inches, flow 100.2 GPM.");
    tells("at 6 inches the flow is 100.2 GPM");
}

TEST(RatingPicture, ShowsOwnPointsWithTheirResiduals) {
    const RatingDevice device = RowsOf("points",
                                       "0.1 0.0949\n0.2 0.268\n0.3 0.493\n0.4 0.759\n0.5 2.1\n"
                                       "0.6 1.394\n0.7 1.757\n0.8 2.147\n0.9 2.561\n1 3");
    const RatingPicture picture = PictureOf(device, ComputeRating(device));
    EXPECT_EQ(picture.HeadTitle, "Level, feet");
    ASSERT_EQ(picture.OwnPoints.size(), 10U);
    EXPECT_TRUE(picture.OwnPoints[4].Marked);
    EXPECT_TRUE(picture.Residuals.Rows[4].Marked);
    EXPECT_EQ(picture.Residuals.Rows[4].Cells[0], "0.5");
    EXPECT_FALSE(picture.OwnPoints[0].Marked);
}

TEST(RatingPicture, MarksALogarithmicAxisAtRoundFigures) {
    EXPECT_EQ(LogarithmicTicks(0.12, 5), (std::vector<double>{0.2, 0.5, 1, 2, 5}));
    EXPECT_EQ(LogarithmicTicks(0.001, 50), (std::vector<double>{0.001, 0.01, 0.1, 1, 10}));
    EXPECT_EQ(LogarithmicTicks(100, 100.5), (std::vector<double>{100}));
    for (const auto& [first, last] : {std::pair(0.0, 1.0), std::pair(-1.0, 1.0),
                                      std::pair(2.0, 1.0), std::pair(1.0, HUGE_VAL)}) {
        EXPECT_TRUE(LogarithmicTicks(first, last).empty());
    }
}

TEST(RatingPicture, EveryKindTellsRangeUncertaintyEquationsAndSources) {
    for (const RatingKind& kind : RatingKinds()) {
        const RatingDevice device = SomeDevice(kind);
        std::vector<std::string> headings;
        for (const RatingChapter& chapter : ChaptersOf(device, ComputeRating(device))) {
            headings.push_back(chapter.Heading);
            EXPECT_FALSE(chapter.Lines.empty());
        }
        for (const char* heading : {"Range", "Uncertainty", "Equations", "Sources"}) {
            EXPECT_NE(std::find(headings.begin(), headings.end(), heading), headings.end())
                << kind.Key << ": " << heading;
        }
    }
}

TEST(RatingPicture, ARefusedRatingTellsWhyFirst) {
    RatingDevice device = DeviceOf("v-notch", {{"angle", 1000}});
    const Rating rating = ComputeRating(device);
    const auto chapters = ChaptersOf(device, rating);
    ASSERT_EQ(chapters.size(), 1U);
    EXPECT_EQ(chapters[0].Heading, "No table can be made");
    EXPECT_TRUE(chapters[0].Weighty);
    EXPECT_TRUE(PictureOf(device, rating).Stops.empty());
}

}  // namespace
