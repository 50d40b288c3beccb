#include "setup/setup_changes.h"

#include "common/path_text.h"
#include "setup/setup_fixture.h"

namespace {

using setup_testing::OpenedSetup;
using setup_testing::SetupSite;
using setup_testing::SetupTest;
using testing_support::FileContents;
using testing_support::FreshFolder;

constexpr const char* SaveQuestion =
    "The settings information has changed without being saved to a file.\n"
    "Do you want to save it now?";
constexpr const char* ProgramQuestion =
    "The settings information has changed without being programmed to the logger.\n"
    "If you exit now, the settings information will be restored from the current contents of the "
    "logger.\nDo you want to program the logger now?";
constexpr const char* DefaultsQuestion =
    "This action will reset all setup values to defaults, but will not program the\n"
    "values into the logger until the Program button is clicked. Do you want to proceed?";

class SetupChanges : public SetupTest {
 protected:
    bool Close() { return QueryUnloadSetup(opened.Context()); }

    void ExpectQuestions(const std::vector<std::string>& texts) {
        const auto boxes = opened.TakeBoxes();
        ASSERT_EQ(boxes.size(), texts.size());
        for (std::size_t i = 0; i < texts.size(); ++i) {
            EXPECT_EQ(boxes[i].Text, texts[i]);
            EXPECT_EQ(boxes[i].Title, "Data Has Changed");
            EXPECT_EQ(boxes[i].Icon, BoxIcon::Information);
            EXPECT_EQ(boxes[i].Buttons, BoxButtons::YesNoCancel);
        }
    }
};

TEST_F(SetupChanges, ImagesOfDifferentLengthsDiffer) {
    EXPECT_TRUE(ImagesEqual({1, 2}, {1, 2}));
    EXPECT_FALSE(ImagesEqual({1, 2}, {1, 3}));
    EXPECT_FALSE(ImagesEqual({1, 2}, {1, 2, 0}));
}

TEST_F(SetupChanges, OpeningFreesTheLinkAndTakesBothImages) {
    EXPECT_EQ(opened.Busy(), False);
    EXPECT_EQ(opened.dialog.FileImage, opened.Image());
    EXPECT_EQ(opened.dialog.LoggerImage, opened.Image());
    EXPECT_EQ(opened.dialog.CurrentFile, "");
}

TEST_F(SetupChanges, AnUnchangedDialogClosesWithoutAQuestion) {
    EXPECT_TRUE(Close());
    ExpectNoBox();
    EXPECT_EQ(opened.Busy(), True) << "left to the operation that showed the dialog";
}

TEST_F(SetupChanges, AChangeTakenBackIsNone) {
    const std::string name = controls.txtName;
    controls.txtName = "Other";
    opened.Answer(BoxAnswer::Cancel);
    EXPECT_TRUE(CheckSavedToFile(opened.Context()));
    ExpectQuestions({SaveQuestion});
    controls.txtName = name;
    controls.Analog[0].txtHighEU += ".000";
    EXPECT_TRUE(Close()) << "another text of the same number";
    ExpectNoBox();
}

TEST_F(SetupChanges, BothQuestionsAreAskedInTurn) {
    controls.txtName = "Other";
    opened.Answer(BoxAnswer::No, BoxAnswer::No);
    EXPECT_TRUE(Close());
    ExpectQuestions({SaveQuestion, ProgramQuestion});
}

TEST_F(SetupChanges, CancelAtTheFirstQuestionKeepsTheDialog) {
    controls.txtName = "Other";
    opened.Answer(BoxAnswer::Cancel);
    EXPECT_FALSE(Close());
    ExpectQuestions({SaveQuestion});
    EXPECT_EQ(opened.Busy(), False);
}

TEST_F(SetupChanges, CancelAtTheSecondQuestionKeepsTheDialog) {
    controls.txtName = "Other";
    opened.Answer(BoxAnswer::No, BoxAnswer::Cancel);
    EXPECT_FALSE(Close());
    ExpectQuestions({SaveQuestion, ProgramQuestion});
    EXPECT_EQ(opened.Busy(), False);
}

TEST_F(SetupChanges, YesToSavingThatIsThenCancelledKeepsTheDialog) {
    controls.txtName = "Other";
    opened.Answer(BoxAnswer::Yes);
    EXPECT_FALSE(Close()) << "the file dialog was cancelled";
    ExpectQuestions({SaveQuestion});
}

TEST_F(SetupChanges, YesToSavingSavesAndGoesOn) {
    const std::string path = JoinPath(FreshFolder("closing"), "site.set");
    opened.console.Outside.Dialogs.Picks.push_back(path);
    controls.txtName = "Other";
    opened.Answer(BoxAnswer::Yes, BoxAnswer::No);
    EXPECT_TRUE(Close());
    ExpectQuestions({SaveQuestion, ProgramQuestion});
    EXPECT_NE(FileContents(path).find("LoggerName=Other\r\n"), std::string::npos);
}

TEST_F(SetupChanges, YesToProgrammingProgramsAndCloses) {
    controls.txtName = "Other";
    opened.Answer(BoxAnswer::No, BoxAnswer::Yes);
    const Bytes before = opened.dialog.LoggerImage;
    EXPECT_TRUE(Close());
    ExpectQuestions({SaveQuestion, ProgramQuestion});
    EXPECT_EQ(opened.LoggerMemory(), opened.Image());
    EXPECT_EQ(view.Shape, Pointer::Normal);
    EXPECT_EQ(opened.dialog.LoggerImage, before);
}

TEST_F(SetupChanges, AFieldThatRefusesKeepsTheDialogFromSaving) {
    controls.txtSampleInterval = "0";
    view.FieldAccepts = false;
    opened.console.Outside.Dialogs.Picks.push_back(JoinPath(FreshFolder("refused"), "site.set"));
    opened.Answer(BoxAnswer::Yes);
    EXPECT_FALSE(Close());
    ExpectQuestions({SaveQuestion});
    EXPECT_EQ(view.FieldChecks, 1);
    EXPECT_TRUE(opened.console.Outside.Dialogs.Queries.empty()) << "no file is asked for";
    EXPECT_EQ(opened.Busy(), False);
}

TEST_F(SetupChanges, AFieldThatRefusesKeepsTheDialogFromProgramming) {
    controls.Analog[0].txtHighRaw = "abc";
    view.FieldAccepts = false;
    const Bytes before = opened.LoggerMemory();
    const int requests = opened.console.Outside.Network.Count().Requests;
    opened.Answer(BoxAnswer::No, BoxAnswer::Yes);
    EXPECT_FALSE(Close());
    ExpectQuestions({SaveQuestion, ProgramQuestion});
    EXPECT_EQ(view.FieldChecks, 1);
    EXPECT_EQ(opened.LoggerMemory(), before);
    EXPECT_EQ(opened.console.Outside.Network.Count().Requests, requests);
    EXPECT_EQ(opened.dialog.LoggerUncertain, False);
    EXPECT_EQ(opened.Busy(), False);
}

TEST_F(SetupChanges, AFieldIsNotAskedWhereNothingIsTaken) {
    controls.txtSampleInterval = "0";
    view.FieldAccepts = false;
    opened.Answer(BoxAnswer::No, BoxAnswer::No);
    EXPECT_TRUE(Close());
    EXPECT_EQ(view.FieldChecks, 0);
}

TEST_F(SetupChanges, WhatAFieldBecomesIsWhatIsSavedThenProgrammed) {
    controls.txtSampleInterval = "1.5";
    view.OnValidation = [this] { controls.txtSampleInterval = "2"; };
    const std::string path = JoinPath(FreshFolder("becomes"), "site.set");
    opened.console.Outside.Dialogs.Picks.push_back(path);
    opened.Answer(BoxAnswer::Yes, BoxAnswer::No);
    EXPECT_TRUE(Close());
    EXPECT_NE(FileContents(path).find("SampleInterval=2 minutes\r\n"), std::string::npos);
    controls.txtSampleInterval = "1.5";
    controls.txtName = "Other";
    opened.Busy() = False;
    opened.Answer(BoxAnswer::No, BoxAnswer::Yes);
    EXPECT_TRUE(Close());
    EXPECT_EQ(opened.Global().SampleInterval, "2 minutes");
    EXPECT_EQ(opened.LoggerMemory(), opened.Image());
}

TEST_F(SetupChanges, AFailedProgrammingKeepsTheDialog) {
    controls.txtName = "Other";
    opened.Logger().Silence();
    opened.Answer(BoxAnswer::No, BoxAnswer::Yes);
    EXPECT_FALSE(Close());
    const auto boxes = opened.TakeBoxes();
    ASSERT_EQ(boxes.size(), 3U);
    EXPECT_EQ(boxes[2].Text, "Error: programming not completed successfully.");
    EXPECT_EQ(boxes[2].Title, "Program Settings");
    EXPECT_EQ(boxes[2].Icon, BoxIcon::Stop);
    EXPECT_EQ(controls.txtName, "Other");
    EXPECT_EQ(opened.Busy(), False);
    EXPECT_EQ(view.Shape, Pointer::Normal);
    EXPECT_FALSE(view.Held);
}

TEST_F(SetupChanges, AFailedProgrammingIsAskedAboutThoughTheChangeWasTakenBack) {
    controls.chkWrap = !controls.chkWrap;
    // The first piece arrives, the second does not.
    opened.console.Outside.Network.Faults().Pass(1).Always(
        simulator::Plain(simulator::FaultKind::LoseRequest));
    opened.Answer(BoxAnswer::Yes);
    ProgramSettings(opened.Context());
    opened.TakeBoxes();
    ASSERT_NE(opened.LoggerMemory(), opened.dialog.LoggerImage);
    controls.chkWrap = !controls.chkWrap;

    opened.console.Outside.Network.Faults().Clear();
    opened.Answer(BoxAnswer::Yes);
    EXPECT_TRUE(Close());
    ExpectQuestions({ProgramQuestion});
    EXPECT_EQ(opened.LoggerMemory(), opened.dialog.LoggerImage);
}

TEST_F(SetupChanges, AProgrammingThatNeverBeganLeavesNothingToAskAbout) {
    const std::string before = controls.Analog[0].txtLowRaw;
    controls.Analog[0].txtLowRaw = "70000";
    opened.Answer(BoxAnswer::Yes);
    ProgramSettings(opened.Context());
    EXPECT_EQ(opened.TakeBoxes().back().Text, "Error: programming not completed successfully.");
    EXPECT_EQ(opened.dialog.LoggerUncertain, False);
    controls.Analog[0].txtLowRaw = before;
    EXPECT_TRUE(Close());
    ExpectNoBox();
}

TEST_F(SetupChanges, YesWithoutALoggerKeepsTheDialog) {
    controls.txtName = "Other";
    opened.console.State.LinkRecord.Connected = False;
    opened.Answer(BoxAnswer::No, BoxAnswer::Yes);
    EXPECT_FALSE(Close());
    EXPECT_EQ(opened.TakeBoxes().size(), 3U);
    EXPECT_EQ(opened.Busy(), False);
}

TEST_F(SetupChanges, AnOperationRefusesTheClose) {
    controls.txtName = "Other";
    opened.Busy() = True;
    EXPECT_FALSE(Close());
    ExpectNoBox();
    EXPECT_EQ(opened.Busy(), True);
}

TEST_F(SetupChanges, ACloseInsideItsOwnQuestionIsRefused) {
    controls.txtName = "Other";
    bool inner = true;
    opened.console.Outside.Boxes.WhileShown = [&] { inner = Close(); };
    opened.Answer(BoxAnswer::No, BoxAnswer::No);
    EXPECT_TRUE(Close());
    EXPECT_FALSE(inner);
    EXPECT_EQ(opened.TakeBoxes().size(), 2U);
}

TEST_F(SetupChanges, ACloseInsideTheProgrammingIsRefused) {
    controls.txtName = "Other";
    bool inner = true;
    opened.console.Outside.Time.In(50 * testing_support::Millisecond, [&] { inner = Close(); });
    opened.Answer(BoxAnswer::No, BoxAnswer::Yes);
    EXPECT_TRUE(Close());
    EXPECT_FALSE(inner);
}

TEST_F(SetupChanges, WhatCannotBeEncodedCountsAsChanged) {
    controls.Analog[0].txtHighRaw = "70000";
    opened.Answer(BoxAnswer::No, BoxAnswer::Cancel);
    EXPECT_FALSE(Close());
    ExpectQuestions({SaveQuestion, ProgramQuestion});
}

TEST_F(SetupChanges, WhatCannotBeTakenCountsAsChangedAndIsNotSaved) {
    controls.Alarms[0].txtAlarm = "1E999";
    const std::string path = JoinPath(FreshFolder("untaken"), "site.set");
    opened.console.Outside.Dialogs.Picks.push_back(path);
    opened.Answer(BoxAnswer::Yes);
    EXPECT_FALSE(Close());
    EXPECT_EQ(opened.TakeBoxes().back().Text, "Error: file was not saved correctly.");
    EXPECT_EQ(FileContents(path), "");
    opened.Answer(BoxAnswer::No, BoxAnswer::Yes);
    EXPECT_FALSE(Close());
    EXPECT_EQ(opened.TakeBoxes().back().Text, "Error: programming not completed successfully.");
}

TEST_F(SetupChanges, DefaultsAreAQuestionFirst) {
    controls.txtName = "Other";
    opened.Answer(BoxAnswer::No);
    InitializeSetup(opened.Context());
    ExpectBox(DefaultsQuestion, "Initialize to Default Values", BoxIcon::Question,
              BoxButtons::YesNo);
    EXPECT_EQ(controls.txtName, "Other");
}

TEST_F(SetupChanges, DefaultsPromptOnClosing) {
    opened.Global().FixedBaudRate = 5;
    opened.Answer(BoxAnswer::Yes, BoxAnswer::No, BoxAnswer::No);
    InitializeSetup(opened.Context());
    EXPECT_EQ(controls.txtName, "Tessel");
    EXPECT_EQ(controls.Analog[2].cmbEU, "Volts");
    EXPECT_EQ(controls.cmbBaud, 5) << "the baud rate stays";
    EXPECT_TRUE(Close());
    EXPECT_EQ(opened.TakeBoxes().size(), 3U);
}

TEST_F(SetupChanges, DefaultsDuringAnOperationDoNothing) {
    opened.Busy() = True;
    InitializeSetup(opened.Context());
    ExpectNoBox();
}

TEST(SetupOpening, ATagThatNoCatalogueKnowsCountsAsAChange) {
    simulator::LoggerSetup site = SetupSite();
    site.Settings.Flow.FlumeTag = "GONE";
    OpenedSetup opened(site);
    opened.Open();
    opened.Answer(BoxAnswer::No, BoxAnswer::No);
    EXPECT_TRUE(QueryUnloadSetup(opened.Context()));
    EXPECT_EQ(opened.TakeBoxes().size(), 2U);
}

TEST(SetupOpening, DecPlacesOf9CountAsAChange) {
    simulator::LoggerSetup site = SetupSite();
    site.Settings.Analog[1].Decimals = 9;
    OpenedSetup opened(site);
    opened.Open();
    opened.Answer(BoxAnswer::No, BoxAnswer::No);
    EXPECT_TRUE(QueryUnloadSetup(opened.Context()));
    EXPECT_EQ(opened.TakeBoxes().size(), 2U);
}

class UnchangedSites : public ::testing::TestWithParam<int> {};

TEST_P(UnchangedSites, CloseWithoutAQuestion) {
    simulator::LoggerSetup site = SetupSite(GetParam(), GetParam() % 3);
    site.Settings.Flow.ManningsN = 0.013;
    site.Settings.Flow.FlowTop = 12.3456;
    site.Settings.Alarms[1] = {true, 13, 5, 9};
    site.Settings.LoggingStyle = 129;
    site.Settings.FixedBaudRate = 100;
    OpenedSetup opened(site);
    opened.Open();
    EXPECT_TRUE(QueryUnloadSetup(opened.Context()));
    EXPECT_TRUE(opened.TakeBoxes().empty());
}

INSTANTIATE_TEST_SUITE_P(OfAnyNumberOfChannels, UnchangedSites, ::testing::Range(1, 9));

TEST_F(SetupChanges, TheTimerFollowsAlarmsAndRecentFiles) {
    controls.Alarms[1].chkAlarm = true;
    opened.console.State.SettingsRecord.LastFile = {"/home/x/a&b.set", "", "/c.set", ""};
    SetupTick(opened.Context());
    EXPECT_EQ(view.AlarmOn, (std::array<bool, 2>{false, true}));
    EXPECT_EQ(view.Recent, (std::array<std::string, 4>{"a&b.set", "", "/c.set", ""}));
    controls.Alarms[1].chkAlarm = false;
    SetupTick(opened.Context());
    EXPECT_FALSE(view.AlarmOn[1]);
}

}  // namespace
