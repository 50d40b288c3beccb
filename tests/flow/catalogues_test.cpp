#include "flow/catalogues.h"

#include <gtest/gtest.h>
#ifndef _WIN32
#include <sys/stat.h>
#endif

#include <filesystem>
#include <fstream>
#include <sstream>

#include "common/path_text.h"
#include "flow/flow_definition.h"
#include "flow/flow_support.h"

namespace config {
namespace {

class Catalogue : public ::testing::Test {
 protected:
    /// Reads a catalogue file of these bytes.
    void Read(std::string_view bytes) {
        const std::string path = folder_.Write("flumes.lst", bytes);
        ReadFlowDeviceList(path, folder_.Path(), list_);
    }
    /// Whether a catalogue of this one line has an entry.
    bool Fits(std::string_view line) {
        Read(line);
        return list_.UpperBound() == 1;
    }
    void ExpectEquation(double a, double b, double c) {
        ASSERT_EQ(list_.UpperBound(), 1);
        EXPECT_EQ(list_[1].IsTable, 0);
        EXPECT_EQ(list_[1].EqOffset, a);
        EXPECT_EQ(list_[1].EqExponent, b);
        EXPECT_EQ(list_[1].EqMultiplier, c);
    }

    ProgramFolder folder_;
    FlowDeviceList list_;
};

TEST_F(Catalogue, AnEquationEntryHasTagNameAndThreeNumbers) {
    Read("[p6] \"Parshall 6 inch\" E 0, 1.58, 2.06\r\n");
    ExpectEquation(0, 1.58, 2.06);
    EXPECT_EQ(list_[1].Tag, "P6");
    EXPECT_EQ(list_[1].Name, "Parshall 6 inch");
    EXPECT_EQ(list_[1].TableFile, "");
}

TEST_F(Catalogue, ATableEntryKeepsItsPathAsWritten) {
    folder_.Write("h.tbl", "1 10\n2 20\n");
    Read("[H1] \"H flume\" F \" .\\h.tbl \"\n");
    ASSERT_EQ(list_.UpperBound(), 1);
    EXPECT_EQ(list_[1].IsTable, 1);
    EXPECT_EQ(list_[1].TableFile, ".\\h.tbl");
    EXPECT_EQ(list_[1].EqMultiplier, 0);
}

TEST_F(Catalogue, AMissingFileLeavesItEmpty) {
    Read("[A] \"a\" E 1 2 3");
    ASSERT_EQ(list_.UpperBound(), 1);
    ReadFlowDeviceList(folder_.PathOf("none.lst"), folder_.Path(), list_);
    EXPECT_EQ(list_.UpperBound(), 0);
}

TEST_F(Catalogue, EntriesStandInFileOrderAndTagsMayRepeat) {
    Read("[B] \"one\" E 1 2 3\nremark\n[A] \"two\" E 1 2 3\n[B] \"three\" E 1 2 3");
    ASSERT_EQ(list_.UpperBound(), 3);
    EXPECT_EQ(list_[1].Name, "one");
    EXPECT_EQ(list_[2].Tag, "A");
    EXPECT_EQ(list_[3].Name, "three");
}

TEST_F(Catalogue, ALeadingBlankIsNoEntry) {
    EXPECT_FALSE(Fits(" [A] \"a\" E 1 2 3"));
    EXPECT_FALSE(Fits("\t[A] \"a\" E 1 2 3"));
    EXPECT_TRUE(Fits("[A] \"a\" E 1 2 3"));
}

TEST_F(Catalogue, EmptyBracketsAreNoEntry) {
    EXPECT_FALSE(Fits("[] \"a\" E 1 2 3"));
    EXPECT_FALSE(Fits("[]] \"a\" E 1 2 3"));
}

TEST_F(Catalogue, ABlankTagIsAnEntryWithAnEmptyTag) {
    ASSERT_TRUE(Fits("[ ] \"a\" E 1 2 3"));
    EXPECT_EQ(list_[1].Tag, "");
}

TEST_F(Catalogue, NoClosingBracketIsNoEntry) {
    EXPECT_FALSE(Fits("[A \"a\" E 1 2 3"));
    EXPECT_FALSE(Fits("["));
}

TEST_F(Catalogue, ALongTagIsCutToEightCharacters) {
    ASSERT_TRUE(Fits("[abcdefghij] \"a\" E 1 2 3"));
    EXPECT_EQ(list_[1].Tag, "ABCDEFGH");
    ASSERT_TRUE(Fits("[d\xC3\x9Cker 1-2] \"a\" E 1 2 3"));
    EXPECT_EQ(list_[1].Tag, "D\xC3\x9CKER 1-");
}

TEST_F(Catalogue, ATagIsTrimmedBeforeItIsCut) {
    ASSERT_TRUE(Fits("[   abcdefgh   ] \"a\" E 1 2 3"));
    EXPECT_EQ(list_[1].Tag, "ABCDEFGH");
}

TEST_F(Catalogue, AnEmptyNameDropsTheLine) {
    EXPECT_FALSE(Fits("[A] \"\" E 1 2 3"));
    EXPECT_FALSE(Fits("[A] \"\" \"name\" E 1 2 3"));
}

TEST_F(Catalogue, ANameIsTrimmedAndMayBeBlank) {
    ASSERT_TRUE(Fits("[A] \"  a b  \" E 1 2 3"));
    EXPECT_EQ(list_[1].Name, "a b");
    ASSERT_TRUE(Fits("[A] \"  \" E 1 2 3"));
    EXPECT_EQ(list_[1].Name, "");
}

TEST_F(Catalogue, AMissingQuoteDropsTheLine) {
    EXPECT_FALSE(Fits("[A] name E 1 2 3"));
    EXPECT_FALSE(Fits("[A] \"name E 1 2 3"));
}

TEST_F(Catalogue, FewerThanThreeNumbersDropTheLine) {
    EXPECT_FALSE(Fits("[A] \"a\" E 1.0"));
    EXPECT_FALSE(Fits("[A] \"a\" E 1.0 2.0"));
    EXPECT_FALSE(Fits("[A] \"a\" E"));
}

TEST_F(Catalogue, WordsBetweenTheNumbersAreSkipped) {
    Read("[A] \"a\" E x 1.0, 2.0 y 3.0");
    ExpectEquation(1, 2, 3);
}

TEST_F(Catalogue, ANumberWithASemicolonIsAWord) {
    EXPECT_FALSE(Fits("[A] \"a\" E 1.0 2.0; 3.0"));
    Read("[A] \"a\" E 1.0 2.0; 3.0 4.0");
    ExpectEquation(1, 3, 4);
}

TEST_F(Catalogue, WhatStandsBehindTheThirdNumberIsIgnored) {
    Read("[A] \"a\" E 1 2 3 4 words 1e999");
    ExpectEquation(1, 2, 3);
}

TEST_F(Catalogue, TabsAndCommasSeparateTheNumbers) {
    Read("[A] \"a\" E\t1,2\t,3");
    ExpectEquation(1, 2, 3);
}

TEST_F(Catalogue, TheLetterNeedsNoBlanks) {
    Read("[A]\"a\"E1 2 3");
    ExpectEquation(1, 2, 3);
}

TEST_F(Catalogue, LowerCaseLettersDoNotCount) {
    EXPECT_FALSE(Fits("[A] \"a\" e 1 2 3"));
    EXPECT_FALSE(Fits("[A] \"a\" f \"x\""));
    EXPECT_TRUE(Fits("[A] \"a\" some words E 1 2 3"));
}

TEST_F(Catalogue, TheFirstLetterDecidesEvenInsideAWord) {
    folder_.Write("h.tbl", "1 10\n");
    EXPECT_FALSE(Fits("[A] \"a\" Free E 1 2 3"));
    ASSERT_TRUE(Fits("[A] \"a\" Free E 1 2 3 \"h.tbl\""));
    EXPECT_EQ(list_[1].IsTable, 1);
    Read("[A] \"a\" EF 1 2 3");
    ExpectEquation(1, 2, 3);
}

TEST_F(Catalogue, LettersInsideTheNameDoNotCount) {
    EXPECT_FALSE(Fits("[A] \"E 1 2 3\""));
}

TEST_F(Catalogue, ATablePathNeedsBothQuotesAndAName) {
    folder_.Write("h.tbl", "1 10\n");
    EXPECT_FALSE(Fits("[A] \"a\" F h.tbl"));
    EXPECT_FALSE(Fits("[A] \"a\" F \"h.tbl"));
    EXPECT_FALSE(Fits("[A] \"a\" F \"\" \"h.tbl\""));
    EXPECT_TRUE(Fits("[A] \"a\" F \"h.tbl\""));
}

TEST_F(Catalogue, AMissingTableFileMakesNoEntry) {
    EXPECT_FALSE(Fits("[A] \"a\" F \"none.tbl\""));
}

TEST_F(Catalogue, ATableFileWithoutAPointMakesAnEntry) {
    folder_.Write("empty.tbl", "nothing here\n");
    EXPECT_TRUE(Fits("[A] \"a\" F \"empty.tbl\""));
}

TEST_F(Catalogue, ATableFileThatFailsMakesNoEntryAndReadingGoesOn) {
    folder_.Write("bad.tbl", "1 1e999\n");
    Read("[A] \"a\" F \"bad.tbl\"\n[B] \"b\" E 1 2 3");
    ASSERT_EQ(list_.UpperBound(), 1);
    EXPECT_EQ(list_[1].Tag, "B");
}

TEST_F(Catalogue, ANumberThatNoDoubleHoldsEndsTheReading) {
    Read("[A] \"a\" E 1 2 3\n[B] \"b\" E 1 1e999 3\n[C] \"c\" E 1 2 3");
    ASSERT_EQ(list_.UpperBound(), 1);
    EXPECT_EQ(list_[1].Tag, "A");
}

TEST_F(Catalogue, AnyLineEndServes) {
    Read("[A] \"a\" E 1 2 3\r[B] \"b\" E 1 2 3\r\n[C] \"c\" E 1 2 3\n");
    EXPECT_EQ(list_.UpperBound(), 3);
}

TEST_F(Catalogue, AFolderOrAFileAboveTheLargestSizeLeavesItEmpty) {
    ReadFlowDeviceList(folder_.Path(), folder_.Path(), list_);
    EXPECT_EQ(list_.UpperBound(), 0);
    const std::string path = folder_.Write("flumes.lst", "[A] \"a\" E 1 2 3\n");
    std::filesystem::resize_file(path, 1'000'000'000);
    ReadFlowDeviceList(path, folder_.Path(), list_);
    EXPECT_EQ(list_.UpperBound(), 0);
}

#ifndef _WIN32
TEST_F(Catalogue, APipeLeavesItEmptyAndDoesNotHang) {
    ASSERT_EQ(mkfifo(folder_.PathOf("pipe").c_str(), 0600), 0);
    ReadFlowDeviceList(folder_.PathOf("pipe"), folder_.Path(), list_);
    EXPECT_EQ(list_.UpperBound(), 0);
    EXPECT_FALSE(Fits("[A] \"a\" F \"pipe\""));
}

TEST_F(Catalogue, ABackslashBeforeTheFileNameOpensIt) {
    folder_.Write("flumes.lst", "[A] \"a\" E 1 2 3\n");
    ReadFlowDeviceList(folder_.Path() + "\\flumes.lst", folder_.Path(), list_);
    EXPECT_EQ(list_.UpperBound(), 1);
}
#endif

TEST_F(Catalogue, AnOverlongLineIsPassedOver) {
    Read("[A] \"a\" E 1 2 " + std::string(100'000, ' ') + "3\n[B] \"b\" E 1 2 3\n");
    ASSERT_EQ(list_.UpperBound(), 1);
    EXPECT_EQ(list_[1].Tag, "B");
}

TEST_F(Catalogue, ProofIsAskedOncePerTableEntryWithThePathAsWritten) {
    std::istringstream input("[A] \"a\" F \"x\\y.tbl\"\n[B] \"b\" F \"no\"\n[C] \"c\" E 1 2 3\n");
    std::vector<std::string> asked;
    const TableProof proof = [&](std::string_view path) {
        asked.emplace_back(path);
        return path != "no";
    };
    ReadFlowDeviceList(input, 1000, proof, list_);
    EXPECT_EQ(asked, (std::vector<std::string>{"x\\y.tbl", "no"}));
    ASSERT_EQ(list_.UpperBound(), 2);
    EXPECT_EQ(list_[1].TableFile, "x\\y.tbl");
    EXPECT_EQ(list_[2].Tag, "C");
}

/// A catalogue of the user's own beside the shipped one.
class OwnCatalogue : public Catalogue {
 protected:
    void Add(std::string_view bytes) {
        AddFlowDeviceList(own_.Write("flumes.lst", bytes), own_.Path(), list_);
    }

    class OwnFolder {
     public:
        explicit OwnFolder(const ProgramFolder& program) : path_(program.PathOf("own")) {
            std::filesystem::create_directories(path_);
        }
        [[nodiscard]] const std::string& Path() const { return path_; }
        [[nodiscard]] std::string Write(std::string_view name, std::string_view bytes) const {
            const std::string path = JoinPath(path_, name);
            std::ofstream(path, std::ios::binary) << bytes;
            return path;
        }

     private:
        std::string path_;
    } own_{folder_};
};

TEST_F(OwnCatalogue, ItsEntriesStandBehindTheShippedOnes) {
    Read("[A] \"a\" E 1 2 3\n");
    Add("[B] \"b\" E 4 5 6\n[C] \"c\" E 7 8 9\n");
    ASSERT_EQ(list_.UpperBound(), 3);
    EXPECT_EQ(list_[1].Name, "a");
    EXPECT_EQ(list_[2].Name, "b");
    EXPECT_EQ(list_[3].EqMultiplier, 9);
}

TEST_F(OwnCatalogue, AMissingOneChangesNothing) {
    Read("[A] \"a\" E 1 2 3\n");
    AddFlowDeviceList(JoinPath(own_.Path(), "flumes.lst"), own_.Path(), list_);
    ASSERT_EQ(list_.UpperBound(), 1);
    EXPECT_EQ(list_[1].Tag, "A");
}

TEST_F(OwnCatalogue, ATagThatIsTakenKeepsTheShippedDevice) {
    Read("[A] \"a\" E 1 2 3\n");
    Add("[a] \"another\" E 4 5 6\n[B] \"b\" E 4 5 6\n");
    ASSERT_EQ(list_.UpperBound(), 2);
    EXPECT_EQ(list_[1].Name, "a");
    EXPECT_EQ(list_[2].Tag, "B");
}

TEST_F(OwnCatalogue, ItsTablesStandAgainstItsOwnFolderAndAreFoundLater) {
    folder_.Write("one.tbl", "1 10\n");
    static_cast<void>(own_.Write("one.tbl", "1 20\n2 30\n"));
    Read("");
    Add("[T] \"t\" F \"one.tbl\"\n[U] \"u\" F \"missing.tbl\"\n");
    ASSERT_EQ(list_.UpperBound(), 1);
    LoggerState logger;
    ASSERT_TRUE(FindFlowDevice("T", list_, folder_.Path(), logger));
    ASSERT_EQ(logger.FlowTable.UpperBound(), 2);
    EXPECT_EQ(logger.FlowTable[1].Flow, 20);
}

}  // namespace
}  // namespace config
