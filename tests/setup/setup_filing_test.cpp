#include "setup/setup_filing.h"

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include <algorithm>
#include <filesystem>

#include "common/path_text.h"
#include "setup/setup_file.h"
#include "setup/setup_fixture.h"
#include "setup/setup_transfer.h"
#include "support/small_disk.h"

namespace {

using setup_testing::SetupTest;
using testing_support::FileContents;
using testing_support::FreshFolder;
using testing_support::WriteFile;

class SetupFiling : public SetupTest {
 protected:
    std::string PathOf(const std::string& name) const { return JoinPath(folder_, name); }
    void Pick(const std::string& path) { opened.console.Outside.Dialogs.Picks.push_back(path); }
    bool Save(const std::string& path) {
        Pick(path);
        return SaveSetupFile(opened.Context());
    }
    void Load(const std::string& text) {
        WriteFile(PathOf("load.set"), text);
        Pick(PathOf("load.set"));
        LoadSetupFile(opened.Context());
    }
    void ExpectLoadFailed() {
        ExpectBox("Error: file was not loaded correctly.", "Load Setup", BoxIcon::Stop);
    }
    void ExpectSaveFailed() {
        ExpectBox("Error: file was not saved correctly.", "Save Setup", BoxIcon::Stop);
    }
    Settings& Stored() { return opened.console.State.SettingsRecord; }
    const FileQuery& LastQuery() { return opened.console.Outside.Dialogs.Queries.back(); }

