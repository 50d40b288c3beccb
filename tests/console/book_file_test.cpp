#include "console/book_file.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>

#include "common/file_rewrite.h"
#include "common/line_reader.h"
#include "common/path_text.h"
#include "common/text.h"
#include "console/hex_text.h"
#include "link/book_choice.h"
#include "support/small_disk.h"
#include "support/virtual_host.h"

namespace {

using testing_support::FileContents;
using testing_support::FreshFolder;
using testing_support::WriteFile;

NumberedArray<ClientRadio> Read(const std::string& contents, int dropped = 0) {
    std::istringstream file(contents);
    NumberedArray<ClientRadio> entries;
    EXPECT_EQ(ReadBook(file, entries), dropped);
    return entries;
}

/// The line that the book makes of a line it read; empty if it dropped it.
std::string Rewritten(const std::string& line) {
    const auto entry = ParseBookLine(line);
    return entry ? BookLine(*entry) : "";
}

constexpr const char* Plain = "\"A\", 10, 00A0961F2E3D";

TEST(Hex, WritesUpperCaseDigits) {
    EXPECT_EQ(NibbleToHex(0xFB), 'B') << "the low four bits alone";
    EXPECT_EQ(ByteToHex(0x0F), "0F");
    EXPECT_EQ(MacToHex({0x00, 0xA0, 0x96, 0x1F, 0x2E, 0x3D}), "00A0961F2E3D");
}

TEST(Hex, ParsesDigitsOfEitherCaseWithBlanksAround) {
    int value = -1;
    EXPECT_TRUE(ParseHex(" 7f ", 2, value));
    EXPECT_EQ(value, 0x7F);
    EXPECT_TRUE(ParseHex("7", 2, value));
    EXPECT_EQ(value, 7);
}

TEST(Hex, RefusesWhatIsNone) {
    int value = -1;
    EXPECT_FALSE(ParseHex("", 2, value));
    EXPECT_EQ(value, 0);
    EXPECT_FALSE(ParseHex("123", 2, value));
    EXPECT_FALSE(ParseHex("1 2", 3, value)) << "a blank inside";
    EXPECT_FALSE(ParseHex("1G", 2, value));
    EXPECT_EQ(value, 1) << "what the digits before built";
}

TEST(Hex, ByteIsWhatItsDigitsBuild) {
    EXPECT_EQ(HexByte("a7"), 0xA7);
    EXPECT_EQ(HexByte("1G"), 0x01);
    EXPECT_EQ(HexByte("G1"), 0x00);
    EXPECT_EQ(HexByte("123"), 0x00);
    EXPECT_EQ(HexByte(""), 0x00);
}

TEST(BookName, IsTheFilesNameWithoutFolderOrExtension) {
    EXPECT_EQ(BookBaseName(""), "-- None --");
    EXPECT_EQ(BookBaseName("C:\\books\\north.obk"), "north");
    EXPECT_EQ(BookBaseName("/books/site.v2.obk"), "site.v2");
    EXPECT_EQ(BookBaseName("/books/.obk"), ".obk") << "a full stop at the front is the name's";
    EXPECT_EQ(BookBaseName("plain"), "plain");
}

TEST(BookLine, IsNameChannelMac) {
    EXPECT_EQ(
        BookLine({.Name = "Pump 3", .Channel = 0x10, .Mac = {0, 0xA0, 0x96, 0x1F, 0x2E, 0x3D}}),
        "\"Pump 3\", 10, 00A0961F2E3D");
}

TEST(BookLine, LoadsWithoutBlanksOrWithManySeparators) {
    EXPECT_EQ(Rewritten("\"A\",10,00A0961F2E3D"), Plain);
    EXPECT_EQ(Rewritten("\"A\" , , 10 ,, 00A0961F2E3D"), Plain);
    EXPECT_EQ(Rewritten("   \"A\", 10, 00A0961F2E3D   "), Plain);
}

TEST(BookLine, LoadsWithNothingBehindTheTwelfthDigitOrWithAnything) {
    EXPECT_EQ(Rewritten(Plain), Plain);
    EXPECT_EQ(Rewritten(std::string(Plain) + " # comment"), Plain);
}

TEST(BookLine, AChannelOutOfRangeLoadsUnchangedThenIsWrittenBack) {
    EXPECT_EQ(Rewritten("\"A\", 7F, 00A0961F2E3D"), "\"A\", 7F, 00A0961F2E3D");
}

TEST(BookLine, LowerCaseIsWrittenInUpperCase) {
    EXPECT_EQ(Rewritten("\"A\", 1f, 00a0961f2e3d"), "\"A\", 1F, 00A0961F2E3D");
}

TEST(BookLine, ABadChannelReadsAsZeroOrItsFirstDigit) {
    EXPECT_EQ(Rewritten("\"A\", G0, 00A0961F2E3D"), "\"A\", 00, 00A0961F2E3D");
    EXPECT_EQ(Rewritten("\"A\", 1G, 00A0961F2E3D"), "\"A\", 01, 00A0961F2E3D");
}

TEST(BookLine, AChannelOfOneDigitTakesTheCommaBehindIt) {
    EXPECT_EQ(Rewritten("\"B\",1,000000000001"), "\"B\", 01, 000000000001");
}

TEST(BookLine, AQuoteInsideANameStopsItThere) {
    const auto entry = ParseBookLine("\"My \"big\" radio\", 10, 00A0961F2E3D");
    ASSERT_TRUE(entry) << "what follows parses to rubbish, but is long enough";
    EXPECT_EQ(entry->Name, "My");
    EXPECT_FALSE(ParseBookLine("\"My \"big\" radio\""));
}

TEST(BookLine, AnEmptyNameLoads) {
    const auto entry = ParseBookLine("\"\"  , 10, 00A0961F2E3D");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->Name, "");
    EXPECT_EQ(entry->Channel, 0x10);
}

