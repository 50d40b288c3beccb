#include "flow/flow_table.h"

#include <gtest/gtest.h>
#ifndef _WIN32
#include <sys/stat.h>
#endif

#include <cmath>
#include <random>
#include <sstream>

#include "common/path_text.h"
#include "flow/flow_support.h"

namespace config {
namespace {

class FlowTableFile : public ::testing::Test {
 protected:
    /// Reads a table file of these bytes.
    bool Read(std::string_view bytes) {
        folder_.Write("a.tbl", bytes);
        return ReadFlowTable("a.tbl", folder_.Path(), table_);
    }
    void ExpectPoint(int number, double level, double flow) {
        ASSERT_LE(number, table_.UpperBound());
        EXPECT_EQ(table_[number].Level, level) << number;
        EXPECT_EQ(table_[number].Flow, flow) << number;
    }
    static std::string ManyLines(int count) {
        std::string text;
        for (int i = 1; i <= count; ++i) {
            text += std::to_string(i) + " " + std::to_string(2 * i) + "\r\n";
        }
        return text;
    }

    ProgramFolder folder_;
    FlowTable table_ = TableOf({{7, 7}});
};

TEST(NormalizeSeparators, TurnsTabsAndCommasIntoBlanksOneForOne) {
    EXPECT_EQ(NormalizeSeparators("a\tb,c, \t;d"), "a b c   ;d");
    EXPECT_EQ(NormalizeSeparators(""), "");
}

TEST_F(FlowTableFile, KeepsPointsInFileOrder) {
    EXPECT_TRUE(Read("2 20\n1 10\n1 11\n"));
    EXPECT_EQ(table_.UpperBound(), 3);
    ExpectPoint(0, 0, 0);
    ExpectPoint(1, 2, 20);
    ExpectPoint(2, 1, 10);
    ExpectPoint(3, 1, 11);
}

TEST_F(FlowTableFile, BlanksTabsAndCommasSeparateInAnyMix) {
    EXPECT_TRUE(Read("1,10\n2\t20\n  3 ,\t, 30 ,\n4,,,40\n"));
    EXPECT_EQ(table_.UpperBound(), 4);
    ExpectPoint(3, 3, 30);
    ExpectPoint(4, 4, 40);
}

TEST_F(FlowTableFile, ASemicolonIsNoSeparator) {
    EXPECT_TRUE(Read("1;10\n1.0; 2.0\n1 ; 2\n3 30"));
    EXPECT_EQ(table_.UpperBound(), 1);
    ExpectPoint(1, 3, 30);
}

TEST_F(FlowTableFile, ThreeNumbersRejectTheLineWhole) {
    EXPECT_TRUE(Read("1.0 2.0 3.0\n"));
    EXPECT_EQ(table_.UpperBound(), 0);
}

TEST_F(FlowTableFile, AWordBehindTwoNumbersRejectsTheLineWhole) {
    EXPECT_TRUE(Read("1.0 2.0 ft\nft 1.0 2.0\n"));
    EXPECT_EQ(table_.UpperBound(), 0);
}

TEST_F(FlowTableFile, FewerThanTwoNumbersRejectTheLine) {
    EXPECT_TRUE(Read("1.0\n\n   \n,\nLevel, Flow\n"));
    EXPECT_EQ(table_.UpperBound(), 0);
}

TEST_F(FlowTableFile, NumbersTakeSignPointAndExponent) {
    EXPECT_TRUE(Read("-.5 +5.\n1e-2 2E1\n1e-999 0x10\n1e-999 3\n"));
    EXPECT_EQ(table_.UpperBound(), 3);
    ExpectPoint(1, -0.5, 5);
    ExpectPoint(2, 0.01, 20);
    ExpectPoint(3, 0, 3);
}

TEST_F(FlowTableFile, InfAndNanAreWords) {
    EXPECT_TRUE(Read("inf 1\n1 nan\nNaN 2\n"));
    EXPECT_EQ(table_.UpperBound(), 0);
}

TEST_F(FlowTableFile, ANumberThatNoDoubleHoldsFailsTheRead) {
    EXPECT_FALSE(Read("1 10\n2 1e999\n3 30\n"));
    EXPECT_EQ(table_.UpperBound(), 0);
    EXPECT_FALSE(Read("1e999 word\n"));
    EXPECT_EQ(table_.UpperBound(), 0);
}

TEST_F(FlowTableFile, ALineRejectedBeforeItsHugeNumberDoesNotFailTheRead) {
    EXPECT_TRUE(Read("word 1e999\n1 2 1e999\n1 10\n"));
    EXPECT_EQ(table_.UpperBound(), 1);
}

TEST_F(FlowTableFile, A1002ndLineIsPassedOver) {
    EXPECT_TRUE(Read(ManyLines(1002)));
    EXPECT_EQ(table_.UpperBound(), 1001);
    ExpectPoint(1001, 1001, 2002);
}

TEST_F(FlowTableFile, AHugeNumberBehindTheLastPointFailsTheReadStill) {
    EXPECT_FALSE(Read(ManyLines(1001) + "1 1e999"));
    EXPECT_EQ(table_.UpperBound(), 0);
}

TEST_F(FlowTableFile, AnEmptyFileIsReadToItsEnd) {
    EXPECT_TRUE(Read(""));
    EXPECT_EQ(table_.UpperBound(), 0);
}

TEST_F(FlowTableFile, AnyLineEndServes) {
    EXPECT_TRUE(Read("1 10\r2 20\n3 30\r\n4 40"));
    EXPECT_EQ(table_.UpperBound(), 4);
    ExpectPoint(4, 4, 40);
}

TEST_F(FlowTableFile, AnEmptyPathAndAMissingFileGiveAnEmptyTable) {
    EXPECT_FALSE(ReadFlowTable("", folder_.Path(), table_));
    EXPECT_EQ(table_.UpperBound(), 0);
    table_.Append({1, 1});
    EXPECT_FALSE(ReadFlowTable("none.tbl", folder_.Path(), table_));
    EXPECT_EQ(table_.UpperBound(), 0);
}

TEST_F(FlowTableFile, AllWaysOfNamingAFileInTheProgramFolderMeet) {
    folder_.Write("a.tbl", "1 10\n");
    for (const char* path : {"a.tbl", "\\a.tbl", ".\\a.tbl", "./a.tbl"}) {
        EXPECT_TRUE(ReadFlowTable(path, folder_.Path(), table_)) << path;
        EXPECT_EQ(table_.UpperBound(), 1) << path;
    }
}

TEST(ResolveTablePath, RelativePathsStandAgainstTheProgramFolder) {
    const std::string separator(1, Separator);
    EXPECT_EQ(ResolveTablePath("a.tbl", "app"), "app" + separator + "a.tbl");
    EXPECT_EQ(ResolveTablePath("sub\\a.tbl", "app"), "app" + separator + "sub\\a.tbl");
    EXPECT_EQ(ResolveTablePath("\\a.tbl", "app"), "app\\a.tbl");
    EXPECT_EQ(ResolveTablePath(".\\a.tbl", "app"), "app\\a.tbl");
    EXPECT_EQ(ResolveTablePath("..\\a.tbl", "app"), "app" + separator + "..\\a.tbl");
}

TEST(ResolveTablePath, SharesAndDrivesStandAsTheyAre) {
    EXPECT_EQ(ResolveTablePath("\\\\server\\a.tbl", "app"), "\\\\server\\a.tbl");
    EXPECT_EQ(ResolveTablePath("C:\\a.tbl", "app"), "C:\\a.tbl");
    EXPECT_EQ(ResolveTablePath("C:a", "app"), "C:a");
}

TEST(ResolveTablePath, TwoCharactersAreNeverAShareOrADrive) {
    EXPECT_EQ(ResolveTablePath("C:", "app"), std::string("app") + Separator + "C:");
    EXPECT_EQ(ResolveTablePath("\\\\", "app"), "app\\\\");
}

#ifndef _WIN32
TEST(ResolveTablePath, ALeadingSlashMarksAWholePath) {
    EXPECT_EQ(ResolveTablePath("/a", "app"), "/a");
    EXPECT_EQ(ResolveTablePath("/flow/a.tbl", "app"), "/flow/a.tbl");
}

TEST_F(FlowTableFile, AWholePathIsTakenAsItStands) {
    const std::string path = folder_.Write("whole.tbl", "1 10\n");
    EXPECT_TRUE(ReadFlowTable(path, "/nowhere", table_));
    EXPECT_EQ(table_.UpperBound(), 1);
}

TEST_F(FlowTableFile, BackslashesInsideAStoredPathAreTurned) {
    std::filesystem::create_directory(folder_.PathOf("sub"));
    folder_.Write("sub/a.tbl", "1 10\n");
    EXPECT_TRUE(ReadFlowTable(".\\sub\\a.tbl", folder_.Path(), table_));
}

TEST_F(FlowTableFile, APipeIsNoTableAndDoesNotHang) {
    ASSERT_EQ(mkfifo(folder_.PathOf("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(ReadFlowTable("pipe", folder_.Path(), table_));
}

TEST_F(FlowTableFile, ADeviceIsNoTable) {
    EXPECT_FALSE(ReadFlowTable("/dev/zero", folder_.Path(), table_));
    EXPECT_FALSE(ReadFlowTable("/dev/null", folder_.Path(), table_));
}
#endif

TEST_F(FlowTableFile, AFolderIsNoTable) {
    EXPECT_FALSE(ReadFlowTable(".", folder_.Path(), table_));
    EXPECT_FALSE(ReadFlowTable("\\", folder_.Path(), table_));
    EXPECT_EQ(table_.UpperBound(), 0);
}

TEST_F(FlowTableFile, AFileAboveTheLargestSizeIsRefusedUnread) {
    const std::string path = folder_.Write("a.tbl", "1 10\n");
    std::filesystem::resize_file(path, 1'000'000'000);
    EXPECT_FALSE(ReadFlowTable("a.tbl", folder_.Path(), table_));
    EXPECT_EQ(table_.UpperBound(), 0);
}

TEST_F(FlowTableFile, AMillionLinesAreReadToTheEnd) {
    std::string text;
    for (int i = 0; i < 1'000'000; ++i) {
        text += "1 2\n";
    }
    EXPECT_TRUE(Read(text));
    EXPECT_EQ(table_.UpperBound(), 1001);
}

TEST_F(FlowTableFile, ALineLongerThanTheLongestIsPassedOver) {
    EXPECT_TRUE(Read("1 10\n2 " + std::string(100'000, ' ') + "20\n3 30\n"));
    EXPECT_EQ(table_.UpperBound(), 2);
    ExpectPoint(2, 3, 30);
}

TEST_F(FlowTableFile, OtherEncodingsDoNoHarm) {
    EXPECT_TRUE(Read(std::string("\xFF\xFE\x31\x00\x20\x00\x32\x00\x0A\x00", 10)));
    EXPECT_EQ(table_.UpperBound(), 0);
    EXPECT_TRUE(
        Read("\xEF\xBB\xBF"
             "remark\n1 10\n"));
    EXPECT_EQ(table_.UpperBound(), 1);
}

TEST(ReadFlowTableText, AnyBytesGiveFinitePointsOrNone) {
    std::mt19937 random(20240607);
    const std::string_view alphabet = "0123456789.eE+-, \t\r\n;x\xFF";
    for (int run = 0; run < 5000; ++run) {
        std::string text(random() % 64, ' ');
        for (char& c : text) {
            c = alphabet[random() % alphabet.size()];
        }
        std::istringstream input(text);
        FlowTable table;
        const bool read = ReadFlowTable(input, text.size(), table);
        EXPECT_TRUE(read || table.UpperBound() == 0) << text;
        for (const FlowTablePoint& point : table) {
            EXPECT_TRUE(std::isfinite(point.Level) && std::isfinite(point.Flow)) << text;
        }
    }
}

TEST(ReadFlowTableText, AFailingStreamFailsTheRead) {
    std::istringstream input("1 10\n");
    input.setstate(std::ios::badbit);
    FlowTable table = TableOf({{1, 1}});
    EXPECT_FALSE(ReadFlowTable(input, 100, table));
    EXPECT_EQ(table.UpperBound(), 0);
}

}  // namespace
}  // namespace config
