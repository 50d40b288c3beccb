#include "setup/recent_files.h"

#include <gtest/gtest.h>

#include "common/path_text.h"

namespace {

Settings WithRecent(std::array<std::string, 4> files) {
    Settings settings;
    settings.LastFile = std::move(files);
    return settings;
}

using Files = std::array<std::string, 4>;

TEST(RecentFiles, ANewPathPushesOutTheLast) {
    Settings settings = WithRecent({"a", "b", "c", "d"});
    PushRecentFile("e", settings);
    EXPECT_EQ(settings.LastFile, (Files{"e", "a", "b", "c"}));
}

TEST(RecentFiles, AKnownPathMovesToTheHead) {
    Settings settings = WithRecent({"a", "b", "c", "d"});
    PushRecentFile("c", settings);
    EXPECT_EQ(settings.LastFile, (Files{"c", "a", "b", "d"}));
}

TEST(RecentFiles, TheHeadStays) {
    Settings settings = WithRecent({"a", "b", "c", "d"});
    PushRecentFile("a", settings);
    EXPECT_EQ(settings.LastFile, (Files{"a", "b", "c", "d"}));
}

TEST(RecentFiles, TheLastPathGoesToTheHeadAllTheSame) {
    Settings settings = WithRecent({"a", "b", "c", "d"});
    PushRecentFile(settings.LastFile[3], settings);
    EXPECT_EQ(settings.LastFile, (Files{"d", "a", "b", "c"}));
}

TEST(RecentFiles, PathsAreTheSameOnlyExactly) {
    Settings settings = WithRecent({"a", "", "", ""});
    PushRecentFile("A", settings);
    EXPECT_EQ(settings.LastFile, (Files{"A", "a", "", ""}));
}

TEST(RecentFiles, AMenuShowsTheNameBehindTheFolder) {
    EXPECT_EQ(FileNameOfPath("C:\\sites\\weir.set"), "weir.set");
    EXPECT_EQ(FileNameOfPath("/home/x/weir.set"), "weir.set");
}

TEST(RecentFiles, AFileInARootShowsWithItsWholePath) {
    EXPECT_EQ(FileNameOfPath("C:\\weir.set"), "C:\\weir.set");
    EXPECT_EQ(FileNameOfPath("/weir.set"), "/weir.set");
    EXPECT_EQ(FileNameOfPath("abc/weir.set"), "weir.set") << "position 4 is the first that counts";
}

TEST(RecentFiles, AnEmptyEntryStaysEmpty) {
    EXPECT_EQ(FileNameOfPath(""), "");
    EXPECT_EQ(FileNameOfPath("C:\\sites\\"), "C:\\sites\\");
}

TEST(RecentFiles, AChosenFileLeavesFolderAndName) {
    Settings settings;
    std::string CurrentFile;
    EXPECT_TRUE(RememberChosenFile("/home/x/weir.set", settings, CurrentFile));
    EXPECT_EQ(settings.LastFilePath, "/home/x");
    EXPECT_EQ(CurrentFile, "weir.set");
    EXPECT_EQ(settings.LastFile[0], "/home/x/weir.set");
}

TEST(RecentFiles, APathWithoutFolderOrNameIsNotRemembered) {
    for (const char* path : {"weir.set", "/weir.set", "/home/x/", ""}) {
        Settings settings;
        std::string CurrentFile = "old";
        EXPECT_FALSE(RememberChosenFile(path, settings, CurrentFile)) << path;
        EXPECT_EQ(settings.LastFilePath, "");
        EXPECT_EQ(settings.LastFile[0], "");
        EXPECT_EQ(CurrentFile, "old");
    }
}

TEST(RecentFiles, AFolderOfOneCharacterCounts) {
    Settings settings;
    std::string CurrentFile;
    EXPECT_TRUE(RememberChosenFile("a/b", settings, CurrentFile));
    EXPECT_EQ(settings.LastFilePath, "a");
}

TEST(RecentFiles, TheDialogStartsInTheLastFolder) {
    Settings settings;
    EXPECT_EQ(InitialSetupName(settings, "x.set", "/opt/orvia"), JoinPath("/opt/orvia", "*.set"));
    settings.LastFilePath = "/home/x";
    EXPECT_EQ(InitialSetupName(settings, "", "/opt/orvia"), JoinPath("/home/x", "*.set"));
    EXPECT_EQ(InitialSetupName(settings, "weir.set", "/opt"), JoinPath("/home/x", "weir.set"));
}

TEST(RecentFiles, OneSeparatorBehindTheFolderIsDropped) {
    Settings settings;
    settings.LastFilePath = "C:\\";
    EXPECT_EQ(InitialSetupName(settings, "a.set", "x"), JoinPath("C:", "a.set"));
    settings.LastFilePath = "/home/x//";
    EXPECT_EQ(InitialSetupName(settings, "a.set", "x"), JoinPath("/home/x/", "a.set"));
}

}  // namespace
