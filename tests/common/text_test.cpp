#include "common/text.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include "common/numbered_array.h"
#include "common/path_text.h"
#include "support/virtual_host.h"

namespace {

using ::testing_support::FreshFolder;
using ::testing_support::WriteFile;

TEST(Trim, TakesBlanksAloneNeverTabs) {
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim("\ta "), "\ta");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(TrimLeft("  a "), "a ");
    EXPECT_EQ(TrimRight("  a "), "  a");
}

TEST(Case, TurnsOnlyPlainLetters) {
    EXPECT_EQ(ToUpper("abz\xC3\xA9-1"), "ABZ\xC3\xA9-1");
    EXPECT_EQ(ToLower("FEET"), "feet");
}

TEST(SplitAtBlanks, LeavesEmptyPiecesOut) {
    EXPECT_EQ(SplitAtBlanks("  1  2 3"), (std::vector<std::string_view>{"1", "2", "3"}));
    EXPECT_TRUE(SplitAtBlanks("   ").empty());
}

TEST(TwoDigits, KeepsLongerNumbers) {
    EXPECT_EQ(TwoDigits(7), "07");
    EXPECT_EQ(TwoDigits(123), "123");
}

TEST(Paths, CountASlashAsABackslash) {
    EXPECT_EQ(BehindLastSeparator("C:\\data\\a.obk"), "a.obk");
    EXPECT_EQ(BehindLastSeparator("/data/a.obk"), "a.obk");
    EXPECT_EQ(BehindLastSeparator("a.obk"), "a.obk");
    EXPECT_EQ(LastSeparator("ab/c"), 3U);
    EXPECT_EQ(LastSeparator("abc"), 0U);
}

TEST(Paths, TellAFileFromWhatWouldHoldAWriterUp) {
    const std::string folder = FreshFolder("paths");
    const std::string file = JoinPath(folder, "file");
    WriteFile(file, "x");
    EXPECT_TRUE(FileExists(file));
    EXPECT_FALSE(FileExists(folder));
    EXPECT_FALSE(FileExists(""));
    EXPECT_FALSE(FileExists(std::string("a\0b", 3)));
    EXPECT_TRUE(TakesFile(file));
    EXPECT_TRUE(TakesFile(JoinPath(folder, "free")));
    EXPECT_FALSE(TakesFile(folder));
    EXPECT_TRUE(IsRegularFile(file));
    EXPECT_FALSE(IsRegularFile(folder));
    EXPECT_FALSE(IsRegularFile(JoinPath(folder, "free")));
}

#ifndef _WIN32
TEST(Paths, ADeviceExistsAndIsWrittenButNotRead) {
    EXPECT_TRUE(FileExists("/dev/null"));
    EXPECT_TRUE(TakesFile("/dev/null"));
    EXPECT_FALSE(IsRegularFile("/dev/null"));
}

TEST(Paths, APipeExistsAndIsNeitherWrittenNorRead) {
    const std::string pipe = JoinPath(FreshFolder("paths"), "pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_TRUE(FileExists(pipe));
    EXPECT_FALSE(TakesFile(pipe));
    EXPECT_FALSE(IsRegularFile(pipe));
}
#endif

TEST(NumberedArray, CountsFromOne) {
    NumberedArray<int> array;
    EXPECT_EQ(array.UpperBound(), 0);
    EXPECT_EQ(array.Append(7), 1);
    EXPECT_EQ(array.Append(8), 2);
    EXPECT_EQ(array[1], 7);
    EXPECT_FALSE(array.Holds(0));
    EXPECT_TRUE(array.Holds(2));
    array.Remove(1);
    EXPECT_EQ(array[1], 8);
    EXPECT_THROW(static_cast<void>(array[2]), Fault);
    EXPECT_THROW(array.Remove(0), Fault);
    array.Reset();
    EXPECT_EQ(array.UpperBound(), 0);
    EXPECT_EQ(array[0], 0);
}

}  // namespace