    std::string folder_ = FreshFolder("filing");
};

TEST_F(SetupFiling, SavingAsksWhere) {
    EXPECT_FALSE(SaveSetupFile(opened.Context())) << "cancelled";
    ExpectNoBox();
    EXPECT_EQ(LastQuery().Title, "Save Setup File");
    EXPECT_EQ(LastQuery().DefaultExtension, ".dat");
    EXPECT_EQ(LastQuery().Filter, "Setup Files (*.set)|*.set");
    EXPECT_EQ(LastQuery().InitialName, JoinPath("/nowhere", "*.set"));
    EXPECT_EQ(opened.console.Outside.Dialogs.Prompts, std::vector<bool>{false})
        << "the program asks about overwriting itself";
}

TEST_F(SetupFiling, SavingStartsAmongTheDocumentsWhereTheProgramsFolderTakesNoFile) {
    opened.console.State.Outside.SaveFolder = folder_;
    EXPECT_FALSE(SaveSetupFile(opened.Context())) << "cancelled";
    EXPECT_EQ(LastQuery().InitialName, PathOf("*.set"));
}

TEST_F(SetupFiling, SavingWritesTheControlsAndBecomesTheFileImage) {
    controls.txtName = "Saved";
    ASSERT_TRUE(Save(PathOf("a.set")));
    ExpectNoBox();
    const std::string file = FileContents(PathOf("a.set"));
    EXPECT_TRUE(
        file.starts_with("Program=Orvia\r\nVersion=1.0.0\r\nDate=11/15/2026\r\nTime=08:30:"))
        << file;
    EXPECT_NE(file.find("LoggerName=Saved\r\n"), std::string::npos);
    EXPECT_EQ(std::count(file.begin(), file.end(), '\n'), 141);
    EXPECT_EQ(opened.dialog.FileImage, opened.Image());
    EXPECT_NE(opened.dialog.LoggerImage, opened.Image());
    EXPECT_EQ(opened.dialog.CurrentFile, "a.set");
    EXPECT_EQ(Stored().LastFilePath, folder_);
    EXPECT_EQ(Stored().LastFile[0], PathOf("a.set"));
}

TEST_F(SetupFiling, TheNextDialogStartsOnTheCurrentFile) {
    ASSERT_TRUE(Save(PathOf("a.set")));
    EXPECT_FALSE(SaveSetupFile(opened.Context()));
    EXPECT_EQ(LastQuery().InitialName, PathOf("a.set"));
}

TEST_F(SetupFiling, OverwritingIsAQuestion) {
    WriteFile(PathOf("a.set"), "old");
    opened.Answer(BoxAnswer::Yes);
    EXPECT_TRUE(Save(PathOf("a.set")));
    ExpectBox("The setup file already exists, do you want to overwrite it?", "Save Setup",
              BoxIcon::Information, BoxButtons::YesNo);
    EXPECT_NE(FileContents(PathOf("a.set")), "old");
}

TEST_F(SetupFiling, ARefusedOverwriteStillMovesTheNameToTheTop) {
    WriteFile(PathOf("a.set"), "old");
    Stored().LastFile = {"x", "y", "", ""};
    opened.Answer(BoxAnswer::No);
    EXPECT_FALSE(Save(PathOf("a.set")));
    EXPECT_EQ(FileContents(PathOf("a.set")), "old");
    EXPECT_EQ(Stored().LastFile[0], PathOf("a.set"));
    EXPECT_EQ(Stored().LastFile[1], "x");
    EXPECT_EQ(opened.dialog.CurrentFile, "a.set");
}

TEST_F(SetupFiling, AFolderThatIsGoneCannotBeSavedTo) {
    controls.txtName = "Kept";
    const Bytes before = opened.dialog.FileImage;
    EXPECT_FALSE(Save(PathOf("gone/a.set")));
    ExpectSaveFailed();
    EXPECT_EQ(opened.dialog.FileImage, before);
    EXPECT_EQ(controls.txtName, "Kept");
}

TEST_F(SetupFiling, AFolderOfThatNameCannotBeSavedTo) {
    EXPECT_FALSE(Save(folder_));
    ExpectSaveFailed();
}

#ifndef _WIN32
TEST_F(SetupFiling, APipeIsNeitherWrittenNorRead) {
    ASSERT_EQ(::mkfifo(PathOf("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(Save(PathOf("pipe")));
    EXPECT_EQ(opened.TakeBoxes().size(), 2U) << "it exists, but does not take the file";
    Pick(PathOf("pipe"));
    LoadSetupFile(opened.Context());
    ExpectLoadFailed();
}

TEST_F(SetupFiling, ADeviceExistsAndIsAskedAbout) {
    opened.Answer(BoxAnswer::No);
    EXPECT_FALSE(Save("/dev/null"));
    ExpectBox("The setup file already exists, do you want to overwrite it?", "Save Setup",
              BoxIcon::Information, BoxButtons::YesNo);
    opened.Answer(BoxAnswer::Yes);
    EXPECT_TRUE(Save("/dev/null"));
    EXPECT_EQ(opened.TakeBoxes().size(), 1U);
}

TEST_F(SetupFiling, ADeviceThatIsFullFailsTheSave) {
    EXPECT_FALSE(Save("/dev/full"));
    const std::vector<BoxContent> boxes = opened.TakeBoxes();
    ASSERT_EQ(boxes.size(), 2U);
    EXPECT_EQ(boxes[1].Text, "Error: file was not saved correctly.");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST_F(SetupFiling, ADiskThatIsFullKeepsTheFileThatWasThere) {
    WriteFile(PathOf("a.set"), "old");
    {
        const testing_support::SmallDisk disk(1000);
        EXPECT_FALSE(Save(PathOf("a.set")));
        EXPECT_FALSE(Save(PathOf("b.set")));
    }
    EXPECT_EQ(FileContents(PathOf("a.set")), "old");
    EXPECT_FALSE(std::filesystem::exists(PathOf("b.set")));
}
#endif

TEST_F(SetupFiling, LoadingShowsTheFileOverTheDefaults) {
    Load("LoggerName=Loaded\nFlowMode=1\n[Analog]\nEngUnits=cm\n");
    ExpectNoBox();
    EXPECT_EQ(LastQuery().Title, "Load Setup File");
    EXPECT_EQ(LastQuery().DefaultExtension, ".dat");
    EXPECT_EQ(LastQuery().Filter, "Setup Files (*.set)|*.set");
    EXPECT_EQ(controls.txtName, "Loaded");
    EXPECT_EQ(controls.Analog[0].cmbEU, "cm");
    EXPECT_EQ(controls.Analog[2].cmbEU, "Volts") << "a default";
    EXPECT_EQ(view.Flow.Mannings, true);
    EXPECT_EQ(opened.dialog.FileImage, opened.Image());
    EXPECT_EQ(Stored().LastFile[0], PathOf("load.set"));
}

TEST_F(SetupFiling, AnEmptyFileLoadsAsTheDefaults) {
    opened.Global().FixedBaudRate = 3;
    controls.cmbBaud = 3;
    opened.Answer(BoxAnswer::No);
    Load("");
    EXPECT_EQ(opened.TakeBoxes().size(), 1U) << "only the question about the changes before";
    EXPECT_EQ(controls.txtName, "Tessel");
    EXPECT_EQ(opened.Global().NumAnalogChannels, 3);
    EXPECT_EQ(opened.Global().FixedBaudRate, 3);
}

TEST_F(SetupFiling, ALoadedFlowModeOnABadUnitWarns) {
    Load("FlowMode=2\n[Analog]\nEngUnits=gal\n");
    ASSERT_EQ(opened.TakeBoxes().front().Title, "Bad Units");
}

TEST_F(SetupFiling, ChangesAreOfferedForSavingBeforeALoad) {
    controls.txtName = "Other";
    opened.Answer(BoxAnswer::Cancel);
    Load("LoggerName=Loaded\n");
    EXPECT_EQ(opened.TakeBoxes().size(), 1U);
    EXPECT_EQ(controls.txtName, "Other");
    EXPECT_TRUE(opened.console.Outside.Dialogs.Queries.empty());
    opened.Answer(BoxAnswer::No);
    LoadSetupFile(opened.Context());
    EXPECT_EQ(controls.txtName, "Loaded");
}

TEST_F(SetupFiling, ACancelledLoadChangesNothing) {
    LoadSetupFile(opened.Context());
    ExpectNoBox();
    EXPECT_EQ(Stored().LastFile[0], "");
}

TEST_F(SetupFiling, AfterALoadClosingAsksOnlyToProgram) {
    Load("LoggerName=Loaded\n");
    opened.Answer(BoxAnswer::No);
    EXPECT_TRUE(QueryUnloadSetup(opened.Context()));
    const auto boxes = opened.TakeBoxes();
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_NE(boxes[0].Text.find("programmed to the logger"), std::string::npos);
}

TEST_F(SetupFiling, ABadFileLeavesTheControlsAndAMixtureInTheState) {
    controls.Analog[0].txtHighEU = "7";
    const SetupControls before = controls;
    const Bytes image = opened.dialog.FileImage;
    opened.Answer(BoxAnswer::No);
    Load("LoggerName=Loaded\nDeadband=abc\nFlowTop=5\n");
    opened.console.Outside.Boxes.Shown.erase(opened.console.Outside.Boxes.Shown.begin());
    ExpectLoadFailed();
    EXPECT_EQ(controls, before);
    EXPECT_EQ(opened.dialog.FileImage, image);
    EXPECT_EQ(opened.Global().LoggerName, "Loaded") << "read before the failure";
    EXPECT_EQ(opened.Global().UpperLimit[0], 100) << "a default";
    EXPECT_EQ(opened.Global().FlowTop, 100) << "behind the failure";
    opened.Answer(BoxAnswer::No, BoxAnswer::No);
    EXPECT_TRUE(QueryUnloadSetup(opened.Context()));
    EXPECT_EQ(opened.Global().LoggerName, "Site 1") << "restored from the controls";
    EXPECT_EQ(opened.Global().UpperLimit[0], 7);
}

TEST_F(SetupFiling, AValueThatTheDialogCannotShowFailsTheLoad) {
    for (const char* line :
         {"SensorWarmupTime=200", "FixedBaudRate=7", "SampleInterval=1E999 days"}) {
        const SetupControls before = controls;
        opened.dialog.FileImage = opened.Image();
        Load(std::string("LoggerName=Loaded\n") + line + "\n");
        ExpectLoadFailed();
        EXPECT_EQ(controls, before) << line;
        EXPECT_TRUE(FormToState(controls, opened.console.State.CataloguesRecord, opened.Global()));
        opened.Global().FixedBaudRate = 0;
    }
}

TEST_F(SetupFiling, AFileThatIsGoneFailsTheLoad) {
    const Bytes before = opened.Image();
    Pick(PathOf("gone.set"));
    LoadSetupFile(opened.Context());
    ExpectLoadFailed();
    EXPECT_EQ(opened.Image(), before) << "nothing was touched";
}

TEST_F(SetupFiling, AFileOfUpToSixteenMebibytesIsLoaded) {
    constexpr std::size_t most = std::size_t{16} * 1024 * 1024;
    const std::string line = "LoggerName=Loaded\n";
    Load(line + std::string(most - line.size(), '\n'));
    EXPECT_EQ(controls.txtName, "Loaded");
    EXPECT_TRUE(opened.TakeBoxes().empty());
    Load(line + std::string(most - line.size() + 1, '\n'));
    ExpectLoadFailed();
}

TEST_F(SetupFiling, AFileThatWasSavedOverWithWhatCannotBeEncodedIsAskedAbout) {
    ASSERT_TRUE(Save(PathOf("a.set")));
    const std::string level = controls.txtException;
    controls.txtException = "70000";
    ASSERT_TRUE(Save(PathOf("a.set")));
    opened.TakeBoxes();
    controls.txtException = level;
    opened.Answer(BoxAnswer::Cancel);
    EXPECT_TRUE(CheckSavedToFile(opened.Context())) << "no file holds these settings any more";
    EXPECT_EQ(opened.TakeBoxes().size(), 1U);
}

TEST_F(SetupFiling, ARecentFileIsChosenButNotLoadedYet) {
    WriteFile(PathOf("a.set"), "LoggerName=Loaded\n");
    Stored().LastFile = {"", PathOf("a.set"), "", ""};
    LoadRecentFile(opened.Context(), 1);
    EXPECT_EQ(LastQuery().InitialName, PathOf("a.set"));
    EXPECT_EQ(controls.txtName, "Site 1") << "the user cancelled";
    EXPECT_EQ(Stored().LastFile[0], "") << "not moved before it is confirmed";
    Pick(PathOf("a.set"));
    LoadRecentFile(opened.Context(), 1);
    EXPECT_EQ(controls.txtName, "Loaded");
    EXPECT_EQ(Stored().LastFile[0], PathOf("a.set"));
}

TEST_F(SetupFiling, ARecentFileThatIsGoneDoesNothing) {
    Stored().LastFile = {PathOf("gone.set"), "", "", ""};
    for (int place = 0; place < 4; ++place) {
        LoadRecentFile(opened.Context(), place);
    }
    EXPECT_TRUE(opened.console.Outside.Dialogs.Queries.empty());
    EXPECT_EQ(Stored().LastFilePath, "");
}

TEST_F(SetupFiling, NothingIsLoadedOrSavedDuringAnOperation) {
    opened.Busy() = True;
    Load("LoggerName=Loaded\n");
    EXPECT_FALSE(SaveSetupFile(opened.Context()));
    Stored().LastFile = {PathOf("load.set"), "", "", ""};
    LoadRecentFile(opened.Context(), 0);
    EXPECT_TRUE(opened.console.Outside.Dialogs.Queries.empty());
    EXPECT_EQ(controls.txtName, "Site 1");
    EXPECT_EQ(Stored().LastFilePath, "");
    EXPECT_EQ(opened.dialog.CurrentFile, "");
}

TEST_F(SetupFiling, ASavedFileLoadsBackUnchanged) {
    controls.Analog[1].txtHighEU = "12.25";
    controls.Alarms[0] = {true, "12:00:30", 1};
    ASSERT_TRUE(Save(PathOf("a.set")));
    const Bytes saved = opened.Image();
    const SetupControls shown = controls;
    Pick(PathOf("a.set"));
    LoadSetupFile(opened.Context());
    ExpectNoBox();
    EXPECT_EQ(opened.Image(), saved);
    EXPECT_EQ(controls, shown);
}

}  // namespace
