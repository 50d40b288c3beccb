#include "setup/setup_flow_page.h"

#include "common/path_text.h"
#include "setup/setup_fixture.h"

namespace {

using setup_testing::OpenedSetup;
using setup_testing::SetupSite;
using setup_testing::SetupTest;
using testing_support::FreshFolder;
using testing_support::WriteFile;

constexpr const char* BadUnits =
    "Warning: For the flow monitor calculations to be done correctly the channel 1\n"
    "unit's name must be one of Feet, Inches, Meters or cm (centimeters).\n\n"
    "The current unit's name ( gal ) is not supported.\n\n"
    "Use the Analog Channels Panel to set the units for channel 1 to one of the legal values.";

constexpr const char* BadUnit =
    "Warning: for the flow calculation to be done properly, the first analog channel\n"
    "unit's name must be one of Feet, Inches, Meters or cm (centimeters).\n\n"
    "You should select one of the acceptable units, or select the option \"No Flow Calculation\"\n"
    "on the Flow Calculation setup tab.";

TEST(FlowPage, EachMethodHasItsControls) {
    EXPECT_EQ(FlowStatesOf(FlowNone), (FlowStates{false, false, false, false, false}));
    EXPECT_EQ(FlowStatesOf(FlowMannings), (FlowStates{false, false, false, true, true}));
    EXPECT_EQ(FlowStatesOf(FlowFlume), (FlowStates{true, false, false, true, false}));
    EXPECT_EQ(FlowStatesOf(FlowWeir), (FlowStates{false, true, false, true, false}));
    EXPECT_EQ(FlowStatesOf(FlowByTable), (FlowStates{false, false, true, true, false}));
}

class FlowPageTest : public SetupTest {
 protected:
    void Choose(int option, const std::string& unit) {
        controls.FlowOption = option;
        controls.Analog[0].cmbEU = unit;
        UpdateFlowOptions(opened.Context());
    }
};

TEST_F(FlowPageTest, AUnitThatIsNoLengthIsToldUnderEveryMethod) {
    for (const int option : {FlowMannings, FlowFlume, FlowWeir, FlowByTable}) {
        Choose(option, " gal ");
        EXPECT_EQ(view.Flow, FlowStatesOf(option));
        ExpectBox(BadUnits, "Bad Units", BoxIcon::Information);
    }
}

TEST_F(FlowPageTest, NoFlowNeverWarns) {
    Choose(FlowNone, "gal");
    ExpectNoBox();
    EXPECT_FALSE(CheckFirstUnit("gal", 3, FlowNone).Box.has_value());
}

TEST_F(FlowPageTest, UnitsPassInAnyCaseAndWithBlanks) {
    for (const char* unit : {"Feet ", "FEET", "inches", " Meters", "cm"}) {
        Choose(FlowMannings, unit);
        ExpectNoBox();
    }
    Choose(FlowMannings, "ft");
    EXPECT_EQ(opened.TakeBoxes().size(), 1U);
}

TEST_F(FlowPageTest, TheFieldOfTheUnitHasWordsOfItsOwn) {
    const FieldCheck check = CheckFirstUnit(" gal ", 3, FlowMannings);
    EXPECT_TRUE(check.Accepted) << "the warning blocks nothing";
    EXPECT_EQ(check.Text, "gal");
    ASSERT_TRUE(check.Box.has_value());
    EXPECT_EQ(check.Box->Text, BadUnit);
    EXPECT_EQ(check.Box->Title, "Bad Unit");
    EXPECT_EQ(check.Box->Icon, BoxIcon::Information);
    EXPECT_EQ(check.Box->Buttons, BoxButtons::Ok);
    EXPECT_FALSE(CheckFirstUnit("cm", 3, FlowMannings).Box.has_value());
}

TEST(FlowPage, ALoggerWithoutThreeChannelsNeverWarns) {
    simulator::LoggerSetup site = SetupSite(2);
    site.Settings.Analog.front().Units = "gal";
    site.Settings.Flow.Mode = simulator::FlowMode::Manning;
    OpenedSetup opened(site);
    opened.Open();
    EXPECT_TRUE(opened.TakeBoxes().empty());
    EXPECT_FALSE(CheckFirstUnit("gal", 2, FlowMannings).Box.has_value());
    EXPECT_FALSE(CheckFirstUnit("gal", 4, FlowMannings).Box.has_value());
}

TEST(FlowPage, OpeningOnAUnitWithoutFlowWarnsOnce) {
    simulator::LoggerSetup site = SetupSite(3);
    site.Settings.Analog.front().Units = "gal";
    site.Settings.Flow.Mode = simulator::FlowMode::Flume;
    OpenedSetup opened(site);
    opened.Open();
    const auto boxes = opened.TakeBoxes();
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes.front().Title, "Bad Units");
}

