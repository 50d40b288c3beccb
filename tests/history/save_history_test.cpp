#include "history/save_history.h"

#include <gtest/gtest.h>

#include "common/path_text.h"
#include "history/csv.h"
#include "support/virtual_host.h"

namespace testing_support {
namespace {

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
    EXPECT_EQ(query.InitialName, JoinPath("/opt/orvia", "Pump 3 20261115-0830.csv"));
    EXPECT_TRUE(host.Dialogs.Prompts[0]);
    EXPECT_EQ(lastFolder, "/opt/orvia");
}

TEST_F(AskForCsvFileTest, GoesOnInTheFolderChosenLast) {
    host.Dialogs.Picks = {"/data/2026/a.csv"};
    EXPECT_EQ(Ask(), "/data/2026/a.csv");
    EXPECT_EQ(lastFolder, "/data/2026");
    Ask();
    EXPECT_EQ(host.Dialogs.Queries[1].InitialName,
              JoinPath("/data/2026", "Pump 3 20261115-0830.csv"));
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
