#include "common/help_file.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "common/path_text.h"
#include "support/virtual_host.h"

namespace {

using testing_support::FreshFolder;
using testing_support::WriteFile;

class HelpFileTest : public ::testing::Test {
 protected:
    void WritePages() {
        std::filesystem::create_directories(JoinPath(folder_, "help"));
        WriteFile(pages_, "contents");
    }

    std::string folder_ = FreshFolder("help-file");
    std::string compiled_ = JoinPath(folder_, "Orvia.chm");
    std::string pages_ = JoinPath(JoinPath(folder_, "help"), "index.html");
};

TEST_F(HelpFileTest, ThereIsNoneWhereNothingLies) {
    EXPECT_EQ(HelpFile(folder_), "");
}

TEST_F(HelpFileTest, PagesStandForACompiledFile) {
    WritePages();
    EXPECT_EQ(HelpFile(folder_), pages_);
}

TEST_F(HelpFileTest, ACompiledFileComesBeforePages) {
    WritePages();
    WriteFile(compiled_, "help");
    EXPECT_EQ(HelpFile(folder_), compiled_);
}

TEST_F(HelpFileTest, AFolderOfTheNameIsNoHelp) {
    std::filesystem::create_directories(compiled_);
    EXPECT_EQ(HelpFile(folder_), "");
}

TEST(HelpTopic, IsAFileBesideTheContents) {
    EXPECT_EQ(HelpTopic("/opt/orvia/help/index.html", "setup.html"), "/opt/orvia/help/setup.html");
    EXPECT_EQ(HelpTopic("C:\\Orvia\\help\\index.html", "setup.html"),
              "C:\\Orvia\\help\\setup.html");
}

TEST(HelpTopic, IsAPageOfACompiledFile) {
    EXPECT_EQ(HelpTopic("C:\\Orvia\\Orvia.chm", "setup.html"), "C:\\Orvia\\Orvia.chm::/setup.html");
    EXPECT_EQ(HelpTopic("/opt/orvia/Orvia.chm", "setup.html"), "/opt/orvia/Orvia.chm::/setup.html");
}

}  // namespace