// ----- table files

class TableBrowsing : public ::testing::Test {
 protected:
    TableBrowsing() { opened_.Open(); }

    std::string TableOf(int entries, const std::string& name = "t.tbl") {
        std::string text;
        for (int i = 0; i < entries; ++i) {
            text += std::to_string(i) + " " + std::to_string(i * 2) + "\r\n";
        }
        std::string path = JoinPath(folder_, name);
        WriteFile(path, text);
        return path;
    }
    void Pick(const std::string& path) {
        opened_.console.Outside.Dialogs.Picks.push_back(path);
        BrowseTable(opened_.Context());
    }
    BoxContent OnlyBox() {
        const auto boxes = opened_.TakeBoxes();
        EXPECT_EQ(boxes.size(), 1U);
        return boxes.empty() ? BoxContent{} : boxes.front();
    }
    const std::string& TableFile() const { return opened_.view.Shown.txtTableFile; }

    std::string folder_ = FreshFolder("browse");
    OpenedSetup opened_{SetupSite(), folder_};
};

TEST_F(TableBrowsing, StartsAmongTheDocumentsWhereTheProgramsFolderTakesNoFile) {
    opened_.console.State.Outside.SaveFolder = "/documents";
    BrowseTable(opened_.Context());
    ASSERT_EQ(opened_.console.Outside.Dialogs.Queries.size(), 1U);
    EXPECT_EQ(opened_.console.Outside.Dialogs.Queries.front().InitialName,
              JoinPath("/documents", "*.tbl"));
}

TEST_F(TableBrowsing, AsksForAnExistingTableInTheProgramsFolder) {
    BrowseTable(opened_.Context());
    ASSERT_EQ(opened_.console.Outside.Dialogs.Queries.size(), 1U);
    const FileQuery& query = opened_.console.Outside.Dialogs.Queries.front();
    EXPECT_EQ(query.Title, "Select Flow Table File");
    EXPECT_EQ(query.DefaultExtension, ".txt");
    EXPECT_EQ(query.Filter, "Flow Table File (*.tbl)|*.tbl");
    EXPECT_EQ(query.InitialName, JoinPath(folder_, "*.tbl"));
    EXPECT_TRUE(opened_.TakeBoxes().empty()) << "cancelled in silence";
    EXPECT_EQ(TableFile(), "");
}

TEST_F(TableBrowsing, AFileBelowTheProgramIsStoredRelative) {
    Pick(TableOf(5));
    EXPECT_EQ(TableFile(), "t.tbl");
    const BoxContent box = OnlyBox();
    EXPECT_EQ(box.Text, "The selected table file has 5 entries.");
    EXPECT_EQ(box.Title, "Flow Table File");
    EXPECT_EQ(box.Icon, BoxIcon::Information);
    EXPECT_EQ(box.Buttons, BoxButtons::Ok);
}