TEST(BookLine, ANameIsTrimmed) {
    EXPECT_EQ(ParseBookLine("\" A  \", 10, 00A0961F2E3D")->Name, "A");
}

TEST(BookLine, ALineTooShortOrWithoutItsClosingQuoteIsDropped) {
    const std::string line = Plain;
    for (std::size_t length = 0; length < line.size(); ++length) {
        EXPECT_FALSE(ParseBookLine(line.substr(0, length))) << length;
    }
    EXPECT_FALSE(ParseBookLine("\"A, 10, 00A0961F2E3D"));
}

TEST(BookLine, ANewEntryHasNoWindow) {
    EXPECT_EQ(ParseBookLine(Plain)->WindowIndex, NoWindow);
    EXPECT_EQ(ParseBookLine(Plain)->SmallIcon, IconNoWindow);
}

TEST(Book, AnEmptyFileOrOneOfBlankLinesIsAnEmptyBook) {
    EXPECT_EQ(Read("").UpperBound(), 0);
    EXPECT_EQ(Read("\r\n\r\n  \r\n").UpperBound(), 0);
}

TEST(Book, OtherLinesArePassedOver) {
    const auto entries = Read("; comment\n" + std::string(Plain) + "\nA, 10\n");
    EXPECT_EQ(entries.UpperBound(), 1);
}

TEST(Book, LinesThatBeginAsEntriesAndAreNoneAreCounted) {
    const auto entries = Read("\"B\"\n  \"C, 10\n" + std::string(Plain) + "\n", 2);
    EXPECT_EQ(entries.UpperBound(), 1);
}

TEST(Book, ALineOfAnyLengthIsReadAndWrittenBack) {
    const std::string path = JoinPath(FreshFolder("book"), "long.obk");
    const std::string behind = "\", 10, 00A0961F2E3D";
    std::string contents;
    for (const std::size_t length : {LongestLine, LongestLine + 1, std::size_t{1} << 20U}) {
        contents += "\"" + std::string(length - 1 - behind.size(), 'n') + behind + "\r\n";
    }
    contents += std::string(Plain) + "\r\n\r\n";
    const auto entries = Read(contents);
    ASSERT_EQ(entries.UpperBound(), 4);
    EXPECT_EQ(entries[3].Name.size(), (std::size_t{1} << 20U) - 1 - behind.size());
    EXPECT_EQ(entries[3].Channel, 0x10);
    EXPECT_TRUE(WriteBookFile(path, entries));
    EXPECT_TRUE(FileContents(path) == contents);
}

TEST(Book, WhatFollowsTheTwelfthDigitMayBeLong) {
    const auto entries = Read(std::string(Plain) + " " + std::string(LongestLine, '#') + "\r\n");
    ASSERT_EQ(entries.UpperBound(), 1);
    EXPECT_EQ(BookLine(entries[1]), Plain);
}

