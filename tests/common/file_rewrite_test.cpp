#include "common/file_rewrite.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include "common/path_text.h"
#include "support/small_disk.h"
#include "support/virtual_host.h"

namespace {

namespace fs = std::filesystem;
using testing_support::FileContents;
using testing_support::FreshFolder;
using testing_support::WriteFile;

class FileRewriteTest : public testing::Test {
 protected:
    /// The file begins with that text.
    void Begin(const std::string& text) { WriteFile(path_, text); }
    void ExpectFile(const std::string& text) { EXPECT_TRUE(FileContents(path_) == text); }

    const std::string folder_ = FreshFolder("rewrite");
    std::string path_ = JoinPath(folder_, "book.obk");
    const std::string old_ = "the old text\r\n";
    const std::string longer_ = std::string(300'000, 'n');
};

TEST_F(FileRewriteTest, WritesAFreshFile) {
    EXPECT_TRUE(RewriteFile(path_, longer_));
    ExpectFile(longer_);
}

TEST_F(FileRewriteTest, WritesALongerAShorterAndAnEmptyText) {
    Begin(old_);
    EXPECT_TRUE(RewriteFile(path_, longer_));
    ExpectFile(longer_);
    EXPECT_TRUE(RewriteFile(path_, old_));
    ExpectFile(old_);
    EXPECT_TRUE(RewriteFile(path_, "another text\r\n"));
    ExpectFile("another text\r\n");
    EXPECT_TRUE(RewriteFile(path_, ""));
    ExpectFile("");
    EXPECT_TRUE(RewriteFile(path_, old_));
    ExpectFile(old_);
}

TEST_F(FileRewriteTest, KeepsTheFileItself) {
    Begin(old_);
    const std::string link = JoinPath(folder_, "link");
    fs::create_hard_link(path_, link);
    EXPECT_TRUE(RewriteFile(path_, longer_));
    EXPECT_TRUE(FileContents(link) == longer_);
}

#ifndef _WIN32

TEST_F(FileRewriteTest, KeepsASymbolicLinkToTheFile) {
    Begin(old_);
    const std::string symbolic = JoinPath(folder_, "symbolic");
    fs::create_symlink(path_, symbolic);
    EXPECT_TRUE(RewriteFile(symbolic, longer_));
    ExpectFile(longer_);
    EXPECT_TRUE(fs::is_symlink(symbolic));
}

#endif

TEST_F(FileRewriteTest, StepsOfALongerTextLeaveTheOldOneOrTheNewOne) {
    Begin(old_);
    const FileRewrite file(path_);
    ASSERT_TRUE(file.IsReady());
    ExpectFile(old_);
    EXPECT_TRUE(file.MakeRoom(20));
    ExpectFile(old_ + std::string(20 - old_.size(), '\0'));
    EXPECT_TRUE(file.Write("a new text of twenty"));
    ExpectFile("a new text of twenty");
    EXPECT_TRUE(file.Cut(20));
    ExpectFile("a new text of twenty");
}

TEST_F(FileRewriteTest, StepsOfAShorterTextLeaveTheOldOneOrTheNewOneInFront) {
    Begin("an old text");
    const FileRewrite file(path_);
    EXPECT_TRUE(file.MakeRoom(5));
    ExpectFile("an old text");
    EXPECT_TRUE(file.Write("short"));
    ExpectFile("shortd text");
    EXPECT_TRUE(file.Cut(5));
    ExpectFile("short");
}

TEST_F(FileRewriteTest, AFileThatIsNotWrittenAfterAllIsAsItWas) {
    Begin(old_);
    { const FileRewrite file(path_); }
    ExpectFile(old_);
    {
        const FileRewrite file(path_);
        EXPECT_TRUE(file.MakeRoom(100'000));
    }
    ExpectFile(old_);
    const std::string fresh = JoinPath(folder_, "fresh");
    {
        const FileRewrite file(fresh);
        EXPECT_TRUE(file.IsReady());
    }
    EXPECT_FALSE(fs::exists(fresh));
}

TEST_F(FileRewriteTest, AskingWhetherItCanBeWrittenChangesNothing) {
    Begin(old_);
    fs::last_write_time(path_, fs::file_time_type::clock::now() - std::chrono::hours(1));
    const auto then = fs::last_write_time(path_);  // as fine as the system keeps it
    EXPECT_TRUE(CanRewrite(path_));
    ExpectFile(old_);
    EXPECT_EQ(fs::last_write_time(path_), then);
    EXPECT_TRUE(CanRewrite(JoinPath(folder_, "fresh")));
    EXPECT_FALSE(fs::exists(JoinPath(folder_, "fresh")));
    EXPECT_FALSE(CanRewrite(JoinPath(folder_, "gone/fresh")));
    EXPECT_FALSE(CanRewrite(folder_));
}

TEST_F(FileRewriteTest, WhatCannotBeWrittenFails) {
    EXPECT_FALSE(RewriteFile("", old_));
    EXPECT_FALSE(RewriteFile(folder_, old_));
    EXPECT_FALSE(RewriteFile(JoinPath(folder_, "no/such/file"), old_));
    EXPECT_TRUE(fs::is_empty(folder_));
}

#ifndef _WIN32

TEST_F(FileRewriteTest, AFullDiskLeavesEveryOldByte) {
    // Longer than what is written at a time, so that some of the room is there and some is not.
    const std::string old(150'000, 'o');
    Begin(old);
    bool taken = true;
    {
        const testing_support::SmallDisk disk(200'000);
        taken = RewriteFile(path_, longer_);
    }
    EXPECT_FALSE(taken);
    ExpectFile(old);
}

TEST_F(FileRewriteTest, AFullDiskLeavesNothingOfAFreshFile) {
    bool taken = true;
    {
        const testing_support::SmallDisk disk(200'000);
        taken = RewriteFile(path_, longer_);
    }
    EXPECT_FALSE(taken);
    EXPECT_FALSE(fs::exists(path_));
}

TEST_F(FileRewriteTest, AFullDiskLeavesAnEmptyFileEmpty) {
    Begin("");
    bool taken = true;
    {
        const testing_support::SmallDisk disk(200'000);
        taken = RewriteFile(path_, longer_);
    }
    EXPECT_FALSE(taken);
    EXPECT_TRUE(fs::exists(path_));
    ExpectFile("");
}

TEST_F(FileRewriteTest, AFullDiskTakesAShorterText) {
    Begin(longer_);
    bool taken = false;
    {
        const testing_support::SmallDisk disk(100'000);
        taken = RewriteFile(path_, old_);
    }
    EXPECT_TRUE(taken);
    ExpectFile(old_);
}

TEST_F(FileRewriteTest, WhatLiesBehindAWriteThatFailsIsNotCut) {
    const std::string old(200'000, 'o');
    Begin(old);
    bool taken = true;
    {
        const testing_support::SmallDisk disk(100'000);
        taken = RewriteFile(path_, std::string(150'000, 'n'));
    }
    EXPECT_FALSE(taken);
    ExpectFile(std::string(100'000, 'n') + std::string(100'000, 'o'));
}

TEST_F(FileRewriteTest, ALinkThatLedNowhereStaysWhenItsFileIsTakenAway) {
    const std::string link = JoinPath(folder_, "link");
    fs::create_symlink(path_, link);
    {
        const testing_support::SmallDisk disk(200'000);
        EXPECT_FALSE(RewriteFile(link, longer_));
    }
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_FALSE(fs::exists(path_));
    EXPECT_TRUE(RewriteFile(link, old_));
    ExpectFile(old_);
}

using FileRewriteDeathTest = FileRewriteTest;

TEST_F(FileRewriteDeathTest, AKillWhileTheFileGrowsLeavesTheOldText) {
    Begin(old_);
    EXPECT_EXIT(
        {
            const testing_support::SmallDisk disk(200'000);
            std::signal(SIGXFSZ, SIG_DFL);
            static_cast<void>(RewriteFile(path_, longer_));
        },
        testing::KilledBySignal(SIGXFSZ), "");
    const std::string left = FileContents(path_);
    EXPECT_EQ(left.substr(0, old_.size()), old_);
    EXPECT_EQ(left.size(), 200'000U) << "it was killed on its way";
    EXPECT_EQ(left.find_first_not_of('\0', old_.size()), std::string::npos);
}

TEST_F(FileRewriteDeathTest, AKillBehindAnyStepLeavesOneOfTheTexts) {
    const auto killBehind = [this](int steps) {
        const FileRewrite file(path_);
        const bool made = steps < 1 || file.MakeRoom(longer_.size());
        const bool written = steps < 2 || file.Write(longer_);
        std::raise(made && written ? SIGKILL : SIGABRT);
    };
    for (const int steps : {0, 1, 2}) {
        Begin(old_);
        EXPECT_EXIT(killBehind(steps), testing::KilledBySignal(SIGKILL), "") << steps;
        const std::string& kept = steps < 2 ? old_ : longer_;
        EXPECT_TRUE(FileContents(path_).starts_with(kept)) << steps;
    }
}

TEST_F(FileRewriteTest, ADeviceTakesTheTextAndStaysADevice) {
    for (const char* device : {"/dev/null", "/dev/full"}) {
        EXPECT_EQ(RewriteFile(device, longer_), std::string(device) == "/dev/null") << device;
        EXPECT_TRUE(fs::is_character_file(device)) << device;
    }
    const std::string link = JoinPath(folder_, "link");
    fs::create_symlink("/dev/full", link);
    EXPECT_FALSE(RewriteFile(link, old_));
    EXPECT_TRUE(fs::is_symlink(link));
}

TEST_F(FileRewriteTest, APipeDoesNotHoldTheWriterUp) {
    ASSERT_EQ(::mkfifo(path_.c_str(), 0600), 0);
    EXPECT_FALSE(RewriteFile(path_, old_));
    EXPECT_TRUE(fs::is_fifo(path_));
}

TEST_F(FileRewriteTest, AFileThatMayNotBeWrittenStaysAsItIs) {
    Begin(old_);
    fs::permissions(path_, fs::perms::owner_read);
    if (std::ofstream(path_, std::ios::app).is_open()) {
        // The superuser writes where nobody may; a file that runs cannot be written by anyone.
        path_ = "/proc/self/exe";
    }
    const auto before = fs::file_size(path_);
    EXPECT_FALSE(RewriteFile(path_, longer_));
    EXPECT_EQ(fs::file_size(path_), before);
}

#endif

}  // namespace