TEST_F(TableBrowsing, AFileElsewhereIsStoredWithItsFullPath) {
    const std::string elsewhere = FreshFolder("elsewhere");
    const std::string path = JoinPath(elsewhere, "t.tbl");
    WriteFile(path, "1 2\n");
    Pick(path);
    EXPECT_EQ(TableFile(), path);
    EXPECT_EQ(OnlyBox().Title, "Flow Table File");
}

TEST(TablePath, ANeighbourFolderThatOnlyBeginsAlikeIsNotBelow) {
    EXPECT_EQ(TablePathOf("/opt/orvia2/t.tbl", "/opt/orvia"), "/opt/orvia2/t.tbl");
    EXPECT_EQ(TablePathOf("/opt/orvia/t.tbl", "/opt/orvia"), "t.tbl");
    EXPECT_EQ(TablePathOf("/opt/orvia/a/t.tbl", "/opt/orvia"), "a/t.tbl");
    EXPECT_EQ(TablePathOf("C:\\orvia\\t.tbl", "C:\\orvia"), "t.tbl");
    EXPECT_EQ(TablePathOf("/opt/orvia/", "/opt/orvia"), "/opt/orvia/");
}

TEST_F(TableBrowsing, APathOf128CharactersIsTakenOneOf129Refused) {
    const std::string root = "/no-such-folder/";
    const std::string fits = root + std::string(128 - root.size(), 't');
    Pick(fits);
    EXPECT_EQ(TableFile(), fits);
    EXPECT_EQ(OnlyBox().Title, "Bad Flow Table File");
    Pick(fits + "x");
    EXPECT_EQ(TableFile(), fits) << "unchanged";
    const BoxContent box = OnlyBox();
    EXPECT_EQ(box.Text, "Error: the file path is longer than 128 characters which is the limit.");
    EXPECT_EQ(box.Title, "File Path Too Long");
    EXPECT_EQ(box.Icon, BoxIcon::Stop);
    EXPECT_EQ(box.Buttons, BoxButtons::Ok);
}

TEST_F(TableBrowsing, ThePathIsCountedInCharacters) {
    std::string fits = "/no-such-folder/";
    while (fits.size() < 16 + 2 * 112) {
        fits += "\xC3\xA4";
    }
    Pick(fits);
    EXPECT_EQ(TableFile(), fits);
    EXPECT_EQ(OnlyBox().Title, "Bad Flow Table File");
    Pick(fits + "x");
    EXPECT_EQ(OnlyBox().Title, "File Path Too Long");
}

TEST_F(TableBrowsing, AFileThatIsNoTableStaysInTheField) {
    const std::string path = JoinPath(folder_, "note.tbl");
    WriteFile(path, "no numbers here\n");
    Pick(path);
    EXPECT_EQ(TableFile(), "note.tbl");
    const BoxContent box = OnlyBox();
    EXPECT_EQ(box.Text, "Error: selected file does not appear to be a valid flow table file.");
    EXPECT_EQ(box.Title, "Bad Flow Table File");
    EXPECT_EQ(box.Icon, BoxIcon::Stop);
    EXPECT_EQ(box.Buttons, BoxButtons::Ok);
}

TEST_F(TableBrowsing, ATableOf1000EntriesIsToldOneOf1001Truncated) {
    Pick(TableOf(1000));
    EXPECT_EQ(OnlyBox().Text, "The selected table file has 1000 entries.");
    for (const int entries : {1001, 1500}) {
        Pick(TableOf(entries));
        const BoxContent box = OnlyBox();
        EXPECT_EQ(box.Text,
                  "Error: selected file has more than 1000 entries,\n"
                  "the table will be truncated to 1001 entries.");
        EXPECT_EQ(box.Title, "Bad Flow Table File");
        EXPECT_EQ(box.Icon, BoxIcon::Stop);
        EXPECT_EQ(box.Buttons, BoxButtons::Ok);
        EXPECT_EQ(TableFile(), "t.tbl") << "taken all the same";
    }
}

}  // namespace