TEST(Book, TwoEntriesOfOneAddressLoad) {
    EXPECT_EQ(Read(std::string(Plain) + "\r\n" + Plain).UpperBound(), 2);
}

TEST(Book, AnyBytesLoadWithoutHarm) {
    std::mt19937 random(8);
    const std::string alphabet = std::string("\"\", 01AFG\r\n\xFF") + char{0};
    for (int i = 0; i < 3000; ++i) {
        std::string contents(random() % 200, ' ');
        for (char& c : contents) {
            c = alphabet[random() % alphabet.size()];
        }
        std::istringstream file(contents);
        NumberedArray<ClientRadio> entries;
        const int dropped = ReadBook(file, entries);
        EXPECT_LE(dropped + entries.UpperBound(), 200);
        for (const ClientRadio& entry : entries) {
            EXPECT_EQ(Trim(entry.Name), entry.Name);
        }
    }
}

TEST(Book, AnEmptyBookIsOneEmptyLine) {
    const std::string path = JoinPath(FreshFolder("book"), "empty.obk");
    EXPECT_TRUE(WriteBookFile(path, {}));
    EXPECT_EQ(FileContents(path), "\r\n");
}

TEST(Book, TheFileEndsWithAnEmptyLine) {
    const std::string path = JoinPath(FreshFolder("book"), "two.obk");
    const auto entries = Read(std::string(Plain) + "\n\"B\", 37, 000000000001\n");
    EXPECT_TRUE(WriteBookFile(path, entries));
    EXPECT_EQ(FileContents(path), std::string(Plain) + "\r\n\"B\", 37, 000000000001\r\n\r\n");
    NumberedArray<ClientRadio> again;
    EXPECT_EQ(ReadBookFile(path, again), 0);
    EXPECT_EQ(again.UpperBound(), 2);
}

TEST(Book, WhatCannotBeWrittenFailsWithoutAWord) {
    EXPECT_FALSE(WriteBookFile("", {}));
    EXPECT_FALSE(WriteBookFile(FreshFolder("book"), {}));
    EXPECT_FALSE(WriteBookFile("/no/such/folder/a.obk", {}));
}

#ifndef _WIN32
TEST(Book, AFullDiskKeepsTheBookThatWasThereAndNoFreshOne) {
    const std::string folder = FreshFolder("book");
    const std::string path = JoinPath(folder, "two.obk");
    WriteFile(path, std::string(Plain) + "\r\n\r\n");
    NumberedArray<ClientRadio> many;
    while (many.UpperBound() < 100) {
        many.Append({.Name = "Pump"});
    }
    const testing_support::SmallDisk disk(1000);
    EXPECT_FALSE(WriteBookFile(path, many));
    EXPECT_EQ(FileContents(path), std::string(Plain) + "\r\n\r\n");
    EXPECT_FALSE(WriteBookFile(JoinPath(folder, "fresh.obk"), many));
    EXPECT_FALSE(std::filesystem::exists(JoinPath(folder, "fresh.obk")));
}

/// What stands in the file between the steps of a rewriting reads as one of the two books.
TEST(Book, AKillWhileItIsRewrittenLosesNoEntry) {
    const std::string path = JoinPath(FreshFolder("book"), "two.obk");
    const auto entriesOf = [&path] {
        NumberedArray<ClientRadio> entries;
        ReadBookFile(path, entries);
        std::string names;
        for (const ClientRadio& entry : entries) {
            names += entry.Name;
        }
        return names;
    };
    const std::string line = std::string(Plain) + "\r\n";
    WriteFile(path, line + line + "\r\n");
    const std::string longer = line + line + line + "\r\n";
    const FileRewrite file(path);
    EXPECT_TRUE(file.MakeRoom(longer.size()));
    EXPECT_EQ(entriesOf(), "AA");
    EXPECT_TRUE(file.Write(longer));
    EXPECT_EQ(entriesOf(), "AAA");
}
#endif

TEST(Book, AMissingFileIsAnEmptyBook) {
    auto entries = Read(Plain);
    EXPECT_EQ(ReadBookFile("/no/such/file.obk", entries), 0);
    EXPECT_EQ(entries.UpperBound(), 0);
}

TEST(Book, HoldsNoMoreEntriesThanNumbersCount) {
    std::string contents;
    for (int i = 0; i < MostEntries + 5; ++i) {
        contents += std::string(Plain) + "\n";
    }
    EXPECT_EQ(Read(contents, 5).UpperBound(), MostEntries);
}

}  // namespace
