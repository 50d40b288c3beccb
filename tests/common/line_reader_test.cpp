#include "common/line_reader.h"

#include <gtest/gtest.h>

#include <sstream>

#include "flow/flow_support.h"

namespace {

constexpr std::uintmax_t NoLimit = 1'000'000'000;

std::vector<std::string> LinesOf(const std::string& text, std::uintmax_t limit = NoLimit) {
    std::istringstream input(text);
    LineReader reader(input, limit);
    std::vector<std::string> lines;
    std::string_view line;
    while (reader.Next(line)) {
        lines.emplace_back(line);
    }
    EXPECT_TRUE(reader.Intact());
    return lines;
}

using Lines = std::vector<std::string>;

TEST(LineReader, CarriageReturnLineFeedAndBothEndALine) {
    EXPECT_EQ(LinesOf("a\rb\nc\r\nd"), (Lines{"a", "b", "c", "d"}));
    EXPECT_EQ(LinesOf("a\r\n\r\nb\r\rc\n\nd\n\re"),
              (Lines{"a", "", "b", "", "c", "", "d", "", "e"}));
}

TEST(LineReader, AnEndBehindTheLastLineAddsNone) {
    EXPECT_EQ(LinesOf(""), Lines{});
    EXPECT_EQ(LinesOf("a\r\n"), Lines{"a"});
    EXPECT_EQ(LinesOf("a\r"), Lines{"a"});
    EXPECT_EQ(LinesOf("\n"), Lines{""});
}

TEST(LineReader, NulAndHighBytesPassUnchanged) {
    const std::string odd("\0\xFF\xFE\x1A\x80", 5);
    EXPECT_EQ(LinesOf(odd + "\n" + odd), (Lines{odd, odd}));
}

TEST(LineReader, LinesThatSpanChunksArriveWhole) {
    const std::string filler(64 * 1024 - 3, 'x');
    EXPECT_EQ(LinesOf(filler + "\nabcdef\n"), (Lines{filler, "abcdef"}));
    // The pair of end marks split by the end of a chunk is one end still.
    const std::string brim(64 * 1024 - 1, 'x');
    EXPECT_EQ(LinesOf(brim + "\r\nabc"), (Lines{brim, "abc"}));
}

TEST(LineReader, TheLongestLineIsKeptAndOneByteMoreIsPassedOver) {
    const std::string longest(LongestLine, 'x');
    EXPECT_EQ(LinesOf("a\n" + longest + "\nb"), (Lines{"a", longest, "b"}));
    EXPECT_EQ(LinesOf("a\n" + longest + "y\nb"), (Lines{"a", "b"}));
    EXPECT_EQ(LinesOf(longest + longest + longest), Lines{});
}

TEST(LineReader, AReaderMayBeToldAnotherLength) {
    const std::string longest(3 * LongestLine, 'x');
    std::istringstream input("a\n" + longest + "\r\nb\n" + longest + "x\n12345\n");
    LineReader reader(input, NoLimit, longest.size());
    std::string_view line;
    for (const std::string& expected : {std::string("a"), longest, std::string("b")}) {
        ASSERT_TRUE(reader.Next(line));
        EXPECT_TRUE(line == expected);
    }
    ASSERT_TRUE(reader.Next(line));
    EXPECT_EQ(line, "12345");
    EXPECT_EQ(reader.PassedOver(), 1);
}

TEST(LineReader, LinesPassedOverAreCounted) {
    const std::string longer(LongestLine + 1, 'x');
    std::istringstream input("a\n" + longer + "\nb\n" + longer);
    LineReader reader(input);
    std::string_view line;
    EXPECT_TRUE(reader.Next(line));
    EXPECT_EQ(reader.PassedOver(), 0);
    EXPECT_TRUE(reader.Next(line));
    EXPECT_EQ(reader.PassedOver(), 1);
    EXPECT_FALSE(reader.Next(line));
    EXPECT_EQ(reader.PassedOver(), 2);
}

TEST(LineReader, ReadsNoFurtherThanItsLimit) {
    EXPECT_EQ(LinesOf("abc\ndef\n", 5), (Lines{"abc", "d"}));
    EXPECT_EQ(LinesOf("abc", 0), Lines{});
}

TEST(LineReader, AFailedReadIsNotIntact) {
    std::istringstream input("abc");
    input.setstate(std::ios::badbit);
    LineReader reader(input, NoLimit);
    std::string_view line;
    EXPECT_FALSE(reader.Next(line));
    EXPECT_FALSE(reader.Intact());
}

TEST(OpenTextFile, OpensARegularFileUpToTheLargestSize) {
    const ProgramFolder folder;
    const std::string path = folder.Write("a.txt", "12345");
    TextFile file;
    EXPECT_FALSE(OpenTextFile(path, 4, file));
    ASSERT_TRUE(OpenTextFile(path, 5, file));
    EXPECT_EQ(file.Size, 5U);
}

TEST(OpenTextFile, RefusesFoldersAndMissingFiles) {
    const ProgramFolder folder;
    TextFile file;
    EXPECT_FALSE(OpenTextFile(folder.Path(), NoLimit, file));
    EXPECT_FALSE(OpenTextFile(folder.PathOf("none"), NoLimit, file));
    EXPECT_FALSE(OpenTextFile("", NoLimit, file));
    EXPECT_FALSE(OpenTextFile(std::string_view("a\0b", 3), NoLimit, file));
}

}  // namespace
